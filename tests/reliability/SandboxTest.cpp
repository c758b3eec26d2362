// What the library asks the system for: in a process that may open no file and no connection, but
// for a document that is named.

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>

#include "tests/support/Checks.h"
#include "util/ParseException.h"
#include "util/XmlParserLibXml.h"

namespace orvane::nimbrel::test {
namespace {

/// Ends this process as soon as it opens anything, but for a file as the library opens a document.
bool forbidOpening() {
  constexpr auto AT_END = 5;  // of the instructions below
  sock_filter instructions[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, AT_END, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, AT_END - 1, 0),
#ifdef SYS_open
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_open, AT_END - 2, 0),
#else
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, AT_END - 2, 0),
#endif
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
      BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_NOCTTY, 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program = {std::size(instructions), instructions};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

std::string declaring(const std::string& encoding, const std::string& text) {
  return "<?xml version='1.0' encoding='" + encoding + "'?><a>" + text + "</a>";
}

std::string outcomeOf(const std::string& document, const char* encoding = nullptr) {
  return rejectionBy<ParseException>([&] {
    (void)util::XmlParserLibXml().parse(document.data(), static_cast<unsigned int>(document.size()),
                                        nullptr, encoding);
  });
}

void requireOutcome(const std::string& outcome, const std::string& expected) {
  if (outcome != expected) {
    std::fprintf(stderr, "%s instead of %s\n", outcome.c_str(), expected.c_str());
    ::_exit(1);
  }
}

constexpr const char* ACCEPTED[] = {
    "UTF-8",        "US-ASCII",     "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
    "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",
    "ISO-8859-13",  "ISO-8859-14",  "ISO-8859-15",  "windows-1250", "windows-1251", "windows-1252",
    "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257", "windows-1258",
    "windows-874",  "TIS-620",      "KOI8-R",       "KOI8-U",       "Shift_JIS",    "EUC-JP",
    "EUC-KR",       "GB2312",       "GBK",          "GB18030",      "Big5"};
constexpr const char* REJECTED[] = {"UTF-7", "EUC-TW", "ISO-2022-KR", "IBM037", "x-none"};

void readAllEncodings() {
  for (const std::string name : ACCEPTED) {
    requireOutcome(outcomeOf(declaring(name, "x")), "accepted");
    requireOutcome(outcomeOf("<a/>", name.c_str()), "accepted");
    (void)outcomeOf(declaring(name, "\xB0\xA1\xFF\x80"));
  }
  for (const std::string name : REJECTED) {
    requireOutcome(outcomeOf(declaring(name, "x")),
                   "1:" + std::to_string(32 + name.size()) + ": Unsupported encoding " + name);
    requireOutcome(outcomeOf("<a/>", name.c_str()), "0:0: Unknown encoding: " + name);
  }
  using namespace std::string_literals;
  requireOutcome(outcomeOf("\xFF\xFE<\0a\0/\0>\0"s), "accepted");
  requireOutcome(outcomeOf("\0\0\0<\0\0\0a\0\0\0/\0\0\0>"s), "accepted");
}

class Sandbox : public testing::Test {
 protected:
  void SetUp() override {
    // What a document must not make use of.
    ::setenv("GCONV_PATH", testing::TempDir().c_str(), 1);
    ::setenv("XML_CATALOG_FILES", "/nowhere", 1);
  }

  template <typename Action>
  void expectNothingOpened(Action action) {
    EXPECT_EXIT(
        {
          if (!forbidOpening()) {
            std::perror("seccomp");
            ::_exit(1);
          }
          action();
          ::_exit(0);
        },
        testing::ExitedWithCode(0), "");
  }
};

TEST_F(Sandbox, EndsAProcessThatOpensAFile) {
  EXPECT_EXIT(
      {
        forbidOpening();
        (void)::open("/dev/null", O_RDONLY);
        ::_exit(0);
      },
      testing::KilledBySignal(SIGSYS), "");
}

TEST_F(Sandbox, NoEncodingOpensAFile) {
  expectNothingOpened(readAllEncodings);
}

TEST_F(Sandbox, NoDocumentOpensAnotherFile) {
  const std::string path = testing::TempDir() + "nimbrel-sandbox.xml";
  std::ofstream(path) << declaring("euc-kr", "\xB0\xA1");
  expectNothingOpened([&] {
    (void)util::XmlParserLibXml().parse(path.c_str(), nullptr);
    for (const char* document :
         {"<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>",
          "<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/passwd'>]><a>&e;</a>",
          "<!DOCTYPE a [<!ENTITY % e SYSTEM 'http://127.0.0.1/'>%e;]><a/>",
          "<?oasis-xml-catalog catalog='/etc/passwd'?><!DOCTYPE a PUBLIC 'p' 'x'><a/>"}) {
      requireOutcome(outcomeOf(document), "accepted");
    }
  });
  ::unlink(path.c_str());
}

}  // namespace
}  // namespace orvane::nimbrel::test
