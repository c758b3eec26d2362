#pragma once

#include <string>
#include <vector>

#include "config/Api.h"
#include "config/ConfigParser.h"
#include "config/NimbrelConfigParser.h"
#include "util/SharedPtr.h"

namespace orvane::nimbrel::config {

/// A parser on the library's own services: where a new user starts.
///
///     auto parser = createConfigParser({"en-us", "en"});
///     auto record = parser->parse("config.xml", nullptr);
///
/// Make a new parser for each document: once a parser has seen a "content" element, its later
/// records have no start file.
///
/// `userAgentLocales` are language tags, most preferred first, written exactly as documents write
/// them in `xml:lang`. Throws only `std::bad_alloc`, and leaves nothing then. For any thread.
[[nodiscard]] NIMBREL_CONFIG_API std::shared_ptr<ConfigParser> createConfigParser(
    const std::vector<std::string>& userAgentLocales);

/// The same parser as its class, for hosts that read its error text, set an observer or call single
/// steps.
[[nodiscard]] NIMBREL_CONFIG_API std::shared_ptr<NimbrelConfigParser> createNimbrelConfigParser(
    const std::vector<std::string>& userAgentLocales);

}  // namespace orvane::nimbrel::config
