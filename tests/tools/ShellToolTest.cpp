// What makes the tool fit a shell: several files, single fields, the user's own locales.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

TEST(ShowToolFields, OneLineForEachValue) {
  const std::string document = widget(
      "<name short='C'>Chess <span xml:lang='he'>x</span></name><content src='a.html'/>"
      "<icon src='1.png' width='3'/><icon src='2.png'/><preference name='p' value=''/>"
      "<description>one\ntwo</description><t:permissions><t:permission name='a'/>"
      "<t:permission name='a.b' value='no'/></t:permissions>"
      "<t:network><t:asset key='user-agent' value='u'/>"
      "<t:asset key='user-agent' value='v'/></t:network>",
      "id='urn:x' width='12'");
  const struct {
    const char* field;
    const char* text;
  } cases[] = {
      {"id", "urn:x\n"},
      {"width", "12\n"},
      {"height", ""},  // none, as opposed to the empty value
      {"preferences.0.value", "\n"},
      {"name", "Chess x\n"},
      {"name.runs.1.language", "he\n"},
      {"description", "one\\ntwo\n"},
      {"startFile.src", "a.html\n"},
      {"license.href", ""},
      {"icons.1.src", "2.png\n"},
      {"icons.1.width", ""},
      {"icons.2.src", ""},
      {"icons.x", ""},
      {"icons",
       "{\"src\":\"1.png\",\"height\":null,\"width\":3}\n"
       "{\"src\":\"2.png\",\"height\":null,\"width\":null}\n"},
      {"netSettings.userAgents", "u\nv\n"},
      {"appPermissions.a", "true\n"},
      {"appPermissions.a.b", "false\n"},
      {"appPermissions.c", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field);
    const Outcome outcome = run({"show", "--field", c.field, "-"}, document);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.out, c.text);
  }
  EXPECT_EQ(run({"show", "--format", "json", "--field", "shortName.text", "-"}, document).out,
            "\"C\"\n");
}

TEST(ShowToolFiles, EachIsReadByItselfAndTheWorstDecides) {
  const TemporaryFile one(widget("<content src='1'/>", "id='urn:1'"));
  const TemporaryFile bad("<widget>");
  const TemporaryFile two(widget("<content src='2'/>", "id='urn:2'"));

  const Outcome text = run({"show", one.path(), two.path()});
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.out.substr(0, text.out.find("  id")), one.path() + ":\n\nWidget\n");
  EXPECT_THAT(text.out, HasSubstr("\n\n" + two.path() + ":\n\nWidget\n"));

  Outcome fields = run({"show", "--field", "startFile.src", one.path(), bad.path(), two.path()});
  EXPECT_EQ(fields.status, 1);
  EXPECT_EQ(fields.out, one.path() + ":1\n" + two.path() + ":2\n");
  EXPECT_THAT(fields.error, testing::StartsWith(bad.path() + ":1"));
  fields = run({"show", "--field", "id", "/nowhere", bad.path(), two.path()});
  EXPECT_EQ(fields.status, 2);
  EXPECT_EQ(fields.out, two.path() + ":urn:2\n");

  const Outcome json = run({"show", "--format", "json", one.path(), bad.path(), two.path()});
  EXPECT_EQ(json.status, 1);
  const Json list = Json::parse(json.out);
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[1]["file"], two.path());
  EXPECT_EQ(list[1]["record"]["id"], "urn:2");
}

TEST(ShowToolLocales, ComeFromTheEnvironmentUnlessGiven) {
  const struct {
    Environment environment;
    std::vector<std::string> options;
    const char* locales;
  } cases[] = {
      {{}, {}, "*"},
      {{"LANG=C"}, {}, "*"},
      {{"LANG=C.UTF-8"}, {}, "*"},
      {{"LANG=POSIX", "LANGUAGE=de"}, {}, "*"},
      {{"LANG=de"}, {}, "de *"},
      {{"LANG=de_AT.UTF-8"}, {}, "de-AT de-at de *"},
      {{"LANG=sr_RS@latin"}, {}, "sr-Latn-RS sr-latn-rs sr-Latn sr-latn sr *"},
      {{"LANG=ca_ES.UTF-8@valencia"}, {}, "ca-ES-valencia ca-es-valencia ca-ES ca-es ca *"},
      {{"LANG=de_AT@euro"}, {}, "de-AT de-at de *"},
      {{"LANG=es_419"}, {}, "es-419 es *"},
      {{"LANG=de", "LC_ALL=fr_FR"}, {}, "fr-FR fr-fr fr *"},
      {{"LANG=de", "LC_MESSAGES=C"}, {}, "*"},
      {{"LANG=en_US", "LANGUAGE=de_AT:de::en"}, {}, "de-AT de-at de en *"},
      {{"LANG=../etc"}, {}, "*"},
      {{"LANG=de_AT"}, {"--locale", "he"}, "he *"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.environment));
    std::vector<std::string> arguments = {"show", "--field", "userAgentLocales", "-"};
    arguments.insert(arguments.begin() + 1, c.options.begin(), c.options.end());
    std::string locales = run(arguments, widget(""), Stdout::CAPTURED, c.environment).out;
    for (char& character : locales) {
      character = character == '\n' ? ' ' : character;
    }
    EXPECT_EQ(locales, std::string(c.locales) + ' ');
  }
}

}  // namespace
}  // namespace nimbrel_test
