// `check --fix` and `--diff`: what becomes of the files.

#include <gmock/gmock.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

namespace fs = std::filesystem;

const std::string FAULTY = widget("\n<icon src='a' width='48px'/>\r\n\n\n\n<icon/>");
const std::string FIXED = widget("\n<icon src='a' width='48'/>\r\n\n\n\n<icon/>");

std::ptrdiff_t countOf(const TemporaryFolder& folder) {
  const fs::directory_iterator all(folder.path());
  return std::distance(begin(all), end(all));
}

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
  EXPECT_EQ(
      outcome.out,
      link +
          ":6:2: warning: icon: src: <icon> needs src=\"...\"; without it this icon is ignored."
          " [missing-attribute]\n1 fixed; 1 warning\n");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(contentOf(file), FIXED);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
  EXPECT_EQ(contentOf(other), FAULTY);
  EXPECT_EQ(countOf(folder), 3) << "a temporary file is left";

  // Nothing is left to fix, so the file stays the same one.
  const fs::file_time_type time = fs::file_time_type::clock::now() - std::chrono::hours(1);
  fs::last_write_time(file, time);
  EXPECT_EQ(run({"check", "--fix", "-q", file}).status, 1);
  EXPECT_EQ(fs::last_write_time(file), time);
}

TEST(FixTool, ChangesNothingOutsideOfADirectory) {
  const TemporaryFolder folder;
  const std::string outside = folder.add("outside.xml", FAULTY);
  const std::string inside = folder.add("tree/inside.xml", FAULTY);
  for (const std::string& target : {outside, inside}) {
    const fs::path link = folder.path() + "/tree/" + fs::path(target).stem().string();
    fs::create_directory(link);
    fs::create_symlink(target, link / "config.xml");
  }
  fs::create_directory_symlink(folder.path(), folder.path() + "/tree/up");
  EXPECT_EQ(run({"check", "--fix", "-q", "-r", folder.path() + "/tree"}).error, "");
  EXPECT_EQ(contentOf(outside), FAULTY);
  EXPECT_EQ(contentOf(inside), FIXED);
  EXPECT_THAT(run({"check", "-r", folder.path() + "/tree"}).out, testing::HasSubstr("48px"));
}

TEST(FixTool, FixesTheDocumentOfAFolder) {
  const TemporaryFolder folder;
  const std::string file = folder.add("config.xml", FAULTY);
  const std::string out = run({"check", "--fix", folder.path()}).out;
  EXPECT_THAT(out, testing::HasSubstr(file + ":2:12: warning: icon: src=\"a\": No such file"));
  EXPECT_EQ(contentOf(file), FIXED);
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

// A patch needs the very bytes; a terminal would act on them.
TEST(FixTool, DiffMarksOnATerminalWhatItPrintsAsItIsToAPipe) {
  const std::string line =
      "<name>a\xC2\x9B\xE2\x80\xAE"
      "b</name>";
  const std::string document = widget("\n" + line + "\n<icon src='a' width='1px'/>");
  const auto diff = [&](Stdout target) {
    return run({"check", "--diff", "-"}, document, target, {"NO_COLOR=1"}).out;
  };
  EXPECT_THAT(diff(Stdout::CAPTURED), testing::HasSubstr("\n " + line + "\n"));
  EXPECT_THAT(diff(Stdout::TERMINAL), testing::HasSubstr("<name>a\\u009b\\u202eb</name>"));
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

#ifdef NIMBREL_BUSY_SYNC
/// Fixes a file while something else happens; tests/tools/BusySync.cpp explains what.
Outcome fixMeanwhile(const std::string& file, Environment happening) {
  const fs::path library = NIMBREL_BUSY_SYNC;
  happening.push_back("LD_PRELOAD=" + library.filename().string());
  happening.push_back("LD_LIBRARY_PATH=" + library.parent_path().string());
  return run({"check", "--fix", "-q", file}, "", Stdout::CAPTURED, std::move(happening));
}

TEST(FixTool, KeepsWhatSomebodyElseSavesMeanwhile) {
  const TemporaryFolder folder;
  const std::string file = folder.add("config.xml", FAULTY);
  const Outcome once = fixMeanwhile(file, {"NIMBREL_SAVES=1", "NIMBREL_SAVE=" + file});
  EXPECT_EQ(once.error, "");
  EXPECT_EQ(contentOf(file), FIXED + '\n');
  folder.add("config.xml", FAULTY);
  const Outcome always = fixMeanwhile(file, {"NIMBREL_SAVE=" + file});
  EXPECT_EQ(always.status, 2);
  EXPECT_EQ(always.error, file + ": cannot be fixed: it keeps changing\n");
  EXPECT_EQ(contentOf(file), FAULTY + "\n\n\n");
  EXPECT_EQ(countOf(folder), 1);
}

TEST(FixTool, LeavesNothingBehindWhenASignalEndsIt) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    const TemporaryFolder folder;
    const std::string file = folder.add("config.xml", FAULTY);
    EXPECT_EQ(fixMeanwhile(file, {"NIMBREL_SIGNAL=" + std::to_string(signal)}).status, -signal);
    EXPECT_EQ(contentOf(file), FIXED);
    EXPECT_EQ(countOf(folder), 1);
  }
}
#endif

/// As long as there is one, no file may become longer than a number of bytes.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t most) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {most, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_ = {};
};

// The first part of what is written fits, and the rest does not.
TEST(FixTool, TakesALimitOfFileSizesForAnError) {
  const TemporaryFolder folder;
  const std::string faulty = FAULTY + std::string(2000, '\n');
  const std::string file = folder.add("config.xml", faulty);
  const FileSizeLimit limit(1024);
  const Outcome fix = run({"check", "--fix", file});
  EXPECT_EQ(fix.status, 2);
  EXPECT_EQ(fix.error, file + ": cannot be written: File too large\n");
  EXPECT_EQ(contentOf(file), faulty);
  EXPECT_EQ(countOf(folder), 1);
  const Outcome output = run({"check", "--codes"});
  EXPECT_EQ(output.status, 2);
  EXPECT_EQ(output.error, "nimbrel-config: standard output cannot be written: File too large\n");
}

TEST(FixTool, KeepsAttributesAndAccessControlListsAndAddsNone) {
  const auto entry = [](const std::string& tagAndRight, const std::string& id) {
    return std::string{tagAndRight[0], 0, tagAndRight[1], 0} + id;
  };
  const std::string all(4, '\xFF');
  // Its user, user 77, its group, the most that both of the last get, and everybody else.
  const std::string list = std::string("\2\0\0\0", 4) + entry("\1\6", all) +
                           entry("\2\4", std::string("\x4D\0\0\0", 4)) + entry("\4\4", all) +
                           entry("\x10\4", all) + entry(std::string("\x20\0", 2), all);
  const auto set = [](const std::string& path, const char* name, const std::string& value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
  };
  const auto get = [](const std::string& path, const char* name) {
    char value[100];
    const ssize_t size = getxattr(path.c_str(), name, value, sizeof(value));
    return size < 0 ? "none" : std::string(value, static_cast<std::size_t>(size));
  };
  const TemporaryFolder folder;
  const std::string plain = folder.add("plain.xml", FAULTY);
  const std::string listed = folder.add("listed.xml", FAULTY);
  if (!set(listed, "user.note", "by hand") || !set(listed, "system.posix_acl_access", list) ||
      !set(folder.path(), "system.posix_acl_default", list)) {
    GTEST_SKIP() << "the file system has no extended attributes";
  }
  EXPECT_EQ(run({"check", "--fix", "-q", plain, listed}).error, "");
  EXPECT_EQ(contentOf(listed), FIXED);
  EXPECT_EQ(contentOf(plain), FIXED);
  EXPECT_EQ(get(listed, "user.note"), "by hand");
  EXPECT_EQ(get(listed, "system.posix_acl_access"), list);
  EXPECT_EQ(get(plain, "system.posix_acl_access"), "none") << "what the folder gives new files";
}

TEST(FixTool, LeavesAFileWhoseGroupItCannotKeep) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can give a file to a group that its owner is not in";
  }
  constexpr uid_t NOBODY = 65534;
  const TemporaryFolder folder;
  const std::string file = folder.add("config.xml", FAULTY);
  fs::permissions(file, fs::perms(0640));
  ASSERT_EQ(chown(file.c_str(), NOBODY, 0) + chown(folder.path().c_str(), NOBODY, NOBODY), 0);
  const pid_t child = fork();
  if (child == 0) {
    const bool isNobody = setgroups(0, nullptr) == 0 && setgid(NOBODY) == 0 && setuid(NOBODY) == 0;
    const Outcome outcome = run({"check", "--fix", file});
    const bool isAsExpected =
        outcome.status == 2 && outcome.error == file +
                                                    ": cannot be fixed, as its group cannot be "
                                                    "kept: Operation not permitted\n";
    _exit(isNobody && isAsExpected ? 0 : 1);
  }
  int state = 0;
  waitpid(child, &state, 0);
  EXPECT_EQ(state, 0);
  EXPECT_EQ(contentOf(file), FAULTY);
  EXPECT_EQ(countOf(folder), 1);
}

}  // namespace
}  // namespace nimbrel_test
