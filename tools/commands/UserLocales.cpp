#include "tools/commands/UserLocales.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "util/Ascii.h"

namespace orvane::nimbrel::tools {
namespace {

// The modifiers of POSIX locales that mean something as a tag.
constexpr struct {
  std::string_view modifier;
  std::string_view script;
  std::string_view variant;
} MODIFIERS[] = {
    {"latin", "Latn", ""},
    {"cyrillic", "Cyrl", ""},
    {"devanagari", "Deva", ""},
    {"valencia", "", "valencia"},
};

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

bool isLanguage(std::string_view text) noexcept {
  return text.size() >= 2 && text.size() <= 8 &&
         std::all_of(text.begin(), text.end(), util::ascii::isLetter);
}

bool isTerritory(std::string_view text) noexcept {
  return (text.size() == 2 && std::all_of(text.begin(), text.end(), util::ascii::isLetter)) ||
         (text.size() == 3 && std::all_of(text.begin(), text.end(), util::ascii::isDigit));
}

/// What stands behind `separator`, which `text` loses with it.
std::string_view cutBehind(std::string_view& text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) {
    return {};
  }
  const std::string_view behind = text.substr(at + 1);
  text = text.substr(0, at);
  return behind;
}

void add(std::vector<std::string>& tags, const std::string& tag) {
  for (const std::string& form : {tag, util::ascii::lowerCased(tag)}) {
    if (std::find(tags.begin(), tags.end(), form) == tags.end()) {
      tags.push_back(form);
    }
  }
}

/// Adds what "language_TERRITORY.codeset@modifier" means, and its shorter forms; nothing for what
/// is no such name.
void addLocale(std::vector<std::string>& tags, std::string_view name) {
  const std::string_view modifier = cutBehind(name, '@');
  cutBehind(name, '.');
  const std::string_view territory = cutBehind(name, '_');
  if (name == "C" || name == "POSIX" || !isLanguage(name)) {
    return;
  }
  std::string tag = util::ascii::lowerCased(std::string(name));
  std::vector<std::string> forms = {tag};
  const auto extend = [&](std::string_view part) {
    if (!part.empty()) {
      tag.append("-").append(part);
      forms.push_back(tag);
    }
  };
  std::string_view variant;
  for (const auto& row : MODIFIERS) {
    if (row.modifier == modifier) {
      extend(row.script);
      variant = row.variant;
    }
  }
  extend(isTerritory(territory) ? territory : std::string_view());
  extend(variant);
  std::for_each(forms.rbegin(), forms.rend(), [&](const std::string& form) { add(tags, form); });
}

}  // namespace

std::vector<std::string> userLocales() {
  std::string_view locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (locale.empty()) {
      locale = environment(name);
    }
  }
  std::vector<std::string> tags;
  addLocale(tags, locale);
  std::string_view languages = environment("LANGUAGE");
  if (tags.empty() || languages.empty()) {
    return tags;
  }
  tags.clear();
  while (!languages.empty()) {
    const std::string_view rest = cutBehind(languages, ':');
    addLocale(tags, languages);
    languages = rest;
  }
  return tags;
}

}  // namespace orvane::nimbrel::tools
