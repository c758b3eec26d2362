#include <arpa/inet.h>

#include <array>
#include <unordered_map>

#include "tests/support/Checks.h"
#include "util/HostUriMunger.h"
#include "util/PortableFilenameMunger.h"

namespace orvane::zel::util {
namespace {

using nimbrel::test::expectRows;

std::string nameOf(const std::string& host) {
  return HostUriMunger().munge(host.c_str());
}

// Why `name` is no safe directory entry; empty when it is one.
std::string whyUnsafe(const std::string& name) {
  std::string munged = name;
  PortableFilenameMunger().munge(munged);
  return name.empty() ? "empty" : munged == name ? "" : "unsafe";
}

/// The name of a host, which must be safe.
std::string safe(const std::string& host) {
  EXPECT_EQ(whyUnsafe(nameOf(host)), "");
  return nameOf(host);
}

TEST(HostUriMunger, GivesSpellingsOfAHostOneName) {
  expectRows(
      "example.org => example.org  Example.ORG => example.org  example\u3002org => example.org  "
      "ｅxample.org => example.org  example.org. => example.org%2E  "
      "EXAMPLE.org\u3002 => example.org%2E  bücher.example => xn--bcher-kva.example  "
      "BÜCHER.example => xn--bcher-kva.example  bu\u0308cher.Example => xn--bcher-kva.example  "
      "XN--BCHER-KVA.example => xn--bcher-kva.example  a_b-c.d => a_b-c.d  A_B-C.D => a_b-c.d  "
      "-x.example => %2Dx.example  -X.example => %2Dx.example  127.0.0.1 => 127.0.0.1  "
      "::1 => %3A%3A1  [::1] => %3A%3A1  0:0:0:0:0:0:0:1 => %3A%3A1  [0000::0001] => %3A%3A1  "
      "2001:db8::ab => %32001%3Adb8%3A%3Aab  2001:DB8:0::AB => %32001%3Adb8%3A%3Aab  "
      "::ffff:1.2.3.4 => %3A%3Affff%3A1%2E2%2E3%2E4  "
      "::FFFF:102:304 => %3A%3Affff%3A1%2E2%2E3%2E4",
      safe);
}

TEST(HostUriMunger, NamesWhatIsNoHostByItsBytes) {
  expectRows(
      ".. => %2E%2E  . => %2E  a/b => %61%2Fb  / => %2F  a..b => %61%2E%2Eb  A..b => %41%2E%2Eb  "
      ".a => %2Ea  a%62 => %61%2562  %2E%2E => %252E%252E  a b => %61%20b  a~b=c => %61%7Eb%3Dc  "
      "\xFF => %FF  fe80::1%eth0 => %66e80%3A%3A1%25eth0  [v1.x] => %5Bv1%2Ex%5D  [] => %5B%5D  "
      "[example.org] => %5Bexample%2Eorg%5D  1::2::3 => %31%3A%3A2%3A%3A3  a\\b => %61%5Cb",
      safe);
  EXPECT_EQ(safe("a\n"), "%61%0A");
  EXPECT_EQ(safe(std::string(64, 'a')), "%61" + std::string(63, 'a'));
  EXPECT_EQ(nameOf(""), "");
  EXPECT_EQ(HostUriMunger().munge(nullptr), "");
}

TEST(HostUriMunger, GivesLongNamesAPrefixAndTheDigest) {
  const std::string digest = "9835fa6bf4e20a9b9ea812506302e98982721a6cf8d2cae67af57129bf21ae90";
  EXPECT_EQ(nameOf(std::string(300, 'a')), "%61" + std::string(187, 'a') + "~" + digest);
  EXPECT_NE(nameOf(std::string(300, 'a')), nameOf(std::string(301, 'a')));

  std::string longest;  // 253 bytes, the most a host may have
  for (int label = 0; label < 4; ++label) {
    longest += std::string(label < 3 ? 63 : 61, 'h') + ".";
  }
  EXPECT_EQ(nameOf(longest.substr(0, 253)), longest.substr(0, 253));
  EXPECT_EQ(nameOf(longest).find('~'), 190U);  // the escaped root dot is too much
  EXPECT_EQ(whyUnsafe(nameOf(longest)), "");
}

// A second, plain statement of which inputs are one host, for ASCII.
std::string identity(const std::string& host) {
  std::string bare = host;
  if (bare.size() > 2 && bare.front() == '[' && bare.back() == ']') {
    bare = bare.substr(1, bare.size() - 2);
  }
  std::array<unsigned char, 16> address{};
  if (inet_pton(AF_INET6, bare.c_str(), address.data()) == 1) {
    return "address " + std::string(address.begin(), address.end());
  }
  const std::string lower = nimbrel::test::lowerAscii(host);
  const bool isHost =
      lower.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_.") == std::string::npos &&
      lower.front() != '.' && lower.find("..") == std::string::npos;
  return isHost ? "host " + lower : "other " + host;
}

TEST(HostUriMunger, IsInjectiveOnAllShortStrings) {
  std::unordered_map<std::string, std::string> identities;
  std::unordered_map<std::string, std::string> names;
  nimbrel::test::forEachString("aA1.-%:[]/", 5, [&](const std::string& host) {
    const std::string name = nameOf(host);
    const std::string key = identity(host);
    ASSERT_EQ(whyUnsafe(name), "") << host;
    ASSERT_EQ(identities.emplace(name, key).first->second, key) << host;
    ASSERT_EQ(names.emplace(key, name).first->second, name) << host;
  });
  EXPECT_GT(names.size(), 80000U);
}

}  // namespace
}  // namespace orvane::zel::util
