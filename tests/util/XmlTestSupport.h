#pragma once

#include <cstdlib>
#include <filesystem>

#include "tests/support/Checks.h"
#include "util/ParseException.h"
#include "util/XmlParserLibXml.h"

// Verbs for the tests of the XML layer.
namespace orvane::nimbrel::util::test {

using nimbrel::test::expectRows;
using nimbrel::test::rejectionBy;
using nimbrel::test::repeated;
using nimbrel::test::Row;

/// Parses a copy that ends where its memory ends, so that reading too far is noticed.
inline std::shared_ptr<XmlDocument> parse(std::string_view text, const char* encoding = nullptr) {
  const std::vector<char> exact(text.begin(), text.end());
  return XmlParserLibXml().parse(exact.data(), static_cast<unsigned int>(exact.size()), nullptr,
                                 encoding);
}

inline std::shared_ptr<XmlNode> parseRoot(std::string_view text, const char* encoding = nullptr) {
  return parse(text, encoding)->getDocumentElement();
}

/// Why a document is rejected: "line:column: message", or "accepted".
inline std::string rejection(std::string_view text, const char* encoding = nullptr) {
  return rejectionBy<ParseException>([&] { (void)parse(text, encoding); });
}

/// A tree in short: `name{namespace}[children]`, texts in quotes, `!` for a comment, `?` for a
/// processing instruction.
inline std::string outline(const XmlNode* node) {
  switch (node->getNodeType()) {
    case XmlNode::TEXT:
      return "'" + std::string(node->contentView()) + "'";
    case XmlNode::COMMENT:
      return "!";
    case XmlNode::PROCESSING_INSTRUCTION:
      return "?";
    default:
      break;
  }
  std::string text(node->nameView());
  if (node->namespaceView().data() != nullptr) {
    text += "{" + std::string(node->namespaceView()) + "}";
  }
  text += "[";
  for (const XmlNode* child = node->firstChild(); child != nullptr; child = child->nextSibling()) {
    text += outline(child);
  }
  return text + "]";
}

inline std::string outline(std::string_view text, const char* encoding = nullptr) {
  return outline(parseRoot(text, encoding).get());
}
/// The outlines of whole documents, each behind the same text.
inline auto outlineBehind(const std::string& prefix) {
  return [prefix](const std::string& text) { return outline(prefix + text); };
}

/// A directory that goes with the test.
class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "xml-XXXXXX").string();
    path_ = ::mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] std::string path(const char* name) const { return (path_ / name).string(); }

  [[nodiscard]] std::string write(const char* name, std::string_view text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }

 private:
  std::filesystem::path path_;
};

/// `before`, the number from 0 upward and `after`, over and over.
inline std::string numbered(std::string_view before, std::string_view after, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all.append(before).append(std::to_string(i)).append(after);
  }
  return all;
}

}  // namespace orvane::nimbrel::util::test
