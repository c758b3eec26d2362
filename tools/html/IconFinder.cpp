#include "tools/html/IconFinder.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "check/PackageFiles.h"
#include "util/ParseException.h"
#include "util/XmlDocument.h"
#include "util/XmlNode.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::tools {
namespace {

using util::XmlNode;

constexpr std::size_t LARGEST = std::size_t{128} * 1024;  // bytes of an icon
constexpr std::size_t MOST_TRIED = 20;                    // icons of a record
constexpr const char* UNREADABLE = "not in the package, damaged or over 128 KiB";
constexpr const char* DEFAULTS[] = {"icon.svg", "icon.png", "icon.gif", "icon.jpg"};

constexpr std::uint32_t MOST_PIXELS = 1024;
constexpr std::size_t MOST_ELEMENTS = 1000;
constexpr std::string_view SVG_NAMESPACE = "http://www.w3.org/2000/svg";
constexpr std::string_view SVG_ELEMENTS[] = {
    "svg",  "g",     "defs",   "title",          "desc",          "metadata", "path",
    "rect", "line",  "circle", "ellipse",        "polyline",      "polygon",  "text",
    "stop", "tspan", "style",  "linearGradient", "radialGradient"};

bool hasMark(std::string_view bytes, std::string_view mark) noexcept {
  return bytes.substr(0, mark.size()) == mark;
}

/// A number of `size` bytes within the text.
std::uint32_t bigEndian(std::string_view bytes, std::size_t at, std::size_t size) noexcept {
  std::uint32_t number = 0;
  for (const char c : bytes.substr(at, size)) {
    number = number << 8 | static_cast<unsigned char>(c);
  }
  return number;
}

bool isIcon(std::uint32_t width, std::uint32_t height) noexcept {
  return width != 0 && height != 0 && width <= MOST_PIXELS && height <= MOST_PIXELS;
}

bool isPng(std::string_view bytes) noexcept {
  return bytes.size() >= 24 && hasMark(bytes, "\x89PNG\r\n\x1A\n") &&
         bytes.substr(12, 4) == "IHDR" && isIcon(bigEndian(bytes, 16, 4), bigEndian(bytes, 20, 4));
}

bool isGif(std::string_view bytes) noexcept {
  const auto size = [&](std::size_t at) {
    return bigEndian(bytes, at + 1, 1) << 8 | bigEndian(bytes, at, 1);
  };
  return bytes.size() >= 10 && (hasMark(bytes, "GIF87a") || hasMark(bytes, "GIF89a")) &&
         isIcon(size(6), size(8));
}

/// Finds the size in the first segment that has one.
bool isJpeg(std::string_view bytes) noexcept {
  constexpr std::string_view WITHOUT_SIZE = "\xC4\xC8\xCC";  // among the codes C0 to CF
  if (!hasMark(bytes, "\xFF\xD8\xFF")) {
    return false;
  }
  for (std::size_t at = 2; at + 9 <= bytes.size() && bytes[at] == '\xFF';) {
    const char code = bytes[at + 1];
    if ((code & '\xF0') == '\xC0' && WITHOUT_SIZE.find(code) == std::string_view::npos) {
      return isIcon(bigEndian(bytes, at + 7, 2), bigEndian(bytes, at + 5, 2));
    }
    at += 2 + bigEndian(bytes, at + 2, 2);
  }
  return false;
}

/// Whether an element and all in it are harmless; `left` are the elements that there may be.
bool isHarmless(const XmlNode& element, std::size_t& left) noexcept {
  const bool isKnown = std::find(std::begin(SVG_ELEMENTS), std::end(SVG_ELEMENTS),
                                 element.nameView()) != std::end(SVG_ELEMENTS);
  // Elements of editors draw nothing.
  if (left-- == 0 || (element.namespaceView() == SVG_NAMESPACE && !isKnown) ||
      element.namespaceView() == "http://www.w3.org/1999/xhtml") {
    return false;
  }
  for (const XmlNode* child = element.firstElementChild(); child != nullptr;
       child = child->nextElementSibling()) {
    if (!isHarmless(*child, left)) {
      return false;
    }
  }
  return true;
}

bool isSvg(std::string_view bytes) {
  try {
    const std::shared_ptr<util::XmlDocument> document = util::XmlParserLibXml().parse(
        bytes.data(), static_cast<unsigned int>(bytes.size()), nullptr, nullptr);
    const std::shared_ptr<XmlNode> root = document->getDocumentElement();
    std::size_t left = MOST_ELEMENTS;
    return root != nullptr && root->nameView() == "svg" && root->namespaceView() == SVG_NAMESPACE &&
           isHarmless(*root, left);
  } catch (const ParseException&) {
    return false;
  }
}

/// The media type of an image that a browser can show as an icon without harm; null for any other
/// file.
///
/// PNG, GIF and JPEG of up to 1024 pixels each way, so that little becomes no gigabyte of pixels.
/// SVG of shapes, texts and gradients alone: what refers to other parts can be nested so that
/// drawing it never ends.
const char* imageTypeOf(std::string_view bytes) {
  return isPng(bytes)    ? "image/png"
         : isGif(bytes)  ? "image/gif"
         : isJpeg(bytes) ? "image/jpeg"
         : isSvg(bytes)  ? "image/svg+xml"
                         : nullptr;
}

}  // namespace

const IconImage& IconFinder::load(const std::string& path) {
  const auto [place, isNew] = images_.try_emplace(path);
  IconImage& image = place->second;
  if (!isNew) {
    return image;
  }
  std::optional<std::string> bytes = package_->read(path, std::min(LARGEST, leftToRead_));
  if (!bytes) {
    image.problem = leftToRead_ < LARGEST ? "too much was unpacked for this page" : UNREADABLE;
    return image;
  }
  leftToRead_ -= bytes->size();
  image.type = imageTypeOf(*bytes);
  if (image.type != nullptr) {
    image.bytes = std::move(*bytes);
  } else {
    image.problem = "no PNG, GIF or JPEG of up to 1024 pixels, and no simple SVG";
  }
  return image;
}

IconChoice IconFinder::find(const config::Config& record) {
  IconChoice choice;
  if (package_ == nullptr) {
    return choice;
  }
  // Chooses an icon if it can be shown; else tells why it cannot.
  const auto tryPath = [&](const std::string& path) {
    const char* problem = UNREADABLE;
    for (const std::string& locale : record.getUserAgentLocales()) {
      // At the root are the files for all languages.
      choice.path = locale == "*" ? "" : "locales/" + locale + '/';
      choice.path += path;
      const IconImage& icon = load(choice.path);
      if (icon.type != nullptr) {
        choice.image = &icon;
        return icon.problem;
      }
      problem = icon.problem != UNREADABLE ? icon.problem : problem;
    }
    return problem;
  };
  const std::vector<config::Config::Icon>& icons = record.getIcons();
  for (std::size_t i = 0; i < std::min(icons.size(), MOST_TRIED); ++i) {
    const char* const problem = tryPath(check::resolvePath(icons[i].src));
    if (problem == nullptr) {
      return choice;
    }
    choice.problems.push_back(problem);
  }
  choice.isDefault = true;
  for (const char* const path : DEFAULTS) {
    if (tryPath(path) == nullptr) {
      break;
    }
  }
  return choice;
}

}  // namespace orvane::nimbrel::tools
