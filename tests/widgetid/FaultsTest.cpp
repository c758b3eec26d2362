#include <dlfcn.h>

#include <cstring>
#include <set>

#include "tests/support/Checks.h"
#include "tests/support/FakeSyslog.h"
#include "tests/widgetid/Mungers.h"
#include "util/HostSymbols.h"
#include "widgetid/FilenameWidgetIdParser.h"
#include "widgetid/PelloWidgetIdParser.h"
#include "widgetid/WidgetIdError.h"

// This program stands between the library and libsoup, GLib and syslog: it makes them fail, and
// sees whether what they hand out comes back. (URIs live in GLib's slices, where the address
// sanitizer finds no leak unless G_SLICE=always-malloc is in the environment.)
namespace {

bool failBase = false;
int basesMade = 0;
std::string textSeen;  // the last that libsoup was to read
bool failEscape = false;
const void* escapedText = nullptr;  // handed out and not freed

std::set<const void*>& liveUris() {
  static std::set<const void*> uris;
  return uris;
}

template <typename F>
F* next(const char* name) {
  return reinterpret_cast<F*>(dlsym(RTLD_NEXT, name));
}

void* keep(void* uri) {
  if (uri != nullptr) {
    liveUris().insert(uri);
  }
  return uri;
}

}  // namespace

extern "C" {

#define REPLACES __attribute__((visibility("default")))

REPLACES void* soup_uri_new(const char* text) {
  const bool isBase = std::strcmp(text, "http://") == 0;
  basesMade += isBase ? 1 : 0;
  textSeen = text;
  if (failBase && isBase) {
    return nullptr;
  }
  return keep(next<void*(const char*)>("soup_uri_new")(text));
}

REPLACES void* soup_uri_new_with_base(void* base, const char* text) {
  return keep(next<void*(void*, const char*)>("soup_uri_new_with_base")(base, text));
}

REPLACES void soup_uri_free(void* uri) {
  liveUris().erase(uri);
  next<void(void*)>("soup_uri_free")(uri);
}

REPLACES char* g_uri_escape_string(const char* text, const char* allowed, int allowUtf8) {
  if (failEscape) {
    return nullptr;
  }
  char* escaped =
      next<char*(const char*, const char*, int)>("g_uri_escape_string")(text, allowed, allowUtf8);
  escapedText = escaped;
  return escaped;
}

REPLACES void g_free(void* memory) {
  if (memory == escapedText) {
    escapedText = nullptr;
  }
  next<void(void*)>("g_free")(memory);
}
}

namespace orvane::zel::config {
namespace {

using nimbrel::test::logged;
using nimbrel::test::thrownBy;

using nimbrel::util::LOG_MASK_DEBUG;
using nimbrel::util::LOG_MASK_WARNING;
using nimbrel::util::setLogMask;

const auto uriMunger = std::make_shared<MarkingUriMunger>();
const auto filenameMunger = std::make_shared<MarkingFilenameMunger>();

class Faults : public testing::Test {
 protected:
  ~Faults() override {
    EXPECT_EQ(escapedText, nullptr);
    EXPECT_TRUE(liveUris().empty());
    failBase = failEscape = false;
    setLogMask(0);
    logged() = {};
  }
};

// Without libsoup, the default base cannot be made to fail.
#if NIMBREL_LIBSOUP
TEST_F(Faults, AMissingDefaultBaseIsLoggedAndHitsRelativeIdentifiersOnly) {
  failBase = true;
  setLogMask(LOG_MASK_WARNING);
  const PelloWidgetIdParser parser(uriMunger, filenameMunger);
  EXPECT_EQ(
      logged().lines,
      std::vector<std::string>{
          "4 W the.host:pellowidgetidparserimpl_nodefaultbaseuri:soup_uri_new failed to create "
          "our default base URI. Calls to PelloWidgetIdParserImpl.getDefaultBaseURI will "
          "throw a runtime_error.:"});
  EXPECT_EQ(parser.deriveWidgetIdAuthority("http://h/a"), "{h%2Fa}");
  EXPECT_EQ(parser.deriveDirectoryName("http://h/a"), "{<h>/a}");
  for (const char* id : {"app", "http:foo"}) {
    EXPECT_EQ(thrownBy<std::runtime_error>([&] { (void)parser.deriveWidgetIdAuthority(id); }),
              "soup_uri_new failed to create our default base URI.");
    EXPECT_EQ(thrownBy<std::runtime_error>([&] { (void)parser.deriveDirectoryName(id); }),
              "soup_uri_new failed to create our default base URI.");
  }
  EXPECT_EQ(logged().lines.size(), 1U);
}

// A program that stands in for libsoup sees a base made and freed, though making the parser fails.
TEST_F(Faults, TheDefaultBaseIsMadeBeforeTheMungersAreTested) {
  for (const auto& [uris, files] : {std::pair(false, true), {true, false}, {false, false}}) {
    const int before = basesMade;
    EXPECT_THROW(PelloWidgetIdParser(uris ? uriMunger : nullptr, files ? filenameMunger : nullptr),
                 std::invalid_argument);
    EXPECT_EQ(basesMade, before + 1);
    EXPECT_TRUE(liveUris().empty());
  }
}

// GLib keeps each scheme that libsoup does not know until the process ends.
TEST_F(Faults, LibsoupSeesNoSchemeThatItDoesNotKnow) {
  const PelloWidgetIdParser parser(uriMunger, filenameMunger);
  const nimbrel::test::Row cases[] = {
      {"a+1.-B://h/p", "x://h/p"},      {"\t a\rb\nc\td://h/p", "x://h/p"},
      {"a\r://h/p", "x://h/p"},         {"ht\rtp://h/p", "ht\rtp://h/p"},
      {" HTTPS://h/p", " HTTPS://h/p"},
  };
  nimbrel::test::expectRows(cases, [&](const std::string& id) {
    (void)parser.deriveWidgetIdAuthority(id.c_str());
    return textSeen;
  });
}

#endif

TEST_F(Faults, NoWarningIsWrittenWhenItIsNotAskedForOrNotDue) {
  setLogMask(LOG_MASK_WARNING);
  const PelloWidgetIdParser sound(uriMunger, filenameMunger);
  failBase = true;
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { PelloWidgetIdParser(nullptr, filenameMunger); }),
            "uriMunger cannot be NULL.");
  EXPECT_EQ(thrownBy<std::invalid_argument>([] { PelloWidgetIdParser(uriMunger, nullptr); }),
            "filenameMunger cannot be NULL.");
  setLogMask(LOG_MASK_DEBUG);
  const PelloWidgetIdParser quiet(uriMunger, filenameMunger);
  EXPECT_EQ(logged().lines, std::vector<std::string>());
}

TEST_F(Faults, AFailedEscapeIsReportedByEachParserInItsWay) {
  failEscape = true;
  const PelloWidgetIdParser pello(uriMunger, filenameMunger);
  EXPECT_EQ(thrownBy<WidgetIdError>([&] { (void)pello.deriveWidgetIdAuthority("http://h/"); }),
            "g_uri_escape_string failed to encode the widget identifier. Cannot derive a canonical "
            "identifier from the widget identifier.");
  EXPECT_EQ(pello.deriveDirectoryName("http://h/"), "{<h>}");
  const FilenameWidgetIdParser filename(filenameMunger);
  EXPECT_EQ(thrownBy<std::runtime_error>([&] { (void)filename.deriveWidgetIdAuthority("a.wgt"); }),
            "g_uri_escape_string failed to encode the filename. Cannot derive an authority from "
            "the widget identifier.");
}

// What is still held after each call is seen here, and once more by the fixture at the end.
TEST_F(Faults, NothingLeaksWhenAMungerThrows) {
  const PelloWidgetIdParser badHost(std::make_shared<ThrowingUriMunger>(), filenameMunger);
  const PelloWidgetIdParser badName(uriMunger, std::make_shared<ThrowingFilenameMunger>());
  const std::size_t bases = liveUris().size();
  EXPECT_EQ(bases, NIMBREL_LIBSOUP ? 2U : 0U);
  for (const char* id : {"http://h/a", "//h/a"}) {
    EXPECT_EQ(thrownBy<std::length_error>([&] { (void)badHost.deriveDirectoryName(id); }),
              "URI munger");
    EXPECT_EQ(thrownBy<std::length_error>([&] { (void)badName.deriveDirectoryName(id); }),
              "filename munger");
    EXPECT_EQ(thrownBy<std::length_error>([&] { (void)badName.deriveWidgetIdAuthority(id); }),
              "filename munger");
    EXPECT_EQ(escapedText, nullptr);
    EXPECT_EQ(liveUris().size(), bases);
  }
  const FilenameWidgetIdParser filename(filenameMunger);
  EXPECT_EQ(filename.deriveWidgetIdAuthority("a.wgt"), "a");
  EXPECT_EQ(badHost.deriveWidgetIdAuthority("app"), "{%2Fapp}");
  EXPECT_EQ(badHost.deriveDirectoryName("urn:app"), "{app}");
  EXPECT_THROW((void)badHost.deriveDirectoryName("http://"), WidgetIdError);
  EXPECT_EQ(thrownBy<WidgetIdError>([&] { (void)badHost.deriveWidgetIdAuthority("http:foo"); }),
            "The provided widget id is not a valid URI.");
  EXPECT_EQ(liveUris().size(), bases);
}

}  // namespace
}  // namespace orvane::zel::config
