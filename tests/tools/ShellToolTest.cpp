// What makes the tool fit a shell: several files, single fields, the user's own locales.

#include <gmock/gmock.h>

#include "tests/tools/Tool.h"
#include "util/StringUtil.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

TEST(ShowToolFields, OneLineForEachValue) {
  const std::string document = widget(
      "<name short='C'>Chess <span xml:lang='he'>x</span></name><content src='a.html'/>"
      "<icon src='1.png' width='3'/><icon src='2.png'/><preference name='p' value=''/>"
      "<description>one\ntwo</description><t:permissions><t:permission name='a'/>"
      "<t:permission name='a.b' value='no'/><t:permission name='runs'/></t:permissions>"
      "<t:network><t:asset key='user-agent' value='u'/>"
      "<t:asset key='user-agent' value='v'/></t:network>",
      "id='urn:x' width='12'");
  // A value ends with "|"; none has none, as opposed to the empty one.
  expectRows(
      "id => urn:x|  width => 12|  height =>  preferences.0.value => |  name => Chess x|  "
      "name.runs.1.language => he|  description => one\\ntwo|  startFile.src => a.html|  "
      "license.href =>  icons.1.src => 2.png|  icons.1.width =>  icons.2.src =>  "
      "icons => {\"src\":\"1.png\",\"height\":null,\"width\":3}|"
      "{\"src\":\"2.png\",\"height\":null,\"width\":null}|  netSettings.userAgents => u|v|  "
      "appPermissions.a => true|  appPermissions.a.b => false|  appPermissions.c =>  "
      "appPermissions => {\"a\":true,\"a.b\":false,\"runs\":true}|",
      [&](const std::string& field) {
        Outcome outcome = run({"show", "--field", field, "-"}, document);
        EXPECT_EQ(outcome.status, 0) << outcome.error;
        std::replace(outcome.out.begin(), outcome.out.end(), '\n', '|');
        return outcome.out;
      });
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
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[1]["status"], "rejected");
  EXPECT_EQ(list[1]["record"], nullptr);
  EXPECT_EQ(list[2]["file"], two.path());
  EXPECT_EQ(list[2]["record"]["id"], "urn:2");
}

std::string localesShown(std::vector<std::string> arguments, const Environment& environment) {
  arguments.insert(arguments.begin(), {"show", "--field", "userAgentLocales", "-"});
  std::string locales = run(arguments, widget(""), Stdout::CAPTURED, environment).out;
  std::replace(locales.begin(), locales.end(), '\n', ' ');
  return locales.substr(0, locales.size() - 1);
}

TEST(ShowToolLocales, ComeFromTheEnvironmentUnlessGiven) {
  expectRows(
      "=> *  LANG=C => *  LANG=C.UTF-8 => *  LANG=POSIX LANGUAGE=de => *  LANG=de => de *  "
      "LANG=de_AT.UTF-8 => de-AT de-at de *  LANG=es_419 => es-419 es *  LANG=../etc => *  "
      "LANG=sr_RS@latin => sr-Latn-RS sr-latn-rs sr-Latn sr-latn sr *  "
      "LANG=ca_ES.UTF-8@valencia => ca-ES-valencia ca-es-valencia ca-ES ca-es ca *  "
      "LANG=de_AT@euro => de-AT de-at de *  LANG=de LC_ALL=fr_FR => fr-FR fr-fr fr *  "
      "LANG=de LC_MESSAGES=C => *  LANG=en_US LANGUAGE=de_AT:de::en => de-AT de-at de en *",
      [](const std::string& environment) {
        return localesShown({}, orvane::zel::util::StringUtil::split(environment, ' '));
      });
  // What is given means the same as in the environment.
  expectRows(
      "he => he *  de-AT => de-AT de-at de *  de_AT.UTF-8 => de-AT de-at de *  "
      "zh-Hant-TW => zh-Hant-TW zh-hant-tw zh-Hant zh-hant zh *  x => x *",
      [](const std::string& locale) {
        return localesShown({"--locale", locale}, {"LANG=fr_FR"});
      });
}

}  // namespace
}  // namespace nimbrel_test
