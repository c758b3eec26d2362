# Completion of nimbrel-config for bash.

_nimbrel_config() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} word command=
  local words=
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $word in
      show | localized | id | check | help)
        command=$word
        break
        ;;
    esac
  done
  COMPREPLY=()
  case $previous in
    --format)
      words='text json'
      [[ $command != show && $command != check ]] || words+=' jsonl'
      [[ $command != check ]] || words+=' sarif'
      [[ $command != show ]] || words+=' html'
      ;;
    --explain) words=$("${COMP_WORDS[0]}" check --codes 2>/dev/null | sed 's/ .*//') ;;
    --field)  # those of a record
      words=$("${COMP_WORDS[0]}" show --format json - 2>/dev/null \
        <<<'<widget xmlns="http://www.w3.org/ns/widgets"/>' | sed -n 's/^  "\([A-Za-z]*\)":.*/\1/p')
      ;;
    --color) words='auto always never' ;;
    --stdin-name | --jobs | --exclude | --locale | --url | --encoding | --density | --iri | --filename | --application) return ;;
    *)
      case $command in
        '') words='show localized id check help --help --version' ;;
        show)
          words='--locale --format --field --url --encoding --density --debug --recursive
            --exclude --files-from --jobs --no-progress --color --stdin-name --help --version'
          ;;
        help) words='show localized id check' ;;
        localized) words='--raw --format --color --stdin-name --help --version' ;;
        id) words='--iri --filename --application --format --color --help --version' ;;
        check)
          words='--locale --format --density --summary --strict --fix --diff --explain --codes
            --recursive --exclude --files-from --jobs --no-progress --quiet --color --stdin-name
            --help --version'
          ;;
      esac
      if [[ $command == localized && $previous == localized && $current != -* ]]; then
        words='name description author license'
      elif [[ $command =~ ^(show|localized|check)$ && $current != -* ]]; then
        compopt -o filenames 2>/dev/null || true  # no completion is going on
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
      fi
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _nimbrel_config nimbrel-config
