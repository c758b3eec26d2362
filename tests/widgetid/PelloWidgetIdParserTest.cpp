#include "tests/support/Checks.h"
#include "tests/widgetid/Mungers.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {
namespace {

using nimbrel::test::thrownBy;

constexpr char NOTHING_LEFT[] =
    "We were unable to derive a valid authority from the widget's identifier.";

PelloWidgetIdParser makeParser() {
  return {std::make_shared<MarkingUriMunger>(), std::make_shared<MarkingFilenameMunger>()};
}

TEST(PelloWidgetIdParser, ReducesAnIdentifierToHostAndPath) {
  const auto parser = makeParser();
  // as it is, with the host munged, the authority, the directory name
  nimbrel::test::expectRows(
      "http://h => h <h> {h} {<h>}  http://h/ => h <h> {h} {<h>}  x://h => h <h> {h} {<h>}  "
      "http://h/a => h/a <h>/a {h%2Fa} {<h>/a}  ftp://u:p@h:99/a?q#f => h/a <h>/a {h%2Fa} {<h>/a}  "
      "http://h/a/ => h/a/ <h>/a/ {h%2Fa%2F} {<h>/a}  app => /app /app {%2Fapp} {/app}  "
      "http://h/a// => h/a// <h>/a// {h%2Fa%2F%2F} {<h>/a/}  "
      "http://h// => h// <h>// {h%2F%2F} {<h>/}  //h/a => h/a <h>/a {h%2Fa} {<h>/a}  "
      "urn:a:b => a:b a:b {a%3Ab} {a:b}  "
      "http://h/%2fa% => h/%2fa% <h>/%2fa% {h%2F%2fa%} {<h>/%2fa%}  "
      // libsoup decodes a host, so its last byte may be a "/": that one is dropped as well.
      "http://a%2F/ => a <a/> {a} {<a/>}  "
      "http://\u00FC/\u00FC => \u00FC/%C3%BC <\u00FC>/%C3%BC {\u00FC%2F%C3%BC} {<\u00FC>/%C3%BC}",
      [&](const std::string& id) {
        return parser.createNormalizedWidgetId(id.c_str(), false) + " " +
               parser.createNormalizedWidgetId(id.c_str(), true) + " " +
               parser.deriveWidgetIdAuthority(id.c_str()) + " " +
               parser.deriveDirectoryName(id.c_str());
      });
}

TEST(PelloWidgetIdParser, RejectsMissingMungersAndIdentifiersWithTheReason) {
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { PelloWidgetIdParser parser(nullptr, nullptr); }),
            "uriMunger cannot be NULL.");
  const auto parser = makeParser();
  EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (void)parser.deriveDirectoryName(nullptr); }),
            "widgetId argument was NULL.");
  EXPECT_EQ(thrownBy<std::invalid_argument>([&] { (void)parser.deriveWidgetIdAuthority(nullptr); }),
            "widgetId argument was NULL.");
  const auto rejection = [&](const std::string& id) {
    const std::string why =
        thrownBy<WidgetIdError>([&] { (void)parser.deriveWidgetIdAuthority(id.c_str()); });
    EXPECT_EQ(thrownBy<WidgetIdError>([&] { (void)parser.deriveDirectoryName(id.c_str()); }), why);
    return why;
  };
  EXPECT_EQ(rejection(""), "widgetId argument was empty");
  for (const char* id : {"http:foo", "http://h:port/", "http://[::1/"}) {
    EXPECT_EQ(rejection(id), "The provided widget id is not a valid URI.") << id;
  }
  for (const char* id : {"http://", "http:///", "..", "?q", "#f", "x:"}) {
    EXPECT_EQ(rejection(id), NOTHING_LEFT) << id;
  }
}

class OwnNormalization : public PelloWidgetIdParser {
 public:
  explicit OwnNormalization(std::string normalizedId)
      : PelloWidgetIdParser(std::make_shared<MarkingUriMunger>(),
                            std::make_shared<MarkingFilenameMunger>()),
        normalizedId_(std::move(normalizedId)) {}

  std::string createNormalizedWidgetId(const char* /*widgetId*/, bool mungeHost) const override {
    return normalizedId_.empty() ? "" : normalizedId_ + (mungeHost ? "+/" : "-");
  }

 private:
  std::string normalizedId_;
};

TEST(PelloWidgetIdParser, DerivesFromWhatADerivedClassNormalizes) {
  const OwnNormalization parser("own id");
  EXPECT_EQ(parser.deriveWidgetIdAuthority(nullptr), "{own%20id-}");
  EXPECT_EQ(parser.deriveDirectoryName(nullptr), "{own id+}");
  const OwnNormalization empty("");
  EXPECT_EQ(thrownBy<WidgetIdError>([&] { (void)empty.deriveWidgetIdAuthority("http://h/"); }),
            NOTHING_LEFT);
  EXPECT_EQ(thrownBy<WidgetIdError>([&] { (void)empty.deriveDirectoryName("http://h/"); }),
            NOTHING_LEFT);
}

}  // namespace
}  // namespace orvane::zel::config
