#pragma once

#include "config/Api.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::config {

/// The namespace of the W3C Widgets vocabulary.
inline constexpr char W3C_WIDGETS_NAMESPACE[] = "http://www.w3.org/ns/widgets";

/// The namespace of `xml:lang`, as `util/XmlNode.h` has it.
using util::XML_NAMESPACE;

/// The namespace of the runtime's extension elements. Its host part belongs to the device maker,
/// who sets it when the library is configured (CMake variable NIMBREL_EXTENSION_NAMESPACE).
NIMBREL_CONFIG_API extern const char EXTENSION_NAMESPACE[];

}  // namespace orvane::nimbrel::config
