#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/Checks.h"

namespace nimbrel_test {

using orvane::nimbrel::test::contentOf;
using orvane::nimbrel::test::expectRows;
using orvane::nimbrel::test::Row;

using Json = nlohmann::ordered_json;

/// How a run of the tool ended.
struct Outcome {
  int status = -1;  ///< exit status; minus the number of the signal that ended it
  std::string out;
  std::string error;
  long memory = 0;  ///< the most that it held, in KiB
};

/// Where the standard output of a run goes. What a terminal gets is captured too.
enum class Stdout { CAPTURED, TERMINAL, CLOSED, FULL_DISK, BROKEN_PIPE };

/// Variables of the environment, "NAME=value".
using Environment = std::vector<std::string>;

/// Runs the tool's executable with these arguments, this standard input and no other environment:
/// that of who runs the tests would choose the locales.
Outcome run(const std::vector<std::string>& arguments, const std::string& input = {},
            Stdout target = Stdout::CAPTURED, Environment environment = {});

/// The record that `show` prints as JSON of a document on standard input. Fails the test, and gives
/// null, when the document is rejected.
Json show(const std::string& document, std::vector<std::string> options = {});

/// A document around children of the root, with the prefix "t" for the extension elements.
std::string widget(const std::string& children, const std::string& attributes = {});

/// A file that lives as long as the object.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// A folder that lives as long as the object.
class TemporaryFolder {
 public:
  TemporaryFolder() { std::filesystem::create_directories(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  /// Writes a file, in a folder of its own if the name has one; gives its path.
  std::string add(const std::string& name, const std::string& content) const {
    const std::filesystem::path path = path_ + '/' + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  TemporaryFile place_{""};
  std::string path_ = place_.path() + ".folder";
};

}  // namespace nimbrel_test
