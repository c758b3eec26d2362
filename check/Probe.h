#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "check/Report.h"
#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::check {

/// Asks the parser for its decisions on each part of a document by itself: on the attributes of the
/// root, and on each of its children alone. So each is judged whatever its language, after a faulty
/// one too, and by the rules that a device applies.
class Probe : private config::NimbrelConfigParser {
 public:
  /// What the parser reports goes into the report, which has to live as long. `logMask` is set
  /// again after each child: a setting of a document changes the mask of the process.
  Probe(Report& report, std::uint32_t logMask);

  /// Reads the XML. Null when it is rejected.
  std::shared_ptr<util::XmlDocument> parseXml();
  /// Reads the attributes of the root for a user of these languages. False when the root is wrong.
  bool readRoot(const std::shared_ptr<util::XmlDocument>& document,
                const std::vector<std::string>& locales);
  /// The languages of the user and the default one of the document, in the order of preference.
  [[nodiscard]] const std::vector<std::string>& locales() const;
  /// The children of the root that this user gets, in the order of the walk.
  [[nodiscard]] std::vector<std::shared_ptr<util::XmlNode>> visited();
  /// Reads a child of the root. The child of it at which reading stopped; null when none did.
  const util::XmlNode* readChild(const std::shared_ptr<util::XmlNode>& child);
  /// Whether the parser reported something about an attribute of an element that was read last: of
  /// the root, or of a child of it and all below.
  [[nodiscard]] bool hasReported(const util::XmlNode& element, std::string_view attribute) const;

 private:
  class Listener;

  Report& report_;
  std::uint32_t logMask_;
  std::shared_ptr<Listener> listener_;
};

}  // namespace orvane::nimbrel::check
