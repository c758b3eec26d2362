#include <cstddef>
#include <random>
#include <unordered_map>

#include "tests/support/Checks.h"
#include "util/PortableFilenameMunger.h"

namespace orvane::zel::util {
namespace {

using nimbrel::test::expectRows;
using nimbrel::test::lowerAscii;
using nimbrel::test::repeated;

std::string munge(std::string name) {
  PortableFilenameMunger().munge(name);
  return name;
}

// Why `name` is no safe directory entry; empty when it is one.
std::string fault(const std::string& name) {
  constexpr std::string_view ALLOWED =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~%=";
  if (name.empty() || name.size() > 255) {
    return "length";
  }
  if (name.find_first_not_of(ALLOWED) != std::string::npos) {
    return "byte";
  }
  if (name.front() == '.' || name.front() == '-' || name.back() == '.') {
    return "edge";
  }
  return {};
}

// The header's reading of short names, from the left.
std::string undo(const std::string& name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] == '=') {
      text += static_cast<char>(std::stoi(name.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      text += name[i];
    }
  }
  return text;
}

TEST(PortableFilenameMunger, LeavesSafeNamesAlone) {
  for (const std::string name :
       {"app", "A", "0", "_", "~", "a-b.c_d~e", "a-", "_x~", "example.org%2Fapp", "%2f", "%2E%2e",
        "a%00b", "%41%42", "a..b", ""}) {
    EXPECT_EQ(munge(name), name);
  }
  EXPECT_EQ(munge(repeated("a", 255)), repeated("a", 255));
}

TEST(PortableFilenameMunger, EscapesWhatMustNotStay) {
  expectRows(
      ". => =2E  .. => =2E=2E  ... => =2E.=2E  .hidden => =2Ehidden  end. => end=2E  - => =2D  "
      "--x- => =2D-x-  / => =2F  \xC3\xBC\xFF => =C3=BC=FF  a=b== => a=3Db=3D=3D  =2F => =3D2F  "
      "50% => 50=25  %4 => =254  %zz%4g => =25zz=254g  %%41 => =25%41  host/a b => host=2Fa=20b  "
      "a\\b:c*d?e\"f<g>h|i => a=5Cb=3Ac=2Ad=3Fe=22f=3Cg=3Eh=7Ci",
      munge);
  EXPECT_EQ(munge(std::string("a\0b\n\x7f ", 6)), "a=00b=0A=7F=20");
}

TEST(PortableFilenameMunger, GivesLongNamesAPrefixAndTheDigest) {
  const std::string digest256 = "02d7160d77e18c6447be80c2e355c7ed4388545271702c50253b0914c65ce5fe";
  EXPECT_EQ(munge(repeated("a", 256)), repeated("a", 189) + "==" + digest256);
  // 85 escapes are 255 bytes; one more does not fit. The prefix never cuts an escape.
  EXPECT_EQ(munge(repeated("/", 85)), repeated("=2F", 85));
  EXPECT_EQ(
      munge(repeated("/", 100)),
      repeated("=2F", 63) + "==4aaecdd8a94cb7abb5c9283a5825c5d2817a1e4a4a78e542600ca7d6a5014f25");
  for (const char* escape : {"/", "%2F"}) {
    for (std::size_t lead : {185U, 186U, 187U, 188U, 189U}) {
      SCOPED_TRACE(escape + std::to_string(lead));
      const std::string name = munge(repeated("a", lead) + escape + repeated("b", 100));
      const std::size_t marker = name.find("==");
      EXPECT_EQ(name.substr(0, marker),
                lead > 186 ? repeated("a", lead)
                           : munge(repeated("a", lead) + escape) + repeated("b", 186 - lead));
      EXPECT_EQ(name.size() - marker, 66U);
    }
  }
}

// Every string of up to six of the bytes that matter to the rule: names are safe, can be undone,
// and meet on a file system that ignores case only where the inputs do.
TEST(PortableFilenameMunger, IsInjectiveOnAllShortStrings) {
  std::unordered_map<std::string, std::string> inputs;
  nimbrel::test::forEachString("%=2Ee.-/", 6, [&](const std::string& input) {
    const std::string name = munge(input);
    ASSERT_EQ(fault(name), "") << input;
    ASSERT_EQ(undo(name), input) << name;
    const auto known = inputs.emplace(lowerAscii(name), lowerAscii(input)).first;
    ASSERT_EQ(known->second, lowerAscii(input)) << name;
  });
  EXPECT_GT(inputs.size(), 100000U);
}

TEST(PortableFilenameMunger, IsInjectiveOnGeneratedBytes) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  const std::string alphabets[] = {bytes, std::string("%=/.-\0 \n\x80\xC3\xBC\xFF", 12),
                                   "ab%2F=", "a", "0123456789abcdefABCDEF%="};
  std::mt19937 random(20240117);  // NOLINT(cert-msc*): the same inputs in every run
  std::unordered_map<std::string, std::string> inputs;
  for (int i = 0; i < 100000; ++i) {
    const std::string& alphabet = alphabets[random() % std::size(alphabets)];
    std::string input;
    for (std::size_t size = 1 + random() % (random() % 10 == 0 ? 300 : 20); size > 0; --size) {
      input += alphabet[random() % alphabet.size()];
    }
    const std::string name = munge(input);
    ASSERT_EQ(fault(name), "") << name;
    ASSERT_EQ(inputs.emplace(name, input).first->second, input) << name;
    if (name.find("==") == std::string::npos) {
      ASSERT_EQ(undo(name), input) << name;
    }
    if (name == input) {
      continue;
    }
    ASSERT_NE(munge(name), name);
    inputs.emplace(munge(name), name);  // a name is an input like any other
  }
}

}  // namespace
}  // namespace orvane::zel::util
