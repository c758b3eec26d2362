// What a store needs that reads all its packages: lists, directories, jobs, a line a file.

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "tests/tools/Tool.h"

namespace nimbrel_test {
namespace {

using testing::HasSubstr;

TEST(ManyFiles, AreFoundInDirectoriesAndLists) {
  const TemporaryFolder folder;
  const std::string b = folder.add("b.wgt", widget("", "id='urn:b'"));
  const std::string a = folder.add("a/config.xml", widget("", "id='urn:a'"));
  folder.add("a/other.xml", "no document");
  const std::string odd = folder.add("line\nbreak.xml", widget("", "id='urn:odd'"));
  const std::string both = a + ":urn:a\n" + b + ":urn:b\n";
  EXPECT_EQ(run({"show", "--field", "id", "-r", folder.path()}).out, both);
  EXPECT_EQ(run({"show", "--field", "id", "--files-from", "-"}, a + "\n\n" + b).out, both);
  const TemporaryFile list(a + '\0' + odd + '\0');
  EXPECT_EQ(run({"show", "--field", "id", "--files-from", list.path()}).out,
            a + ":urn:a\n" + folder.path() + "/line\\nbreak.xml:urn:odd\n");
  EXPECT_THAT(run({"show", folder.path()}).error, HasSubstr("Is a directory"));
  EXPECT_EQ(run({"check", "--files-from", "/nowhere"}).status, 2);
  EXPECT_EQ(run({"check", "--files-from", "-"}).status, 0) << "an empty list";
}

TEST(ManyFiles, AreNotLookedForWhereNobodyPackedThem) {
  const TemporaryFolder folder;
  const std::string at = folder.path() + '/';
  for (const char* name : {"a/config.xml", "a/.git/config.xml", "build/b.wgt", "C.WGT", "c.wgt.bak",
                           "d/Config.xml", "node_modules/x/e.wgt", ".wgt"}) {
    folder.add(name, widget("", "id='urn:x'"));
  }
  const auto found = [&](std::vector<std::string> options) {
    std::vector<std::string> arguments = {"show", "--field", "id", "-r", folder.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run(arguments).out;
  };
  const std::string id = ":urn:x\n";
  const std::string c = at + "C.WGT" + id;
  const std::string a = at + "a/config.xml" + id;
  const std::string b = at + "build/b.wgt" + id;
  EXPECT_EQ(found({}), c + a);
  EXPECT_EQ(found({"--exclude", "n*", "--exclude", "a"}), c + b);
  EXPECT_EQ(found({"--exclude", ""}),
            c + at + "a/.git/config.xml" + id + a + b + at + "node_modules/x/e.wgt" + id);
  const Outcome none = run({"check", "-r", at + "d"});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.error,
            "nimbrel-config: no files: no config.xml and no *.wgt in the directories given\n");
  EXPECT_EQ(none.out, "");
  EXPECT_THAT(run({"check", at + "d"}).error,
              HasSubstr("Is a directory without config.xml; use -r with check or show"));
}

TEST(ManyFiles, OfAFolderWithADocumentAreAPackage) {
  const TemporaryFolder folder;
  const std::string at = folder.path() + '/';
  const std::string faulty = widget("\n<icon src='MAP.png'/><content src='up/index.html'/>");
  folder.add("a/config.xml", faulty);
  folder.add("b/config.xml", faulty);
  folder.add("a/map.png", "");
  folder.add("a/www/index.html", "");
  std::filesystem::create_directory_symlink("www", at + "a/up");
  std::filesystem::create_directory_symlink("..", at + "a/www/loop");
  const std::string icon = "/config.xml:2:12: warning: icon: src=\"MAP.png\": No such file";
  const std::string start = "/config.xml:2:36: warning: content: src=\"up/index.html\": No such";
  const std::string a = run({"check", at + "a"}).out;
  EXPECT_THAT(a, HasSubstr(at + "a" + icon));
  EXPECT_THAT(a, testing::Not(HasSubstr(start))) << "it is there by a link";
  EXPECT_THAT(a, HasSubstr("\n1 warning\n"));
  EXPECT_EQ(run({"check", at + "a/config.xml"}).out, "no findings\n") << "a document alone";
  EXPECT_EQ(run({"show", "--field", "startFile.src", at + "a"}).out, "up/index.html\n");
  const std::string all = run({"check", "-r", folder.path()}).out;
  EXPECT_THAT(all, HasSubstr(at + "a" + icon));
  EXPECT_THAT(all, HasSubstr(at + "b" + icon));
  EXPECT_THAT(all, HasSubstr(at + "b" + start));
  EXPECT_THAT(all, HasSubstr("\n3 warnings\n"));
}

TEST(ManyFiles, GiveTheSameWithAnyNumberOfJobs) {
  const TemporaryFolder folder;
  std::string list;
  for (int i = 0; i < 300; ++i) {
    const std::string content = i % 50 == 7    ? "<widget>"
                                : i % 50 == 13 ? "PK\x03\x04"
                                : i % 3 == 0   ? widget("<icon/><name>n</name>")
                                               : widget("", "id='urn:" + std::to_string(i) + "'");
    list += folder.add(std::to_string(i) + ".wgt", content) + '\n';
    list += i % 100 == 50 ? "/nowhere\n" : "";
  }
  for (const char* command : {"check", "show"}) {
    for (const char* format : {"text", "json", "jsonl", "sarif"}) {
      if (command == std::string("show") && format == std::string("sarif")) {
        continue;
      }
      SCOPED_TRACE(testing::Message() << command << ' ' << format);
      const auto with = [&](const char* jobs) {
        return run({command, "--format", format, "--jobs", jobs, "--files-from", "-"}, list);
      };
      const Outcome one = with("1");
      const Outcome four = with("4");
      EXPECT_EQ(one.status, 2);
      EXPECT_EQ(four.status, 2);
      EXPECT_TRUE(one.out == four.out);
      EXPECT_EQ(one.error, four.error);
      if (format == std::string("text") || format == std::string("sarif")) {
        continue;
      }
      std::vector<Json> files;
      if (format == std::string("jsonl")) {
        std::istringstream lines(four.out);
        for (std::string line; std::getline(lines, line);) {
          files.push_back(Json::parse(line));
        }
      } else {
        const Json whole = Json::parse(four.out);
        const Json& listed = command == std::string("check") ? whole["files"] : whole;
        files.assign(listed.begin(), listed.end());
      }
      std::istringstream names(list);
      std::map<std::string, int> statuses;
      std::string name;
      for (const Json& file : files) {
        std::getline(names, name);
        EXPECT_EQ(file["file"], name);
        ++statuses[file["status"].get<std::string>()];
        EXPECT_EQ(file["reason"].is_null(), file["status"] == "done");
      }
      EXPECT_EQ(statuses,
                (std::map<std::string, int>{{"done", 288}, {"rejected", 12}, {"unreadable", 3}}));
    }
  }
}

// The last file is there only when the tool has had time to read all of them.
TEST(ManyFiles, WaitForASlowReader) {
  const TemporaryFolder folder;
  const std::string first = folder.add("first.xml", widget("")) + '\n';
  std::string files;
  for (int i = 0; i < 999; ++i) {
    files += first;
  }
  const TemporaryFile list(files + folder.path() + "/last.xml\n");
  const std::string command = NIMBREL_TOOL " show --jobs 2 --format jsonl --files-from ";
  FILE* const output = popen((command + list.path()).c_str(), "r");
  ASSERT_NE(output, nullptr);
  usleep(500000);
  folder.add("last.xml", widget(""));
  std::string text(1 << 23, '\0');
  text.resize(fread(text.data(), 1, text.size(), output));
  EXPECT_EQ(pclose(output), 0);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1000);
}

TEST(ManyFiles, HaveTheSameFormHoweverManyThereAre) {
  const TemporaryFolder folder;
  folder.add("b.wgt", widget("", "id='urn:b'"));
  const auto with = [&](const char* command, const char* format, const std::string& list) {
    return run({command, "--format", format, "--files-from", "-"}, list).out;
  };
  EXPECT_EQ(Json::parse(run({"show", "--format", "json", "-r", folder.path()}).out)[0]["status"],
            "done");
  EXPECT_EQ(with("show", "json", ""), "[]\n");
  EXPECT_EQ(Json::parse(with("check", "json", ""))["files"], Json::array());
  EXPECT_EQ(Json::parse(with("check", "json", "/nowhere"))["files"][0]["status"], "unreadable");
}

TEST(ManyFiles, AreSummedUp) {
  const TemporaryFile faulty(widget("<icon/><icon/>"));
  const TemporaryFile clean(widget(""));
  const TemporaryFile bad("<widget>");
  const std::vector<std::string> files = {faulty.path(), clean.path(), bad.path(), "/nowhere"};
  std::vector<std::string> arguments = {"check", "--summary"};
  arguments.insert(arguments.end(), files.begin(), files.end());
  EXPECT_EQ(run(arguments).out,
            "findings     files  level    code\n"
            "       1         1  error    document-rejected\n"
            "       2         1  warning  missing-attribute\n"
            "4 files, 1 rejected, 1 unreadable; 1 error, 2 warnings\n");
  arguments.insert(arguments.end(), {"--format", "json"});
  const Json sum = Json::parse(run(arguments).out);
  EXPECT_EQ(sum["files"], 4);
  EXPECT_EQ(sum["codes"][1].dump(),
            R"({"code":"missing-attribute","level":"warning","findings":2,"files":1})");
}

TEST(ManyFiles, AreReadQuietly) {
  EXPECT_EQ(run({"check", "-q", "-"}, widget("")).out, "");
  EXPECT_THAT(run({"check", "--quiet", "-"}, widget("<icon/>")).out, HasSubstr("missing-attrib"));
}

}  // namespace
}  // namespace nimbrel_test
