#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvane::nimbrel::tools {

/// An option as "--help" shows it.
struct OptionText {
  const char* name;   ///< "locale", written "--locale"
  const char* value;  ///< "TAG"; null for an option without a value
  const char* help;
  char letter = 0;  ///< 'r' if it may be written "-r" too
};

/// An option of a command, and what it does to the command's settings. `value` is null for an
/// option without one. It throws `Failure` for a value that it cannot take.
template <typename Settings>
struct Option : OptionText {
  void (*set)(Settings& settings, const char* value);
};

/// A command as "--help" shows it.
struct CommandText {
  const char* name;
  const char* summary;       ///< one sentence without a full stop
  const char* operands;      ///< "FILE...", empty for none
  const char* operandsHelp;  ///< what they are, one a line: "FILE  the document"
};

/// The message of a wrong usage as a `Failure`.
[[noreturn]] void failUsage(const std::string& message);

/// Reads a command's arguments, of which the first is the command itself, and tells `set` each
/// option by its place in `options`. What is left are operands; none when "--help" or "--version"
/// were asked for, which has been answered then. Throws `Failure` for a wrong usage.
std::optional<std::vector<std::string>> readArguments(
    int argc, char** argv, const CommandText& command, const std::vector<OptionText>& options,
    const std::function<void(std::size_t index, const char* value)>& set);

/// The same for a table of options that write `settings`.
template <typename Settings, std::size_t N>
std::optional<std::vector<std::string>> readArguments(int argc, char** argv,
                                                      const CommandText& command,
                                                      const Option<Settings> (&options)[N],
                                                      Settings& settings) {
  return readArguments(
      argc, argv, command, {std::begin(options), std::end(options)},
      [&](std::size_t index, const char* value) { options[index].set(settings, value); });
}

/// Checks that a value is one of those listed, with blanks between, and returns it.
const char* oneOf(const char* option, const char* value, const char* listed);

/// Reads a whole number.
int wholeNumber(const char* option, const char* value);

}  // namespace orvane::nimbrel::tools
