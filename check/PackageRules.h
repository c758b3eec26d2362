#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/PackageFiles.h"
#include "check/Report.h"

namespace orvane::nimbrel::check {

/// Finds what cannot work in a package by the names of its entries: files that the document names
/// and the package does not have, and names that some systems take for one another.
///
/// Throws only `std::bad_alloc`. For one thread.
class PackageRules {
 public:
  /// The contents and the report, to which findings are added, have to live as long.
  PackageRules(const PackageContents& contents, Report& report);

  /// The package as such, whatever its document says.
  void checkContents();
  /// Whether there is a file to start for a user who prefers `locales`; for null, for anybody. The
  /// children are checked for the same user.
  void checkRoot(const util::XmlNode& root, const std::vector<std::string>* locales);
  /// A child of the root that is used.
  void checkChild(const util::XmlNode& element);

 private:
  [[nodiscard]] bool has(std::string_view path) const;
  void checkPath(const util::XmlNode& element, std::uint32_t index);
  void checkType(const util::XmlNode& element, std::uint32_t index);
  void addName(FindingCode code, std::string_view name, std::string_view other = {});

  const PackageContents& contents_;
  PackageFiles files_;
  std::optional<std::vector<std::string>> languages_;  // of the user, lower case
  Report& report_;
};

}  // namespace orvane::nimbrel::check
