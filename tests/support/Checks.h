#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

// Checks that many tests have in common, with the framework and types that nearly all use.
namespace orvane::nimbrel::test {

/// An input and what it must yield.
using Row = std::pair<std::string, std::string>;

/// Each input must yield the other half of its row.
template <std::size_t N, typename Actual>
void expectRows(const Row (&rows)[N], const Actual& actual) {
  for (const auto& [input, expected] : rows) {
    EXPECT_EQ(actual(input), expected) << testing::PrintToString(input);
  }
}

/// The same with the rows in one text: "input => expected". A row ends at a line break or at two
/// blanks, so that short ones share a line; blanks around a half do not belong to it.
template <typename Actual>
void expectRows(std::string_view table, const Actual& actual) {
  const auto bare = [](std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
  };
  for (std::size_t end = 0; !table.empty(); table.remove_prefix(std::min(end + 1, table.size()))) {
    end = std::min({table.find('\n'), table.find("  "), table.size()});
    const std::string row = bare(table.substr(0, end));
    const std::size_t arrow = row.find("=>");
    if (!row.empty()) {
      ASSERT_NE(arrow, std::string::npos) << row;
      EXPECT_EQ(actual(bare(row.substr(0, arrow))), bare(row.substr(arrow + 2))) << row;
    }
  }
}

/// Processor time in seconds that a call takes of this process and of those that it waits for; the
/// least of three, and no less than can be told apart.
template <typename Call>
double costOf(const Call& call) {
  const auto used = [] {
    double seconds = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
      rusage usage = {};
      ::getrusage(who, &usage);
      seconds += static_cast<double>(usage.ru_utime.tv_sec) +
                 static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
    }
    return seconds;
  };
  double least = 1e9;
  for (int i = 0; i < 3; ++i) {
    const double before = used();
    call();
    least = std::min(least, used() - before);
  }
  return std::max(least, 0.002);
}

/// Eight times of something must not cost the 64 times as much that it does when each is compared
/// with all before. `make` makes a number of things, `use` is what is measured. Returns the larger
/// number. With a sanitizer it is a tenth: the release build shows how cost grows.
template <typename Make, typename Use>
std::size_t expectCostInProportion(std::size_t count, const Make& make, const Use& use) {
  count /= SLOWNESS;
  const auto few = make(count);
  const auto many = make(8 * count);
  const double most = 30 * costOf([&] { use(few); });
  EXPECT_LT(costOf([&] { use(many); }), most);
  return 8 * count;
}

/// What a call throws: the text of an `Exception`, and of none derived from it, or a complaint.
template <typename Exception, typename Call>
std::string thrownBy(Call call) {
  try {
    call();
  } catch (const Exception& thrown) {
    return typeid(thrown) == typeid(Exception) ? thrown.what() : "(a derived exception)";
  } catch (...) {
    return "(another exception)";
  }
  return "(nothing thrown)";
}

/// Why a call rejects a document: "line:column: message", or "accepted".
template <typename Exception, typename Call>
std::string rejectionBy(Call call) {
  try {
    call();
  } catch (const Exception& e) {
    return std::to_string(e.line) + ":" + std::to_string(e.column) + ": " + e.what();
  }
  return "accepted";
}

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (; count > 0; --count) {
    all += text;
  }
  return all;
}

inline std::string lowerAscii(std::string text) {
  for (char& byte : text) {
    byte = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
  }
  return text;
}

/// Calls with every string of 1 to `length` bytes of the alphabet until a check is fatal.
template <typename Call>
void forEachString(std::string_view alphabet, int length, const Call& call,
                   const std::string& stem = "") {
  for (std::size_t i = 0; i < alphabet.size() && !testing::Test::HasFatalFailure(); ++i) {
    call(stem + alphabet[i]);
    if (length > 1) {
      forEachString(alphabet, length - 1, call, stem + alphabet[i]);
    }
  }
}

/// All bytes of a file.
inline std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace orvane::nimbrel::test
