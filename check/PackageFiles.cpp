#include "check/PackageFiles.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "check/Decoder.h"
#include "check/ValueAdvice.h"
#include "util/Ascii.h"
#include "util/PercentEscape.h"
#include "util/Utf8.h"

namespace orvane::nimbrel::check {
namespace {

constexpr std::string_view LOCALES = "locales/";

/// Formats of which an author may have taken one for another.
constexpr std::string_view FORMATS[][5] = {{".html", ".htm", ".xhtml", ".xht", ".svg"},
                                           {".png", ".jpg", ".jpeg", ".gif", ".svg"}};

/// The segment of a path that begins at `from`, without "/".
std::string_view segmentAt(std::string_view path, std::size_t from) noexcept {
  return path.substr(from, path.find('/', from) - from);
}

/// What stands behind the last folder of a path.
std::string_view lastOf(std::string_view path) noexcept {
  return path.substr(path.rfind('/') + 1);
}

/// A text in which case makes no difference (Unicode's simple case folding). Bytes that are no
/// UTF-8 stay.
std::string foldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    const char32_t codePoint = util::internal::decodeUtf8(text, at);
    if (codePoint < 0x80) {
      folded += util::ascii::lowerCase(text[begin]);
    } else if (codePoint == util::internal::NOT_UTF8) {
      folded += text.substr(begin, at - begin);
    } else {
      appendUtf8(folded, u_foldCase(static_cast<UChar32>(codePoint), U_FOLD_CASE_DEFAULT));
    }
  }
  return folded;
}

/// What an author may have meant by characters that have a meaning in addresses only.
std::string withoutAddressSyntax(std::string_view path) {
  path = path.substr(0, path.find_first_of("?#"));
  std::string plain;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const int escaped = util::internal::escapedByte(path, i);
    if (escaped >= 0) {
      plain += static_cast<char>(escaped);
      i += 2;
    } else {
      plain += path[i] == '\\' ? '/' : path[i];
    }
  }
  return plain;
}

struct Resolved {
  std::string path;
  bool leadsOut = false;
};

Resolved resolve(std::string_view path, std::string_view separators) {
  Resolved resolved;
  bool isFolder = true;
  for (std::size_t at = 0; at <= path.size();) {
    const std::string_view segment = path.substr(at, path.find_first_of(separators, at) - at);
    at += segment.size() + 1;
    isFolder = segment.empty() || segment == "." || segment == "..";
    if (segment == "..") {
      const std::size_t last = resolved.path.rfind('/');
      resolved.leadsOut |= resolved.path.empty();
      resolved.path.erase(last == std::string::npos ? 0 : last);
    } else if (!isFolder) {
      resolved.path.append(resolved.path.empty() ? "" : "/").append(segment);
    }
  }
  resolved.path += isFolder && !resolved.path.empty() ? "/" : "";
  return resolved;
}

}  // namespace

std::string resolvePath(std::string_view path) {
  return resolve(path, "/").path;
}

bool leadsOut(std::string_view path) {
  const bool hasDrive = path.size() > 1 && util::ascii::isLetter(path[0]) && path[1] == ':';
  return hasDrive || resolve(path, "/\\").leadsOut;
}

PackageFiles::PackageFiles(const std::vector<std::string>& names) {
  entries_.reserve(names.size());
  for (const std::string& name : names) {
    std::string path = resolvePath(name);
    std::string folded = foldCase(path);
    entries_.push_back({std::move(folded), std::move(path)});
  }
  std::sort(entries_.begin(), entries_.end());
  addresses_.reserve(names.size());
  for (const Entry& entry : entries_) {
    addAddresses(entry);
  }
  std::sort(addresses_.begin(), addresses_.end());
  for (const auto& [folded, path, language] : addresses_) {
    if (path.substr(0, LOCALES.size()) != LOCALES) {
      names_.push_back({lastOf(folded), path, {}});
    }
  }
  std::sort(names_.begin(), names_.end());
}

void PackageFiles::addAddresses(const Entry& entry) {
  if (entry.path.empty() || entry.path.back() == '/') {
    return;
  }
  const std::string_view folded = entry.folded;
  const std::string_view path = entry.path;
  addresses_.push_back({folded, path, {}});
  if (path.substr(0, LOCALES.size()) != LOCALES) {
    return;
  }
  const std::string_view language = segmentAt(path, LOCALES.size());
  const std::size_t rest = LOCALES.size() + language.size() + 1;
  if (rest < path.size() && language != "*" && isLanguageTag(std::string(language))) {
    const std::string_view foldedLanguage = segmentAt(folded, LOCALES.size());
    addresses_.push_back({folded.substr(LOCALES.size() + foldedLanguage.size() + 1),
                          path.substr(rest), foldedLanguage});
  }
}

bool PackageFiles::has(std::string_view path, const std::vector<std::string>* languages) const {
  const std::string resolved = resolvePath(path);
  const std::string folded = foldCase(resolved);
  const auto isIn = [&](std::string_view language) {
    const auto found =
        std::lower_bound(addresses_.begin(), addresses_.end(), Address{folded, resolved, language});
    return found != addresses_.end() && found->path == resolved &&
           (languages == nullptr || found->language == language);
  };
  return isIn({}) ||
         (languages != nullptr && std::any_of(languages->begin(), languages->end(), isIn));
}

std::string_view PackageFiles::meantBy(std::string_view path) const {
  const std::string plain = foldCase(resolvePath(withoutAddressSyntax(path)));
  const std::size_t end = std::min(plain.rfind('.'), plain.size());
  std::vector<std::string> meant = {foldCase(resolvePath(path)), plain};
  for (const auto& formats : FORMATS) {
    if (std::find(std::begin(formats), std::end(formats), plain.substr(end)) != std::end(formats)) {
      std::transform(std::begin(formats), std::end(formats), std::back_inserter(meant),
                     [&](std::string_view format) { return plain.substr(0, end).append(format); });
    }
  }
  meant.emplace_back(lastOf(plain));
  for (const std::string& folded : meant) {
    const std::vector<Address>& known = &folded == &meant.back() ? names_ : addresses_;
    const auto [first, last] = std::equal_range(
        known.begin(), known.end(), Address{folded, {}, {}},
        [](const Address& left, const Address& right) { return left.folded < right.folded; });
    if (first != last) {
      return first->path == (last - 1)->path ? first->path : std::string_view();
    }
  }
  return {};
}

void PackageFiles::forEachAmbiguous(
    const std::function<void(std::string_view name, std::string_view other)>& visit) const {
  std::set<std::string_view> visited;  // a folder may have many files
  const auto visitOnce = [&](std::string_view name, std::string_view other) {
    const bool isNew = visited.insert(name).second;
    if (visited.insert(other).second || isNew) {
      visit(name, other);
    }
  };
  // Names that are the same in all but case, as a whole or up to a folder, stand together.
  for (std::size_t i = 1; i < entries_.size(); ++i) {
    const std::string_view one = entries_[i - 1].path;
    const std::string_view other = entries_[i].path;
    if (one == other && !one.empty() && one.back() != '/') {
      visit(other, one);
    }
    const auto end = static_cast<std::size_t>(
        std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first - one.begin());
    const std::string_view left = one.substr(0, one.find('/', end));
    const std::string_view right = other.substr(0, other.find('/', end));
    if (left != right && foldCase(left) == foldCase(right)) {
      visitOnce(right, left);
    }
    // The folder for languages has one name; that it is meant shows where it has what the root has.
    const std::string_view folder = segmentAt(other, 0);
    const std::string_view inside = other.substr(std::min(folder.size() + 1, other.size()));
    const std::string_view language = segmentAt(inside, 0);
    if (entries_[i].folded.compare(0, LOCALES.size(), LOCALES) == 0 &&
        other.substr(0, LOCALES.size()) != LOCALES && language.size() < inside.size() &&
        isLanguageTag(std::string(language)) && has(inside.substr(language.size() + 1), nullptr)) {
      visitOnce(folder, LOCALES.substr(0, LOCALES.size() - 1));
    }
  }
  // So do what stands in a folder and what stands in a file.
  for (auto file = entries_.begin(); file != entries_.end(); ++file) {
    const std::string folder = file->folded + '/';
    const auto inside = std::lower_bound(
        file, entries_.end(), folder,
        [](const Entry& entry, const std::string& wanted) { return entry.folded < wanted; });
    if (folder.size() > 1 && inside != entries_.end() && file[1].folded != file->folded &&
        inside->folded.compare(0, folder.size(), folder) == 0) {
      visit(file->path, inside->path);
    }
  }
}

}  // namespace orvane::nimbrel::check
