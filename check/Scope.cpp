#include "check/Scope.h"

#include <algorithm>

namespace orvane::nimbrel::check {
namespace {

/// The prefix of a name, without its colon.
std::string_view prefixOf(std::string_view name) noexcept {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string withColon(std::string_view prefix) {
  return std::string(prefix) + (prefix.empty() ? "" : ":");
}

/// The prefix that a declaration is for: none for "xmlns", "a" for "xmlns:a".
std::string_view declaredPrefix(std::string_view name) noexcept {
  return name.substr(std::min(name.find(':'), name.size() - 1) + 1);
}

}  // namespace

bool Scope::read(Level& level, const util::XmlNode& element) {
  if (level.element == &element) {
    return true;
  }
  const std::optional<ElementTags> tags = report_.tagsOf(element);
  if (tags) {
    level = {&element, readTag(report_.source().text(), tags->start)};
  }
  return tags.has_value();
}

bool Scope::enter(const util::XmlNode& element) {
  const util::XmlNode* root = &element;
  depth_ = 0;
  for (; root->parent() != nullptr; root = root->parent()) {
    ++depth_;
  }
  levels_.resize(std::max(levels_.size(), depth_ + 1));
  return read(levels_.front(), *root) && read(levels_[depth_], element);
}

const Scope::Level& Scope::parentLevel() {
  return depth_ != 0 && read(levels_[depth_ - 1], *own().element->parent()) ? levels_[depth_ - 1]
                                                                            : root();
}

std::string_view Scope::text(Span span) const noexcept {
  return report_.source().text().substr(span.begin, span.end - span.begin);
}

std::string Scope::prefix() const {
  return withColon(prefixOf(text(tag().name)));
}

const TagAttribute* Scope::find(const Level& level, std::string_view prefix) const {
  const auto& declarations = level.tag.declarations;
  const auto found = std::find_if(
      declarations.begin(), declarations.end(),
      [&](const TagAttribute& row) { return declaredPrefix(text(row.name)) == prefix; });
  return found == declarations.end() ? nullptr : &*found;
}

const TagAttribute* Scope::declarationOf(std::string_view name) {
  for (const Level* const level : {&own(), &parentLevel(), &root()}) {
    if (const TagAttribute* const found = find(*level, prefixOf(name))) {
      return found;
    }
  }
  return nullptr;
}

std::optional<std::string> Scope::prefixFor(std::string_view namespaceUri, bool isAttribute) {
  const Level* const levels[] = {&own(), &parentLevel()};
  const auto* const level = std::find_if(std::begin(levels), std::end(levels), [&](auto* known) {
    return known->element->namespaceView() == namespaceUri;
  });
  std::string_view prefix;
  if (level != std::end(levels)) {
    prefix = prefixOf(text((*level)->tag.name));
  } else {
    const auto& declarations = root().tag.declarations;
    const auto found =
        std::find_if(declarations.begin(), declarations.end(),
                     [&](const TagAttribute& row) { return text(row.value) == namespaceUri; });
    if (found == declarations.end()) {
      return std::nullopt;
    }
    prefix = declaredPrefix(text(found->name));
  }
  const bool isRedeclared = std::any_of(std::begin(levels), level, [&](const Level* inner) {
    return inner->element != root().element && find(*inner, prefix) != nullptr;
  });
  return isRedeclared || (isAttribute && prefix.empty()) ? std::nullopt
                                                         : std::optional(withColon(prefix));
}

}  // namespace orvane::nimbrel::check
