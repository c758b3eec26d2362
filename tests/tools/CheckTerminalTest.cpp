// What `check` adds for a person at a terminal: colours, the line of the document, and carets.
#include <gmock/gmock.h>

#include <regex>
#include <sstream>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string terminalOutput(const std::string& document, const Environment& environment) {
  return run({"check", "-"}, document, Stdout::TERMINAL, environment).out;
}

/// What stands below the findings' own lines, behind the gutter, but for stray text, which only
/// makes lines long.
std::string excerptsOf(const std::string& document) {
  std::string excerpts;
  std::istringstream lines(terminalOutput(document, {"NO_COLOR=1"}));
  bool isStray = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("  ", 0) != 0) {
      isStray = line.find("[misplaced]") != std::string::npos;
    } else if (!isStray) {
      EXPECT_EQ(line.substr(5, 3), " | ");
      excerpts += line.substr(8) + '\n';
    }
  }
  return excerpts;
}

TEST(CheckTerminal, CaretsMarkThePlace) {
  const std::string place = "<icon src='a' width='9px'/>";
  const std::string marked = "                     ^~~\n";
  const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
  const Row rows[] = {
      {place, place + '\n' + marked},
      {"<icon/>", "<icon/>\n ^~~~\n"},  // what is absent has no place of its own
      {"<icon src='a' width='' />", "<icon src='a' width='' />\n                    ^~\n"},
      {"<icon\n src='a' width='9px'/>", " src='a' width='9px'/>\n                ^~~\n"},
      {"<icon src='a' width='9px\n'/>", "<icon src='a' width='9px\n" + marked},
      // tabs keep their width, other controls are escaped; characters count, not bytes
      {"\t<icon\tsrc='a'\twidth='9px'/>",
       "        <icon   src='a' width='9px'/>\n" + blanks(31) + "^~~\n"},
      {"\xC3\xA9\xC2\x9B" + place, "\xC3\xA9\\u009b" + place + '\n' + blanks(7) + marked},
      {place + "\r", place + '\n' + marked},
      // an ideograph is two columns wide, an accent of its own none
      {"\xE5\xAD\x97" + place, "\xE5\xAD\x97" + place + '\n' + blanks(2) + marked},
      {"e\xCC\x81" + place, "e\xCC\x81" + place + '\n' + blanks(1) + marked},
  };
  expectRows(rows, [](const std::string& line) { return excerptsOf(widget('\n' + line + '\n')); });
  EXPECT_EQ(excerptsOf("\xEF\xBB\xBF<icon xmlns='http://www.w3.org/ns/widgets'/>"),
            "<icon xmlns='http://www.w3.org/ns/widgets'/>\n ^~~~\n");
  // an element that an entity brought
  const std::string reference = "&e;<icon src='a'/>";
  EXPECT_EQ(excerptsOf("<!DOCTYPE widget [<!ENTITY e \"<icon/>\">]>" + widget('\n' + reference)),
            reference + "</widget>\n");
}

TEST(CheckTerminal, AKnownColumnIsMarkedUpToTheEndOfTheLine) {
  EXPECT_EQ(excerptsOf("<widget>\n\xC3\xA9 <a x=></a></widget>"),
            "\xC3\xA9 <a x=></a></widget>\n     ^\n");
  EXPECT_EQ(excerptsOf("<widget>\n <a></b>"), " <a></b>\n    ^~~\n");
  EXPECT_EQ(excerptsOf("<?x?> "), "<?x?> \n      ^\n");
}

TEST(CheckTerminal, LongLinesAreCutAroundThePlace) {
  const std::string place = "<icon src='a' width='9px'/>";
  const std::string marked = "                     ^~~\n";
  const std::string filler(100, '-');
  EXPECT_EQ(excerptsOf(widget('\n' + place + filler)),
            place + filler.substr(place.size()) + "...\n" + marked);
  EXPECT_EQ(excerptsOf(widget('\n' + filler + place + filler + '\n')),
            "..." + filler.substr(0, 9) + place + filler.substr(0, 64) + "...\n" +
                std::string(12, ' ') + marked);
  EXPECT_EQ(excerptsOf(widget('\n' + filler + place + '\n')),
            "..." + filler.substr(0, 73) + place + '\n' + std::string(76, ' ') + marked);
  const std::string wide = orvane::nimbrel::test::repeated("\xC3\xA9", 1001);
  EXPECT_EQ(excerptsOf(widget('\n' + wide + place + wide + '\n')),
            "..." + wide.substr(0, 18) + place + wide.substr(0, 128) + "...\n" +
                std::string(12, ' ') + marked);
  EXPECT_THAT(excerptsOf(widget('\n' + std::string(65536, '-') + place + '\n')),
              testing::EndsWith(place + '\n' + std::string(97, ' ') + "^~~\n"));
}

TEST(CheckTerminal, EveryEncodingHasLines) {
  const auto encoded = [](const std::string& encoding, const std::string& text) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>" + widget('\n' + text + "<icon/>\n");
  };
  const std::string shown = "\xC3\xA9<icon/>\n  ^~~~\n";
  EXPECT_EQ(excerptsOf(encoded("utf-8", "\xC3\xA9")), shown);
  EXPECT_EQ(excerptsOf(encoded("ISO-8859-1", "\xE9")), shown);
  std::string wide = "\xFF\xFE";
  for (const char c : widget("\n<icon/>\n")) {
    wide += {c, '\0'};
  }
  EXPECT_EQ(excerptsOf(wide), "<icon/>\n ^~~~\n");
}

TEST(CheckTerminal, ColoursFollowTheUsersWish) {
  const std::string document = widget("<icon/>");
  const std::string plain = terminalOutput(document, {"NO_COLOR=1"});
  EXPECT_THAT(plain, testing::EndsWith("\n1 warning\nFor more about a code, try: nimbrel-config "
                                       "check --explain missing-attribute\n"));
  const std::string coloured = terminalOutput(document, {});
  for (const char* part : {"\x1B[1m-:1:100\x1B[0m: \x1B[1;33mwarning\x1B[0m: icon: ",
                           "\n\x1B[2m    1 |\x1B[0m ", "\x1B[1;33m^~~~\x1B[0m\n"}) {
    EXPECT_THAT(coloured, HasSubstr(part));
  }
  EXPECT_EQ(std::regex_replace(coloured, std::regex("\x1B\\[[0-9;]*m"), ""), plain);
  for (const char* wish : {"NO_COLOR=1", "TERM=dumb"}) {
    EXPECT_THAT(terminalOutput(document, {wish}), HasSubstr(": warning: icon: "));
  }
}

TEST(CheckTerminal, AHostileDocumentSendsNothingToTheTerminal) {
  const std::string evil = "\xC2\x9B[31m\x7F\xE2\x80\xAE";
  const std::string document =
      widget("\n<" + std::string("icons ") + "key='" + evil + "'/><" + "x xmlns='" + evil + "'/>" +
             "<icon src='a' width='" + evil + "'/><name dir='" + evil + "' xml:lang='" + evil +
             "'>" + evil + "</name>");
  for (const char* format : {"text", "json", "sarif"}) {
    SCOPED_TRACE(format);
    const std::string output = run({"check", "--locale", "en", "--format", format, "-"}, document,
                                   Stdout::TERMINAL, {"NO_COLOR=1"})
                                   .out;
    EXPECT_THAT(output, HasSubstr("\\u009b"));
    // NOLINTNEXTLINE(misc-misleading-bidirectional): the very bytes that must not come through
    for (const char* raw : {"\xC2\x9B", "\x7F", "\xE2\x80\xAE", "\x1B"}) {
      EXPECT_THAT(output, Not(HasSubstr(raw)));
    }
  }
}

}  // namespace
}  // namespace nimbrel_test
