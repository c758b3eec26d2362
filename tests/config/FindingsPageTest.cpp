#include <cstdlib>

#include "config/FindingKind.h"
#include "tests/support/Checks.h"

// docs/findings.md is what the table of the kinds gives; with NIMBREL_UPDATE_DOCS set in the
// environment this test rewrites it.
namespace orvane::nimbrel::config {
namespace {

constexpr char INTRODUCTION[] = R"(# Findings

What a parse drops or overrides, each with a document that shows it, as far as the children of the
root tell, and the same mended. `nimbrel-config check` prints findings; a program gets them from a
`config::ParseObserver`.

- An *error* refuses the document.
- A *warning* tells of something that is lost.
- A *note* tells of something that another value was a better match than.

The examples are read for a user who prefers English, then German. The prefix `tavlo` stands for the
namespace of the extension elements.
)";

std::string pageOf(const std::vector<FindingKind>& kinds) {
  std::string page = INTRODUCTION;
  for (const FindingKind& kind : kinds) {
    const auto add = [&](std::string_view text) { page.append(text); };
    add("\n## ");
    add(kind.name);
    add("\n\n*");
    add(findingLevelName(kind.level));
    add("*: ");
    add(kind.summary);
    add("\n\n```xml\n");
    add(kind.bad);
    add("\n```\n\nMended:");
    if (kind.mended.empty()) {
      add(" without it.\n");
      continue;
    }
    add("\n\n```xml\n");
    add(kind.mended);
    add("\n```\n");
  }
  return page;
}

TEST(FindingsPage, IsWhatTheTableGives) {
  const std::vector<FindingKind> kinds = findingKinds();
  EXPECT_GE(kinds.size(), 49U);
  const std::string page = pageOf(kinds);
  if (std::getenv("NIMBREL_UPDATE_DOCS") != nullptr) {
    std::ofstream out(NIMBREL_FINDINGS_PAGE);
    EXPECT_TRUE(out << page << std::flush);
  }
  EXPECT_EQ(test::contentOf(NIMBREL_FINDINGS_PAGE), page) << "NIMBREL_UPDATE_DOCS=1 writes it anew";
}

}  // namespace
}  // namespace orvane::nimbrel::config
