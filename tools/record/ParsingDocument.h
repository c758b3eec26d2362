#pragma once

#include <functional>
#include <memory>
#include <string>

#include "config/BasicConfig.h"
#include "config/NimbrelConfigParser.h"

namespace orvane::nimbrel::tools {

/// The record that `parse` makes with this parser, whose observer is taken, of the document called
/// `file`. As `readingDocument`, but a number that ends the parse is named with its place.
std::shared_ptr<config::BasicConfig> parsingDocument(
    const std::string& file, config::NimbrelConfigParser& parser,
    const std::function<std::shared_ptr<config::Config>()>& parse);

}  // namespace orvane::nimbrel::tools
