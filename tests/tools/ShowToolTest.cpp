#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/tools/Tool.h"
#include "util/StringUtil.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string DOCUMENT_WITH_NAME = widget("<name>Maps</name>");

// In the sentences of "check", which print the same.
TEST(ShowTool, RejectsADocumentInOneLine) {
  const Row rows[] = {
      {"", "-: error: The document is empty. [document-rejected]\n"},
      {"<a/>", "-:1:2: error: a: The root element must be <widget>. [wrong-root]\n"},
      {"<a>\n</b>",
       "-:2:1: error: <a> in line 1 is closed by </b>; write </a>. [document-rejected]\n"},
      {widget("<name/>\n<icon src='x' width='x'/><feature name='x y'/>"),
       "-:2:41: error: feature: name=\"x y\": Must be a full address that begins with a scheme, "
       "such "
       "as https://...; the feature is required, so the document is rejected. "
       "[required-feature-name]\n"},
      {widget("<t:network>\n<t:asset key='maxConnections' value=''/></t:network>"),
       "-:2:37: error: tavlo:asset: value=\"\": A number is needed; the document is rejected. "
       "[number-rejected]\n"}};
  expectRows(rows, [](const std::string& document) {
    const Outcome outcome = run({"show", "-"}, document);
    EXPECT_THAT(run({"check", "-"}, document).out, HasSubstr(outcome.error));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    return outcome.error;
  });
}

TEST(ShowTool, GivesLineAndColumnAndEscapesWhatItQuotes) {
  const TemporaryFile file(
      "<widget>\n  <\xC2\x9B"
      "31m></other></widget>");
  const Outcome outcome = run({"show", file.path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.error, testing::StartsWith(file.path() + ":2:"));
  EXPECT_THAT(outcome.error, Not(HasSubstr("\xC2\x9B")));
  EXPECT_EQ(outcome.error.find('\n'), outcome.error.size() - 1);
}

TEST(ShowTool, TellsUnreadableInputFromARejectedDocument) {
  const Row rows[] = {{"/nowhere/config.xml", "No such file or directory"},
                      {"/", "Is a directory without config.xml; use -r with check or show"},
                      {"/dev/null", "Not a regular file"}};
  for (const auto& [path, reason] : rows) {
    for (const Outcome& outcome :
         {run({"show", path}), run({"show", path, "--url", "http://a.example/"})}) {
      EXPECT_EQ(outcome.status, 2);
      EXPECT_EQ(outcome.error, path + ": cannot be read: " + reason + "\n");
    }
  }
  EXPECT_EQ(run({"show", "line\nbreak"}).error,
            "line\\nbreak: cannot be read: No such file or directory\n");
}

// To open it would let who writes to it go on.
TEST(ShowTool, AFifoIsNotOpened) {
  const TemporaryFile place("");
  const std::string path = place.path() + ".fifo";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const pid_t writer = fork();
  if (writer == 0) {
    _exit(open(path.c_str(), O_WRONLY) < 0 ? 1 : 0);
  }
  for (const char* command : {"show", "check"}) {
    EXPECT_EQ(run({command, path}).error, path + ": cannot be read: Not a regular file\n");
  }
  usleep(20000);
  EXPECT_EQ(waitpid(writer, nullptr, WNOHANG), 0) << "the writer waits";
  kill(writer, SIGKILL);
  waitpid(writer, nullptr, 0);
  unlink(path.c_str());
}

TEST(ShowTool, AFileOfTwoGibibytesIsRejectedUnread) {
  const TemporaryFile file("");
  ASSERT_EQ(truncate(file.path().c_str(), off_t{1} << 31), 0);
  EXPECT_EQ(run({"show", file.path()}).error,
            file.path() + ": error: The document is too large. [document-rejected]\n");
  EXPECT_THAT(run({"check", file.path()}).out, HasSubstr("The document is too large"));
}

TEST(ShowTool, RejectsWrongUsage) {
  for (const char* line : {"",
                           "parse",
                           "show",
                           "show --field nothing -",
                           "show --field startFile2.src -",
                           "show --field  -",
                           "show --field netSettings.nothing -",
                           "show --field height.x. --nothing -",
                           "show --field startFile. -",
                           "show --field author.nmae -",
                           "show --field icons.x -",
                           "show --field icons.00 -",
                           "show --field icons.0.title -",
                           "show --field elements.7.src -",
                           "show --format yaml -",
                           "show --format html a b",
                           "show --format html --field id -",
                           "show --format html --encoding UTF-8 -",
                           "show --density high -",
                           "show --density 300x -",
                           "show --density 2147483648 -",
                           "check --density 300x -",
                           "show --locale",
                           "show --unknown -"}) {
    SCOPED_TRACE(line);
    const Outcome outcome = run(orvane::zel::util::StringUtil::split(line, ' '));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.error, testing::StartsWith("nimbrel-config: "));
  }
}

TEST(ShowTool, SuggestsWhatWasMeant) {
  const TemporaryFile file(DOCUMENT_WITH_NAME);
  const Row rows[] = {
      {"chekc", "there is no command \"chekc\" (did you mean \"check\"?); --help"},
      {"sho\x1B", "there is no command \"sho\\u001b\" (did you mean \"show\"?); --help"},
      {"parse", "there is no command \"parse\"; --help"},
      {"hepl show", "there is no command \"hepl\" (did you mean \"help\"?); --help"},
      {"help sohw", "there is no command \"sohw\" (did you mean \"show\"?); --help"},
      {file.path(),
       '"' + file.path() + "\" is a file, not a command; use show or check FILE; --help"},
      {"--verison", "unknown option \"--verison\" (did you mean \"--version\"?); --help"},
      {"show --formt -", "unknown option \"--formt\" (did you mean \"--format\"?); --help"},
      {"id --formt=json", "unknown option \"--formt\" (did you mean \"--format\"?); --help"},
      {"show --summary -", "unknown option \"--summary\"; --help"},
      {"show -x -", "unknown option \"-x\"; --help"},
      {"show --format jsom -",
       "--format: \"jsom\" (did you mean \"json\"?) is none of: text html json jsonl; --help"},
      {"show --field nme -", "there is no field \"nme\" (did you mean \"name\"?); the keys of"},
      {"show --field author.nmae -",
       "there is no field \"author.nmae\" (did you mean \"author.name\"?); the keys of"},
      {"show --field icons.0.scr -",
       "there is no field \"icons.0.scr\" (did you mean \"icons.0.src\"?); the keys of"},
      {"show --field x -", "there is no field \"x\"; the keys of"},
      {"check --explain not-an-irri",
       "there is no code \"not-an-irri\" (did you mean \"not-an-iri\"?); --codes"},
      {"check --explain x", "there is no code \"x\"; --codes"},
      {"localized nme -", "there is no element \"nme\" (did you mean \"name\"?)\n"},
      {"localized icon -", "there is no element \"icon\"\n"},
  };
  for (const auto& [line, expected] : rows) {
    SCOPED_TRACE(line);
    const Outcome outcome =
        run(orvane::zel::util::StringUtil::split(line, ' '), DOCUMENT_WITH_NAME);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.error, testing::StartsWith("nimbrel-config: " + expected));
  }
}

TEST(ShowTool, HelpAndVersionWorkEverywhere) {
  for (const std::string command : {"", "show", "localized", "id", "check"}) {
    SCOPED_TRACE(command);
    const auto runWith = [&](const std::string& option) {
      return run(command.empty() ? std::vector{option} : std::vector{command, option});
    };
    const Outcome help = runWith("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, testing::StartsWith("Usage: nimbrel-config "));
    EXPECT_THAT(help.out, testing::Not(testing::ContainsRegex("[^\n]{61}")));
    EXPECT_EQ(runWith("-h").out, help.out);
    EXPECT_EQ(run(command.empty() ? std::vector<std::string>{"help"}
                                  : std::vector<std::string>{"help", command})
                  .out,
              help.out);
    for (const char* option : {"--version", "-V"}) {
      EXPECT_EQ(runWith(option).out, "nimbrel-config " NIMBREL_VERSION "\n");
    }
  }
}

TEST(ShowTool, FailsWhenItsOutputIsLost) {
  for (const char* argument : {"-", "--help"}) {
    const Outcome unread = run({"show", argument}, widget(""), Stdout::BROKEN_PIPE);
    EXPECT_EQ(unread.status, -SIGPIPE);
    EXPECT_EQ(unread.error, "");
    for (const Stdout target : {Stdout::CLOSED, Stdout::FULL_DISK}) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(target) << ' ' << argument);
      const Outcome outcome = run({"show", argument}, widget(""), target);
      EXPECT_EQ(outcome.status, 2);
      EXPECT_THAT(outcome.error, HasSubstr("standard output cannot be written"));
    }
  }
}

TEST(ShowTool, TextShowsOnlyWhatIsSet) {
  EXPECT_EQ(run({"show", "-"}, widget("")).out, "Widget\n  locales  *\n");
  EXPECT_EQ(
      run({"show", "--locale", "he", "-"},
          widget("<name xml:lang='he' dir='rtl'>a<span dir='lro' xml:lang='en'> b</span></name>"
                 "<license xml:lang='he'>one\ntwo</license><icon src='i' width='3'/>"
                 "<preference name='p' value=''/><t:gestures><t:param name='tap' value='yes'"
                 " properties='x'/></t:gestures><t:chrome/><other/>"))
          .out,
      "Widget\n"
      "  name     a b  (he, rtl)\n"
      "    run    a  (he, rtl)\n"
      "    run    \" b\"  (en, lro)\n"
      "  license  one\n"
      "           two  (he, ltr)\n"
      "  locales  he, *\n"
      "\nIcons\n  i  width 3\n"
      "\nPreferences\n  p  \"\"\n"
      "\nGestures\n  tap  enabled  x\n"
      "\nElements read\n"
      "  chrome      http://tavlo.example/ns/widget-extensions\n"
      "  gestures    http://tavlo.example/ns/widget-extensions\n"
      "  icon        http://www.w3.org/ns/widgets\n"
      "  license     http://www.w3.org/ns/widgets\n"
      "  name        http://www.w3.org/ns/widgets\n"
      "  other       http://www.w3.org/ns/widgets\n"
      "  preference  http://www.w3.org/ns/widgets\n"
      "\nError text of the parser\n"
      "  message  !Error: ConfigParser::processWidgetElements, Found unknown xml element\n");
}

// Each place where untrusted bytes reach the output carries a control sequence introducer, a
// delete, characters that turn the direction, and what could imitate the end of quotes or an
// escape.
TEST(ShowTool, AHostileDocumentSendsNothingToTheTerminal) {
  const std::string evil = "x&#x9B;31m&#x7F;&#x202E;&#x200E;&#x200F;&#x61C;&quot;\\ny";
  const std::string attribute = "='" + evil + "'";
  const std::string setting = " value" + attribute + "/>";
  const std::string document =
      widget("<name short" + attribute + ">" + evil + "</name><description>&#13;" + evil +
                 "</description><author email" + attribute + "/><content src" + attribute +
                 " encoding" + attribute + " type" + attribute + "/><icon src" + attribute +
                 "/><preference name" + attribute + setting + "<feature name='urn:x'><param name" +
                 attribute + setting + "</feature><t:network><t:asset key='user-agent'" + setting +
                 "</t:network><t:permissions><t:permission name" + attribute +
                 "/></t:permissions><t:chrome><t:asset key='configureSearchBar'" + setting +
                 "</t:chrome><t:gestures><t:param name='tap' value='yes' properties" + attribute +
                 "/></t:gestures><t:resources><t:asset key" + attribute + setting +
                 "</t:resources><t:export resource" + attribute +
                 "/><t:settings><t:setting "
                 "name='defaultFontSize' value='0" +
                 evil + "'/></t:settings>",
             "version" + attribute + " viewmodes" + attribute + " defaultlocale" + attribute);
  for (const char* format : {"text", "json"}) {
    SCOPED_TRACE(format);
    const Outcome outcome = run({"show", "--debug", "--format", format, "-"}, document);
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    for (const std::string& stream : {outcome.out, outcome.error}) {
      EXPECT_THAT(stream, HasSubstr(R"(x\u009b31m\u007f\u202e\u200e\u200f\u061c\"\\ny)"));
      // NOLINTNEXTLINE(misc-misleading-bidirectional): the very bytes that must not come through
      for (const char* raw : {"\xC2\x9B", "\x7F", "\xE2\x80\xAE", "\xE2\x80\x8E", "\xE2\x80\x8F",
                              "\xD8\x9C", "\r", "\x1B"}) {
        EXPECT_THAT(stream, Not(HasSubstr(raw)));
      }
    }
  }
  EXPECT_EQ(show(document)["name"]["text"],
            Json::parse(R"("x\u009b31m\u007f\u202e\u200e\u200f\u061c\"\\ny")"));
}

// What nothing shows is marked for a person, and stays for a program.
TEST(ShowTool, MarksWhatATerminalDoesNotShow) {
  const struct {
    const char* written;
    const char* text;
    const char* json;  // null: as written
  } cases[] = {
      {"\xC2\xAD", "\\u00ad", nullptr},          {"\xE2\x80\x8B", "\\u200b", nullptr},
      {"\xE2\x81\xA0", "\\u2060", nullptr},      {"\xE3\x85\xA4", "\\u3164", nullptr},
      {"\xEF\xB8\x8F", "\\ufe0f", nullptr},      {"\xF3\xA0\x80\x81", "\\udb40\\udc01", nullptr},
      {"\xE2\x80\xA7", "\xE2\x80\xA7", nullptr},  // U+2027, beside the next ones
      {"\xE2\x80\xA8", "\\u2028", "\\u2028"},    {"\xE2\x80\xA9", "\\u2029", "\\u2029"},
      {"\xEF\xBF\xB8", "\\ufff8", nullptr},      {"\xEF\xBF\xB9", "\\ufff9", "\\ufff9"},
      {"\xEF\xBF\xBA", "\\ufffa", "\\ufffa"},    {"\xEF\xBF\xBB", "\\ufffb", "\\ufffb"},
      {"\xEF\xBF\xBC", "\xEF\xBF\xBC", nullptr}, {"\xC3\xA9", "\xC3\xA9", nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const std::string document = widget("<icon src='a" + std::string(c.written) + "b'/>");
    EXPECT_THAT(run({"show", "-"}, document).out, HasSubstr("a" + std::string(c.text) + "b"));
    const std::string json = c.json == nullptr ? c.written : c.json;
    EXPECT_THAT(run({"show", "--format", "json", "-"}, document).out, HasSubstr("a" + json + "b"));
  }
}

// It would make the output a thousand times as long as the document.
TEST(ShowTool, PrintsALongNamespaceOnce) {
  const auto document = [](const std::string& uri) {
    std::string elements = "<x/>";
    for (int i = 0; i < 500; ++i) {
      elements += "<l:a" + std::to_string(i) + "/><w:a/>";
    }
    return "<widget xmlns='http://www.w3.org/ns/widgets' xmlns:w='urn:w' xmlns:l='" + uri + "'>" +
           elements + "</widget>";
  };
  const std::string longest = "urn:" + std::string(252, 'x');
  const std::string longer = longest + "x";
  const Json full = show(document(longest))["elements"];
  const Json shortened = show(document(longer))["elements"];
  ASSERT_EQ(shortened.size(), 1001U);
  EXPECT_EQ(full[1000]["namespace"], "urn:w");
  EXPECT_EQ(full[999].dump(), R"({"name":"a499","namespace":")" + longest + R"("})");
  EXPECT_EQ(shortened[1].dump(), R"({"name":"a0","namespace":")" + longer + R"("})");
  EXPECT_EQ(shortened[999].dump(), R"({"name":"a499","namespaceOf":1})");
  const std::string text = run({"show", "-"}, document(longer)).out;
  EXPECT_EQ(text.find(longer), text.rfind(longer));
  EXPECT_THAT(text, HasSubstr("a499  the same namespace\n"));
  const std::string lines = run({"show", "--field", "elements", "-"}, document(longer)).out;
  EXPECT_EQ(lines.find(longer), lines.rfind(longer));
  EXPECT_THAT(lines, HasSubstr(R"({"name":"a499","namespaceOf":1})"));
}

TEST(ShowTool, ColoursFollowTheUsersWish) {
  const struct {
    Stdout target;
    const char* when;
    Environment environment;
    bool isColoured;
  } cases[] = {
      {Stdout::CAPTURED, "auto", {}, false},
      {Stdout::CAPTURED, "auto", {"CLICOLOR_FORCE=1", "TERM=dumb"}, true},
      {Stdout::CAPTURED, "auto", {"CLICOLOR_FORCE=0"}, false},
      {Stdout::CAPTURED, "always", {"NO_COLOR=1"}, true},
      {Stdout::TERMINAL, "auto", {}, true},
      {Stdout::TERMINAL, "auto", {"TERM=dumb"}, false},
      {Stdout::TERMINAL, "auto", {"NO_COLOR=1", "CLICOLOR_FORCE=1"}, false},
      {Stdout::TERMINAL, "never", {"CLICOLOR_FORCE=1"}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.when << ' ' << testing::PrintToString(c.environment));
    const std::string out =
        run({"show", "--color", c.when, "-"}, widget(""), c.target, c.environment).out;
    EXPECT_EQ(out.find('\x1B') != std::string::npos, c.isColoured) << out;
  }
}

TEST(ShowTool, DebugCopiesTheLogLines) {
  const std::string document = widget("<t:export resource='a'/>");
  EXPECT_EQ(run({"show", "--debug", "-"}, document).error,
            "D nimbrel:NimbrelConfigParser::processExport:resourcePath = a:\n");
  EXPECT_EQ(run({"show", "-"}, document).error, "");
}

TEST(ShowTool, DensityStandsInForTheDevice) {
  const std::string document = widget(
      "<t:settings><t:setting name='defaultFontSize' value='10'/><t:setting name='defaultFontSize'"
      " value='11'/><t:setting name='defaultFontSize300' value='22'/><t:setting "
      "name='defaultFontSize-1' value='33'/></t:settings>");
  const struct {
    std::vector<std::string> options;
    int size;
  } cases[] = {{{}, 11},  // no answer: the plain key is the density's, and the last one counts
               {{"--density", "160"}, 10},
               {{"--density", "300"}, 22},
               {{"--density", "-1"}, 33}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.options));
    EXPECT_EQ(show(document, c.options)["appSettings"]["defaultFontSize"], c.size);
  }
}

TEST(ShowTool, TakesMemoryInProportionToTheText) {
  if (NIMBREL_SANITIZE) {
    GTEST_SKIP() << "a sanitizer keeps what is freed";
  }
  std::string children = "<description>";
  while (children.size() < 1'000'000) {
    children += "a\n";
  }
  children += "</description>";
  for (int i = 0; children.size() < 2'000'000; ++i) {
    children.append("<preference name='p").append(std::to_string(i)).append("' value='text'/>");
  }
  const long size = static_cast<long>(children.size()) / 1024;
  for (const char* format : {"text", "html"}) {
    const auto memoryOf = [&](const std::string& content) {
      const Outcome outcome = run({"show", "--format", format, "-"}, widget(content));
      EXPECT_EQ(outcome.status, 0) << outcome.error;
      return outcome.memory;
    };
    EXPECT_LT(memoryOf(children) - memoryOf(""), 20 * size) << format;
  }
}

TEST(ShowTool, EncodingAndUrlReachTheParser) {
  const std::string latin = widget("<name>\xE9</name>");
  EXPECT_EQ(run({"show", "-"}, latin).status, 1);
  EXPECT_EQ(
      show(latin, {"--encoding", "ISO-8859-1", "--url", "http://a.example/c.xml"})["name"]["text"],
      "\xC3\xA9");
  EXPECT_THAT(run({"show", "--stdin-name", "src/a.xml", "-"}, latin).error,
              testing::StartsWith("src/a.xml:1:"));
  const TemporaryFile file(latin);
  EXPECT_EQ(run({"show", "--encoding", "ISO-8859-1", file.path()}).status, 0);
}

}  // namespace
}  // namespace nimbrel_test
