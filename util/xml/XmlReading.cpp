#include "util/xml/XmlReading.h"

#include <algorithm>
#include <new>
#include <string>

#include "util/ParseException.h"

namespace orvane::nimbrel::util::internal {
namespace {

constexpr std::size_t MAX_CATALOGUES = 100;

std::string onOneLine(std::string text) {
  text.erase(text.find_last_not_of("\n ") + 1);
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

std::shared_ptr<XmlDocument> XmlReading::run() {
  parse();
  if (context_->wellFormed == 0 || input_.isCut() || libxml::hasMore(context())) {
    reject("The document is not well-formed");
  }
  if (fault_ != nullptr) {
    std::rethrow_exception(fault_);
  }
  if (tree_.isBeforeRoot()) {
    throw std::bad_alloc();  // whatever is wrong with a document is reported, but not that
  }
  return tree_.take();
}

std::size_t XmlReading::read(char* target, std::size_t size) {
  limits_.checkOpenTag(openTag_.attributes(), openTag_.namespaces());
  checkNames();
  if (hasDocumentType_ && tree_.isBeforeRoot()) {
    XmlLimits::checkChoices(choices_);
  }
  const std::string_view piece(target, input_.read(target, size));
  limits_.noteInputSize(input_.documentSize());
  openTag_.scan(piece);
  if (tree_.isBeforeRoot()) {
    choices_ += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '|'));
  }
  return piece.size();
}

void XmlReading::startElement(const XmlSymbol* name, std::size_t attributes,
                              std::size_t namespaces) {
  limits_.openElement(attributes, namespaces);
  if (hasDocumentType_) {  // what stands in an entity is parsed without reading in between
    checkNames();
  }
  const unsigned int end = line();
  const unsigned int begin = tree_.isInRoot() ? tree_.nextLine() : libxml::lineOfOpenTag(context());
  tree_.startElement(name, attributes, begin, end);
}

void XmlReading::endElement() noexcept {
  limits_.closeElement();
  tree_.endElement(line());
}

void XmlReading::appendOther(XmlNode::Type type) {
  if (tree_.isInRoot()) {  // and neither before nor behind it
    tree_.appendOther(type, line());
  }
}

void XmlReading::instruction(std::string_view target) {
  // libxml2 2.9 remembers each, one behind the other, though none is ever asked for.
  if (tree_.isBeforeRoot() && target == "oasis-xml-catalog" && ++catalogues_ > MAX_CATALOGUES) {
    throw XmlRejection{"Too many catalogues"};
  }
  checkNames();
  appendOther(XmlNode::PROCESSING_INSTRUCTION);
}

void XmlReading::checkNames() const {
  const libxml::NamesSize names = libxml::sizeOfNames(context());
  XmlLimits::checkNames(names.count, names.bytes);
}

void XmlReading::reject(const char* message) noexcept {
  if (fault_ != nullptr) {
    return;
  }
  try {
    const XmlPosition at = libxml::positionOf(context());
    fault_ = std::make_exception_ptr(ParseException(onOneLine(message), at.line, at.column));
  } catch (...) {
    fault_ = std::current_exception();
  }
}

void XmlReading::failForMemory() noexcept {
  if (context_ != nullptr && XmlLimits::isFullOfNames(libxml::sizeOfNames(context()).bytes)) {
    reject(XmlLimits::TOO_MANY_NAMES);
  } else if (fault_ == nullptr) {
    fault_ = std::make_exception_ptr(std::bad_alloc());
  }
}

}  // namespace orvane::nimbrel::util::internal
