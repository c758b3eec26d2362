#pragma once

#include <cstddef>

#include "config/Config.h"
#include "tools/html/HtmlWriter.h"
#include "tools/html/IconFinder.h"

namespace orvane::nimbrel::tools {

/// Prints what users see of an application before they start it: icon, name, who made it, what it
/// is for, under which terms.
void printApplication(HtmlWriter& html, const config::Config& record, IconFinder& icons);

/// Prints what is the same for all users: identifiers, version, size.
void printFacts(HtmlWriter& html, const config::Config& record);

}  // namespace orvane::nimbrel::tools
