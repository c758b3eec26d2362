#include "check/Scope.h"

#include <algorithm>

#include "config/Namespaces.h"

namespace orvane::nimbrel::check {
namespace {

/// The prefix, with its colon, that a declaration is for: none for "xmlns", "a:" for "xmlns:a".
std::string declaredPrefix(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? "" : std::string(name.substr(colon + 1)) + ':';
}

}  // namespace

bool Scope::read(Level& level, const util::XmlNode& element) {
  if (level.element == &element) {
    return true;
  }
  const std::optional<std::size_t> tag = report_.tagOf(element);
  if (!tag) {
    return false;
  }
  level.tag = readTag(report_.source().text(), *tag);
  level.element = &element;
  level.declarations.clear();
  for (const TagAttribute& declaration : level.tag.declarations) {
    level.declarations.emplace(declaredPrefix(text(declaration.name)), &declaration);
  }
  return true;
}

bool Scope::enter(const util::XmlNode& element) {
  const util::XmlNode* root = &element;
  depth_ = 0;
  for (; root->parent() != nullptr; root = root->parent()) {
    ++depth_;
  }
  levels_.resize(std::max(levels_.size(), depth_ + 1));
  if (levels_.front().element != root) {
    if (!read(levels_.front(), *root)) {
      return false;
    }
    findRootPrefixes();
  }
  return read(levels_[depth_], element);
}

const Scope::Level& Scope::parentLevel() {
  return depth_ != 0 && read(levels_[depth_ - 1], *own().element->parent()) ? levels_[depth_ - 1]
                                                                            : root();
}

void Scope::findRootPrefixes() {
  // Without a prefix only where the namespace of W3C Widgets is the default one.
  for (const TagAttribute& declaration : root().tag.declarations) {
    std::string prefix = declaredPrefix(text(declaration.name));
    for (const std::string_view known : {std::string_view(config::W3C_WIDGETS_NAMESPACE),
                                         std::string_view(config::EXTENSION_NAMESPACE)}) {
      if (text(declaration.value) == known) {
        rootPrefixes_.emplace(known, prefix);
      }
    }
  }
}

std::string_view Scope::text(Span span) const noexcept {
  return report_.source().text().substr(span.begin, span.end - span.begin);
}

std::string Scope::prefixOf(const Level& level) const {
  const std::string_view name = text(level.tag.name);
  return std::string(name.substr(0, name.find(':') + 1));
}

const TagAttribute* Scope::declarationOf(std::string_view name) {
  const std::string prefix(name.substr(0, name.find(':') + 1));
  for (const Level* const level : {&own(), &parentLevel(), &root()}) {
    const auto found = level->declarations.find(prefix);
    if (found != level->declarations.end()) {
      return found->second;
    }
  }
  return nullptr;
}

std::optional<std::string> Scope::prefixFor(std::string_view namespaceUri, bool isAttribute) {
  const Level& parent = parentLevel();
  const auto redeclares = [&](const Level& level, const std::string& prefix) {
    return level.element != root().element && level.declarations.count(prefix) != 0;
  };
  const auto usable = [&](const std::string& prefix) {
    return isAttribute && prefix.empty() ? std::nullopt : std::optional<std::string>(prefix);
  };
  if (own().element->namespaceView() == namespaceUri) {
    return usable(prefixOf(own()));
  }
  if (parent.element->namespaceView() == namespaceUri) {
    const std::string prefix = prefixOf(parent);
    return redeclares(own(), prefix) ? std::nullopt : usable(prefix);
  }
  const auto found = rootPrefixes_.find(namespaceUri);
  if (found == rootPrefixes_.end() || redeclares(own(), found->second) ||
      redeclares(parent, found->second)) {
    return std::nullopt;
  }
  return usable(found->second);
}

}  // namespace orvane::nimbrel::check
