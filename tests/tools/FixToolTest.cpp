// `check --fix` and `--diff`: what becomes of the files.

#include <filesystem>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

namespace fs = std::filesystem;

const std::string FAULTY = widget("\n<icon src='a' width='48px'/>\r\n\n\n\n<icon/>");
const std::string FIXED = widget("\n<icon src='a' width='48'/>\r\n\n\n\n<icon/>");

TEST(FixTool, ReplacesTheFileAndReportsWhatRemains) {
  const TemporaryFolder folder;
  const std::string file = folder.add("config.xml", FAULTY);
  const std::string link = folder.path() + "/link";
  const std::string other = folder.path() + "/other";
  fs::create_symlink(file, link);
  fs::create_hard_link(file, other);
  fs::permissions(file, fs::perms(0640));

  const Outcome outcome = run({"check", "--fix", link});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, link +
                             ":6:2: warning: icon: src: Missing attribute; this icon is ignored."
                             " [missing-attribute]\n1 fixed; 1 warning\n");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(contentOf(file), FIXED);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
  EXPECT_EQ(contentOf(other), FAULTY);
  const fs::directory_iterator all(folder.path());
  EXPECT_EQ(std::distance(begin(all), end(all)), 3) << "a temporary file is left";

  // Nothing is left to fix, so the file stays the same one.
  const fs::file_time_type time = fs::file_time_type::clock::now() - std::chrono::hours(1);
  fs::last_write_time(file, time);
  EXPECT_EQ(run({"check", "--fix", "-q", file}).status, 1);
  EXPECT_EQ(fs::last_write_time(file), time);
}

TEST(FixTool, CountsInEveryFormat) {
  const struct {
    const char* format;
    const char* pointer;
  } cases[] = {{"json", "/fixed"}, {"jsonl", "/fixed"}, {"sarif", nullptr}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.format);
    const TemporaryFile file(FAULTY);
    const Json report = Json::parse(run({"check", "--fix", "--format", c.format, file.path()}).out);
    EXPECT_EQ(contentOf(file.path()), FIXED);
    if (c.pointer != nullptr) {
      EXPECT_EQ(report.at(Json::json_pointer(c.pointer)), 1);
      EXPECT_FALSE(Json::parse(run({"check", "--format", c.format, file.path()}).out)
                       .contains(Json::json_pointer(c.pointer)));
    }
  }
}

TEST(FixTool, DiffShowsTheLinesAndWritesNothing) {
  const TemporaryFile file(FAULTY);
  const Outcome outcome = run({"check", "--diff", file.path()});
  EXPECT_EQ(outcome.status, 1);
  const std::string root = FAULTY.substr(0, FAULTY.find('\n'));
  EXPECT_EQ(outcome.out, "--- " + file.path() + "\n+++ " + file.path() + "\n@@ -1,5 +1,5 @@\n " +
                             root +
                             "\n-<icon src='a' width='48px'/>\r\n+<icon src='a' width='48'/>\r\n \n"
                             " \n \n");
  EXPECT_EQ(contentOf(file.path()), FAULTY);
  EXPECT_EQ(run({"check", "--diff", "-"}, FIXED).out, "");
  EXPECT_EQ(run({"check", "--diff", "-"}, "<a").status, 1);
  EXPECT_EQ(run({"check", "--diff", "-"}, widget("")).status, 0);
  // The last line has no end; far changes have hunks of their own.
  const std::string change = "<icon src='a' width='1px'/>";
  const std::string far =
      run({"check", "--diff", "-"}, "<?x?>\n" + widget("\n" + change + "\n\n\n\n\n\n\n\n<Name/>"))
          .out;
  EXPECT_THAT(far, testing::HasSubstr("\n@@ -1,6 +1,6 @@\n <?x?>\n"));
  EXPECT_THAT(far, testing::HasSubstr("\n@@ -8,4 +8,4 @@\n \n \n \n-<Name/></widget>\n"
                                      "\\ No newline at end of file\n+<name/></widget>\n"
                                      "\\ No newline at end of file\n"));
}

TEST(FixTool, SaysWhatItCannotFix) {
  const TemporaryFile file(FAULTY);
  const std::string package = NIMBREL_SEEDS "/package/stored";
  const struct {
    std::vector<std::string> arguments;
    std::string error;
  } cases[] = {
      {{"--fix", "-"}, "-: cannot be fixed: standard input is no file\n"},
      {{"--fix", "/dev/null"}, "/dev/null: cannot be read: Not a regular file\n"},
      {{"--fix", package},
       package + ": cannot be fixed: a package; fix its document and pack it again\n"},
      {{"--fix", "--diff", file.path()},
       "nimbrel-config: --diff prints what --fix would change, and nothing else; --help tells how "
       "it is used\n"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = {"check"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const Outcome outcome = run(arguments, FAULTY);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.error, c.error);
  }
  EXPECT_EQ(contentOf(file.path()), FAULTY);
}

}  // namespace
}  // namespace nimbrel_test
