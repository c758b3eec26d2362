#include <cstdlib>

#include "check/FindingCode.h"
#include "tests/support/Checks.h"

// docs/findings.md is what the table of the kinds gives; with NIMBREL_UPDATE_DOCS set in the
// environment this test rewrites it.
namespace orvane::nimbrel::check {
namespace {

constexpr char INTRODUCTION[] = R"(# Findings

The kinds of mistakes that `nimbrel-config check` finds in a document, each with an example and the
same example fixed. `nimbrel-config check --explain CODE` prints the same. Most examples are the
children of the root alone. The last kinds are about the package of a document; a comment in the
example names its files; "+7" stands for bytes of no file.

- An *error* rejects the document.
- A *warning* says that something is ignored, or does not work in its package.
- A *note* says that something has no effect, or may not be what was meant.

The parser decides on the kinds up to `unused-setting`: a program receives them by a
`config::ParseObserver`. The prefix `tavlo` stands for the namespace of the extension elements.
)";

std::string pageOf() {
  std::string page = INTRODUCTION;
  for (const CodeDescription& kind : codeDescriptions()) {
    const auto add = [&](std::string_view text) { page.append(text); };
    add("\n## ");
    add(kind.name);
    add("\n\n*");
    add(levelName(kind.level));
    add("*: ");
    add(kind.summary);
    add("\n\n```xml\n");
    add(kind.bad);
    add("\n```\n\nFixed:");
    if (kind.fixed.empty()) {
      add(" without it.\n");
      continue;
    }
    add("\n\n```xml\n");
    add(kind.fixed);
    add("\n```\n");
  }
  return page;
}

TEST(FindingsPage, IsWhatTheTableGives) {
  EXPECT_GT(codeDescriptions().size(), 20U);
  const std::string page = pageOf();
  if (std::getenv("NIMBREL_UPDATE_DOCS") != nullptr) {
    std::ofstream out(NIMBREL_FINDINGS_PAGE);
    EXPECT_TRUE(out << page << std::flush);
  }
  EXPECT_EQ(test::contentOf(NIMBREL_FINDINGS_PAGE), page) << "NIMBREL_UPDATE_DOCS=1 writes it anew";
}

}  // namespace
}  // namespace orvane::nimbrel::check
