#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/widgetid/Mungers.h"
#include "tests/widgetid/Refusal.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/WidgetIdError.h"

namespace orvane::zel::config {
namespace {

constexpr char NOTHING_LEFT[] =
    "We were unable to derive a valid authority from the widget's identifier.";

PelloWidgetIdParser makeParser() {
  return {std::make_shared<MarkingUriMunger>(), std::make_shared<MarkingFilenameMunger>()};
}

TEST(PelloWidgetIdParser, ReducesAnIdentifierToHostAndPath) {
  const auto parser = makeParser();
  const struct {
    const char *id, *normalized, *munged, *authority, *directoryName;
  } cases[] = {
      {"http://h", "h", "<h>", "{h}", "{<h>}"},
      {"http://h/", "h", "<h>", "{h}", "{<h>}"},
      {"x://h", "h", "<h>", "{h}", "{<h>}"},
      {"http://h/a", "h/a", "<h>/a", "{h%2Fa}", "{<h>/a}"},
      {"ftp://u:p@h:99/a?q#f", "h/a", "<h>/a", "{h%2Fa}", "{<h>/a}"},
      {"http://h/a/", "h/a/", "<h>/a/", "{h%2Fa%2F}", "{<h>/a}"},
      {"http://h/a//", "h/a//", "<h>/a//", "{h%2Fa%2F%2F}", "{<h>/a/}"},
      {"http://h//", "h//", "<h>//", "{h%2F%2F}", "{<h>/}"},
      {"app", "/app", "/app", "{%2Fapp}", "{/app}"},
      {"//h/a", "h/a", "<h>/a", "{h%2Fa}", "{<h>/a}"},
      {"urn:a:b", "a:b", "a:b", "{a%3Ab}", "{a:b}"},
      {"http://h/%2fa%", "h/%2fa%", "<h>/%2fa%", "{h%2F%2fa%}", "{<h>/%2fa%}"},
      // libsoup decodes a host, so its last byte may be a "/": that one is dropped as well.
      {"http://a%2F/", "a", "<a/>", "{a}", "{<a/>}"},
      {"http://\xC3\xBC/\xC3\xBC", "\xC3\xBC/%C3%BC", "<\xC3\xBC>/%C3%BC", "{\xC3\xBC%2F%C3%BC}",
       "{<\xC3\xBC>/%C3%BC}"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    EXPECT_EQ(parser.createNormalizedWidgetId(c.id, false), c.normalized);
    EXPECT_EQ(parser.createNormalizedWidgetId(c.id, true), c.munged);
    EXPECT_EQ(parser.deriveWidgetIdAuthority(c.id), c.authority);
    EXPECT_EQ(parser.deriveDirectoryName(c.id), c.directoryName);
  }
}

TEST(PelloWidgetIdParser, RefusesIdentifiersWithTheReason) {
  const auto parser = makeParser();
  EXPECT_EQ(refusal<std::invalid_argument>([&] { (void)parser.deriveDirectoryName(nullptr); }),
            "widgetId argument was NULL.");
  EXPECT_EQ(refusal<std::invalid_argument>([&] { (void)parser.deriveWidgetIdAuthority(nullptr); }),
            "widgetId argument was NULL.");
  const struct {
    const char *id, *text;
  } cases[] = {
      {"", "widgetId argument was empty"},
      {"http:foo", "The provided widget id is not a valid URI."},
      {"http://h:port/", "The provided widget id is not a valid URI."},
      {"http://[::1/", "The provided widget id is not a valid URI."},
      {"http://", NOTHING_LEFT},
      {"http:///", NOTHING_LEFT},
      {"..", NOTHING_LEFT},
      {"?q", NOTHING_LEFT},
      {"#f", NOTHING_LEFT},
      {"x:", NOTHING_LEFT},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    EXPECT_EQ(refusal<WidgetIdError>([&] { (void)parser.deriveWidgetIdAuthority(c.id); }), c.text);
    EXPECT_EQ(refusal<WidgetIdError>([&] { (void)parser.deriveDirectoryName(c.id); }), c.text);
  }
}

TEST(PelloWidgetIdParser, RefusesMissingMungersInOrder) {
  const auto uriMunger = std::make_shared<MarkingUriMunger>();
  const auto filenameMunger = std::make_shared<MarkingFilenameMunger>();
  EXPECT_EQ(refusal<std::invalid_argument>([] { PelloWidgetIdParser parser(nullptr, nullptr); }),
            "uriMunger cannot be NULL.");
  EXPECT_EQ(
      refusal<std::invalid_argument>([&] { PelloWidgetIdParser parser(nullptr, filenameMunger); }),
      "uriMunger cannot be NULL.");
  EXPECT_EQ(refusal<std::invalid_argument>([&] { PelloWidgetIdParser parser(uriMunger, nullptr); }),
            "filenameMunger cannot be NULL.");
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
  EXPECT_EQ(refusal<WidgetIdError>([&] { (void)empty.deriveWidgetIdAuthority("http://h/"); }),
            NOTHING_LEFT);
  EXPECT_EQ(refusal<WidgetIdError>([&] { (void)empty.deriveDirectoryName("http://h/"); }),
            NOTHING_LEFT);
}

}  // namespace
}  // namespace orvane::zel::config
