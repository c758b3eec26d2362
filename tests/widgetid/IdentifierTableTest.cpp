#include <cstddef>
#include <cstdlib>
#include <exception>
#include <fstream>

#include "tests/support/Checks.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"
#include "widgetid/BasicWidgetId.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"

// The tables of docs/identifiers.md are what the library gives today. Their first column is the
// input; with NIMBREL_UPDATE_DOCS set in the environment this test rewrites the other columns.
namespace orvane::zel::config {
namespace {

using AnyParser = std::shared_ptr<WidgetIdParser>;

// What a cell stands for: "\xHH" is a byte, "\" before anything else stands for that.
std::string unescape(const std::string& cell) {
  std::string text;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    if (cell.compare(i, 2, "\\x") == 0) {
      text += static_cast<char>(std::stoi(cell.substr(i + 2, 2), nullptr, 16));
      i += 3;
    } else if (cell[i] == '\\') {
      text += cell.at(++i);
    } else {
      text += cell[i];
    }
  }
  return text;
}

std::string namesOf(const std::string& identifier, const AnyParser& parser) {
  try {
    const BasicWidgetId id(identifier.c_str(), parser);
    return std::string("`") + id.toAuthority() + "` | `" + id.toDirectoryName() + "` | `" +
           id.topLevelApplicationDataDirectory() + "` |";
  } catch (const std::exception& rejection) {
    return std::string("rejected: \"") + rejection.what() + "\" | | |";
  }
}

TEST(IdentifierTable, IsWhatTheLibraryGives) {
  const auto filenameMunger = std::make_shared<util::PortableFilenameMunger>();
  const AnyParser uris = std::make_shared<PelloWidgetIdParser>(
      std::make_shared<util::HostUriMunger>(), filenameMunger);
  const AnyParser filenames = std::make_shared<FilenameWidgetIdParser>(filenameMunger);

  std::ifstream in(NIMBREL_IDENTIFIER_TABLE);
  std::vector<std::string> lines;
  AnyParser parser;
  int identifierCount = 0;
  int filenameCount = 0;
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("| Identifier |", 0) == 0) {
      parser = uris;
    } else if (line.rfind("| File name |", 0) == 0) {
      parser = filenames;
    } else if (line.rfind("| `", 0) == 0) {
      SCOPED_TRACE("line " + std::to_string(lines.size() + 1));
      const std::size_t end = line.find("` | ");
      ASSERT_NE(end, std::string::npos);
      ASSERT_NE(parser, nullptr);
      ++(parser == uris ? identifierCount : filenameCount);
      const std::string row =
          line.substr(0, end + 4) + namesOf(unescape(line.substr(3, end - 3)), parser);
      if (std::getenv("NIMBREL_UPDATE_DOCS") == nullptr) {
        EXPECT_EQ(line, row);
      }
      line = row;
    }
    lines.push_back(line);
  }
  EXPECT_GE(identifierCount, 40);
  EXPECT_GE(filenameCount, 8);

  if (std::getenv("NIMBREL_UPDATE_DOCS") != nullptr) {
    std::ofstream out(NIMBREL_IDENTIFIER_TABLE);
    for (const std::string& line : lines) {
      out << line << '\n';
    }
    EXPECT_TRUE(out.flush());
  }
}

}  // namespace
}  // namespace orvane::zel::config
