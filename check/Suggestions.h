#pragma once

#include <cstddef>
#include <string>

#include "check/Diagnostic.h"
#include "config/ElementDescription.h"
#include "util/XmlNode.h"

namespace orvane::nimbrel::check {

/// What the author meant where a name, a word or a namespace is wrong; empty when that is not
/// certain.
[[nodiscard]] std::string suggestionFor(const Diagnostic& finding);

/// The attribute, spelt as in findings, that an unknown one was meant to be in an element that may
/// have these; empty when that is not certain, or when the prefix is the mistake.
[[nodiscard]] std::string suggestedAttribute(
    const util::XmlNode& element, std::size_t index,
    config::DescriptionList<config::AttributeDescription> described);

}  // namespace orvane::nimbrel::check
