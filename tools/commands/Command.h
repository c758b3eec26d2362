#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/Failure.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {

/// What the options of a command line say, each for the commands that have it.
struct Options {
  std::vector<std::string> files;  ///< the operands; `findFiles` puts the files in their place

  bool recursive = false;
  /// Names that `recursive` skips, as patterns of a shell; none: those of the help.
  std::optional<std::vector<std::string>> excluded;
  std::optional<std::string> filesFrom;
  std::optional<int> jobs;
  bool noProgress = false;
  std::string stdinName = STANDARD_INPUT;

  std::optional<std::vector<std::string>> locales;  ///< as `tagsOf` gives them
  std::string format = "text";
  std::string colour = "auto";
  std::optional<int> density;
  std::optional<std::string> field;
  std::optional<std::string> url;
  std::optional<std::string> encoding;
  bool debug = false;

  bool strict = false;
  bool summary = false;
  bool fix = false;
  bool diff = false;
  bool quiet = false;
  std::optional<std::string> explain;
  bool codes = false;

  bool raw = false;
  std::optional<std::string> iri;
  std::optional<std::string> filename;
  std::optional<std::string> application;

  bool help = false;
  bool version = false;

  /// Whether the output has to say which file is meant: with a list or a directory however many
  /// files there are, so that its form is known beforehand.
  [[nodiscard]] bool isSeveral() const { return files.size() != 1 || recursive || filesFrom; }
  /// What messages call a file.
  [[nodiscard]] const std::string& nameOf(const std::string& file) const {
    return file == STANDARD_INPUT ? stdinName : file;
  }

  /// Lists the files that the operands stand for, of directories those that may be changed if
  /// `isForChange`, and sets `jobs` to what is possible. Throws `Failure`.
  void findFiles(bool isForChange = false);
};

/// One command of the tool; "--help" shows the texts.
struct Command {
  unsigned int bit;  ///< by which options name the commands that have them
  const char* name;
  const char* summary;       ///< one sentence without a full stop
  const char* operands;      ///< "FILE...", empty for none
  const char* operandsHelp;  ///< what they are, one a line: "FILE  the document"
  /// Does it and prints. Throws `Failure`.
  ExitStatus (*run)(Options& options);
};

inline constexpr unsigned int SHOW = 1;
inline constexpr unsigned int LOCALIZED = 2;
inline constexpr unsigned int ID = 4;
inline constexpr unsigned int CHECK = 8;
inline constexpr unsigned int TOOL = 16;  ///< no command yet

extern const Command SHOW_COMMAND;
extern const Command LOCALIZED_COMMAND;
extern const Command ID_COMMAND;
extern const Command CHECK_COMMAND;

/// What "--help" says of a document's argument.
inline constexpr char DOCUMENT_HELP[] =
    "FILE The document, or a packaged widget or folder that holds it; \"-\" is standard input";

/// Reads the arguments of a command, of which the first is the command itself. None when "--help"
/// or "--version" were asked for, which has been answered then. Throws `Failure` for a wrong usage.
std::optional<Options> readOptions(const Command& command, int argc, char** argv);

/// The message of a wrong usage as a `Failure`.
[[noreturn]] void failUsage(const std::string& message);

/// A word in quotes, escaped, and the known one that it may have been meant to be: "nme" (did you
/// mean "name"?).
[[nodiscard]] std::string quotedWithHint(std::string_view written,
                                         const std::vector<std::string>& known);

/// Language tags (BCP 47) or names of locales, best first, as the tags that documents are matched
/// by. Each is followed by its shorter forms and, since that is done byte for byte, by its
/// lower-case form: "de_AT.UTF-8" and "de-AT" give "de-AT", "de-at", "de".
[[nodiscard]] std::vector<std::string> tagsOf(const std::vector<std::string>& names);

/// The same of the user's languages, as the environment names them: LANGUAGE, unless the locale
/// (LC_ALL, LC_MESSAGES, LANG) is "C" or "POSIX", for which there are none; else that locale.
[[nodiscard]] std::vector<std::string> userLocales();

/// Prints texts with their names, as a table or as a JSON object.
void printTexts(const Options& options,
                const std::vector<std::pair<std::string, std::string>>& texts);

}  // namespace orvane::nimbrel::tools
