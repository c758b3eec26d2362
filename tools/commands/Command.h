#pragma once

#include "tools/Failure.h"
#include "tools/commands/Arguments.h"
#include "tools/output/Output.h"

namespace orvane::nimbrel::tools {

/// One command of the tool.
struct Command {
  const CommandText& text;
  /// Does it and prints; `argv[0]` is the command itself. Throws `Failure`.
  ExitStatus (*run)(int argc, char** argv);
};

extern const Command SHOW_COMMAND;
extern const Command LOCALIZED_COMMAND;
extern const Command ID_COMMAND;
extern const Command CHECK_COMMAND;

inline constexpr char VERSION_LINE[] = "nimbrel-config " NIMBREL_VERSION "\n";

inline constexpr char EXIT_STATUS_HELP[] =
    "\nExit status: 0 done; 1 the document or the identifier was rejected or something\n"
    "found in a check; 2 wrong usage, or something cannot be read or written.\n";

/// What "--help" says of a document's argument.
inline constexpr char DOCUMENT_HELP[] =
    "FILE The document, or a packaged widget or folder that holds it; \"-\" is standard input";

/// Options that several commands have, for settings with members of these names.
template <typename Settings>
constexpr Option<Settings> FORMAT_OPTION = {
    {"format", "FORMAT", "Print for a person (text, the default) or for a program (json)"},
    [](Settings& settings, const char* value) {
      settings.format = oneOf("format", value, "text json");
    }};

template <typename Settings>
constexpr Option<Settings> COLOUR_OPTION = {
    {"color", "WHEN", "Colour text: auto (the default), always or never"},
    [](Settings& settings, const char* value) {
      settings.colour = colourOf(oneOf("color", value, "auto always never"));
    }};

template <typename Settings>
constexpr Option<Settings> DENSITY_OPTION = {
    {"density", "N", "Screen density that the device answers"},
    [](Settings& settings, const char* value) {
      settings.density = wholeNumber("density", value);
    }};

template <typename Settings>
constexpr Option<Settings> STDIN_NAME_OPTION = {
    {"stdin-name", "NAME", "What messages call standard input"},
    [](Settings& settings, const char* value) { settings.stdinName = value; }};

}  // namespace orvane::nimbrel::tools
