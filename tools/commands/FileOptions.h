#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/commands/Arguments.h"
#include "tools/input/Input.h"

namespace orvane::nimbrel::tools {

/// Which files a command reads, and how; a base of the settings of commands that take many.
struct FileSettings {
  std::vector<std::string> files;
  bool recursive = false;
  /// Names that `recursive` skips, as patterns of a shell; none: those of the help.
  std::optional<std::vector<std::string>> excluded;
  std::optional<std::string> filesFrom;
  unsigned int jobs = 0;  ///< 0: as many as there are processors
  bool progress = true;
  std::string stdinName = STANDARD_INPUT;

  /// Whether the output has to say which file is meant: with a list or a directory however many
  /// files there are, so that its form is known beforehand.
  [[nodiscard]] bool isSeveral() const { return files.size() != 1 || recursive || filesFrom; }
  /// What messages call a file.
  [[nodiscard]] const std::string& nameOf(const std::string& file) const {
    return file == STANDARD_INPUT ? stdinName : file;
  }

  /// Takes over the operands and lists the files, of directories those that may be changed if
  /// `isForChange`, and sets `jobs` to what is possible. Throws `Failure`.
  void findFiles(std::vector<std::string> operands, bool isForChange = false);
};

template <typename Settings>
constexpr Option<Settings> RECURSIVE_OPTION = {
    {"recursive", nullptr, "Read the config.xml and *.wgt below directories", 'r'},
    [](Settings& settings, const char* /*value*/) { settings.recursive = true; }};

template <typename Settings>
constexpr Option<Settings> EXCLUDE_OPTION = {
    {"exclude", "GLOB",
     "Skip files and directories of such names below directories; may be repeated (default: .git, "
     "node_modules and build)"},
    [](Settings& settings, const char* value) {
      settings.excluded = settings.excluded.value_or(std::vector<std::string>());
      settings.excluded->emplace_back(value);
    }};

template <typename Settings>
constexpr Option<Settings> FILES_FROM_OPTION = {
    {"files-from", "LIST",
     "Read the files that a file (\"-\": standard input) names, one a line or with NUL after each"},
    [](Settings& settings, const char* value) { settings.filesFrom = value; }};

template <typename Settings>
constexpr Option<Settings> JOBS_OPTION = {
    {"jobs", "N", "Read so many files at a time (default: as many as there are processors)", 'j'},
    [](Settings& settings, const char* value) {
      const int jobs = wholeNumber("jobs", value);
      if (jobs < 1 || jobs > 1024) {
        failUsage("--jobs takes 1 to 1024");
      }
      settings.jobs = static_cast<unsigned int>(jobs);
    }};

template <typename Settings>
constexpr Option<Settings> NO_PROGRESS_OPTION = {
    {"no-progress", nullptr, "Show no progress, which a terminal gets after a second"},
    [](Settings& settings, const char* /*value*/) { settings.progress = false; }};

}  // namespace orvane::nimbrel::tools
