#pragma once

#include <map>
#include <string>

#include "config/Api.h"

namespace orvane::zel::config {

/// Reads the localised variants of one element without building a record.
class NIMBREL_CONFIG_API LocalizedElementParser {
 public:
  LocalizedElementParser() = delete;

  /// The texts of all root children of one name in the W3C Widgets namespace, by language tag; "*"
  /// stands for no language. Tags are not folded; the first element of each counts. `normalize`
  /// squeezes and trims white space. The root's own name is not checked.
  ///
  /// Reads `size` bytes at `buffer`, which is not kept. Throws `ParseException` for what is no
  /// well-formed document, `ConfigParser::ConfigException` "Document root is null" when there is no
  /// root, `std::invalid_argument` for a null `elementName`; nothing is left then (strong
  /// guarantee). For any thread.
  static std::map<std::string, std::string> getLocalizedElementMap(const char* buffer,
                                                                   unsigned int size,
                                                                   const char* elementName,
                                                                   bool normalize);
};

}  // namespace orvane::zel::config
