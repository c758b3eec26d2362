#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string_view>

#include "tools/commands/Command.h"
#include "util/Ascii.h"
#include "util/StringUtil.h"

namespace orvane::nimbrel::tools {
namespace {

// The modifiers of POSIX locales that mean something as a tag: a script, which follows the
// language, or a variant, which stands last.
constexpr struct {
  std::string_view modifier;
  const char* subtag;
  bool isScript;
} MODIFIERS[] = {
    {"@latin", "-Latn", true},
    {"@cyrillic", "-Cyrl", true},
    {"@devanagari", "-Deva", true},
    {"@valencia", "-valencia", false},
};

/// The tag that "language_TERRITORY.codeset@modifier" stands for; a tag stays as it is.
std::string tagOf(const std::string& name) {
  std::string tag = name.substr(0, name.find_first_of(".@"));
  std::replace(tag.begin(), tag.end(), '_', '-');
  for (const auto& row : MODIFIERS) {
    if (name.substr(std::min(name.find('@'), name.size())) == row.modifier) {
      tag.insert(row.isScript ? std::min(tag.find('-'), tag.size()) : tag.size(), row.subtag);
    }
  }
  return tag;
}

bool isLanguage(const std::string& locale) {
  const std::string language = locale.substr(0, locale.find_first_of("_.@"));
  return language != "C" && language != "POSIX" && language.size() >= 2 &&
         std::all_of(language.begin(), language.end(), util::ascii::isLetter);
}

}  // namespace

std::vector<std::string> tagsOf(const std::vector<std::string>& names) {
  std::vector<std::string> tags;
  for (const std::string& name : names) {
    std::string tag = tagOf(name);
    while (true) {
      for (const std::string& form : {tag, util::ascii::lowerCased(tag)}) {
        if (std::find(tags.begin(), tags.end(), form) == tags.end()) {
          tags.push_back(form);
        }
      }
      const std::size_t end = tag.rfind('-');
      if (end == std::string::npos || end == 0) {
        break;
      }
      tag.resize(end);
    }
  }
  return tags;
}

std::vector<std::string> userLocales() {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    locale = locale.empty() && value != nullptr ? value : locale;
  }
  const char* const languages = std::getenv("LANGUAGE");
  std::vector<std::string> names;
  const std::string list = languages == nullptr || *languages == '\0' ? locale : languages;
  if (isLanguage(locale)) {
    names = zel::util::StringUtil::split(list, ':');
    names.erase(std::remove_if(names.begin(), names.end(), std::not_fn(isLanguage)), names.end());
  }
  return tagsOf(names);
}

}  // namespace orvane::nimbrel::tools
