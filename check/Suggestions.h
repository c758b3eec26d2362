#pragma once

#include <cstddef>
#include <string>

#include "check/Diagnostic.h"
#include "check/NearestName.h"
#include "config/ElementDescription.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::check {

/// What the author meant where a name, a word or a namespace is wrong; empty when that is not
/// certain, or for `LIKELY` not even likely.
[[nodiscard]] std::string suggestionFor(const Diagnostic& finding, Reach reach = Reach::CERTAIN);

/// The attribute, spelt as in findings, that an unknown one was meant to be in an element that may
/// have these; empty as above, or when the prefix is the mistake.
[[nodiscard]] std::string suggestedAttribute(
    const util::XmlNode& element, std::size_t index,
    config::DescriptionList<config::AttributeDescription> described, Reach reach = Reach::CERTAIN);

}  // namespace orvane::nimbrel::check
