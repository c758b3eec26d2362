#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/PackageFiles.h"
#include "check/Report.h"

namespace orvane::nimbrel::check {

/// What of a package can't work, by the names of its entries: what a document names and there is
/// not, and names that systems take for others.
class PackageRules {
 public:
  /// `names` are those of all entries of the package. Findings go into the report, which has to
  /// live as long, as `names` have to.
  PackageRules(const std::vector<std::string>& names, Report& report);

  /// The names themselves.
  void checkNames();
  /// The root: whether there is something to start for a user who prefers `locales`, or for null
  /// for anybody. What follows is for the same user.
  void checkRoot(const util::XmlNode& root, const std::vector<std::string>* locales);
  /// A child of the root, about which everything else must be in the report already.
  void checkChild(const util::XmlNode& element);

 private:
  [[nodiscard]] bool has(std::string_view path) const;
  void checkPath(const util::XmlNode& element, std::size_t index);
  void checkType(const util::XmlNode& element, std::size_t index);
  void addName(config::FindingCode code, std::string_view name, std::string_view other = {});
  void addAttribute(config::FindingCode code, const util::XmlNode& element, std::size_t index,
                    std::string_view meant);

  const std::vector<std::string>& names_;
  PackageFiles files_;
  std::optional<std::vector<std::string>> languages_;  // of the user, lower case
  Report& report_;
  std::size_t seen_ = 0;  // findings of the report that were looked at
};

}  // namespace orvane::nimbrel::check
