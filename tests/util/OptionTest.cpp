#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "util/Option.h"

namespace {

using orvane::nimbrel::util::Option;
using orvane::nimbrel::util::internal::StackAllocator;

/// Throws when it is copied while the switch is on; counts the living.
struct Fragile {
  explicit Fragile(bool* failing) : failing_(failing) { ++alive; }
  Fragile(const Fragile& other) : failing_(other.failing_) {
    if (*failing_) {
      throw std::runtime_error("copy");
    }
    ++alive;
  }
  Fragile& operator=(const Fragile&) = delete;
  ~Fragile() { --alive; }

  static int alive;
  bool* failing_;
};
int Fragile::alive = 0;

std::string messageOfGet(const Option<std::string>& option) {
  try {
    (void)option.get();
  } catch (const std::logic_error& error) {
    return error.what();
  }
  return "no error";
}

Option<std::string> some(const char* text) {
  Option<std::string> option;
  option = std::string(text);
  return option;
}

TEST(Option, NoneHasNoValueAndSaysSo) {
  Option<std::string> option;
  option.reset();
  option.reset();
  EXPECT_FALSE(option);
  EXPECT_STREQ(option.c_str(), "none");
  EXPECT_FALSE(option == std::string());
  EXPECT_FALSE(option == std::string("none"));
  EXPECT_EQ(messageOfGet(option), "Attempt to obtain value when there is None.");
}

TEST(Option, ComparesAllBytesOfAText) {
  const std::string text("a\0b", 3);
  Option<std::string> option;
  option = text;
  EXPECT_TRUE(option == text);
  EXPECT_FALSE(option == std::string("a"));
  EXPECT_FALSE(option == std::string("a\0c", 3));
  EXPECT_TRUE(some("") == std::string());
}

TEST(Option, CopiesMovesAndForgets) {
  const Option<std::string> source = some("a text that is too long to be stored in place");
  Option<std::string> copy(source);
  EXPECT_EQ(copy.get(), source.get());
  EXPECT_NE(&copy.get(), &source.get());

  Option<std::string> target = some("old");
  target = copy;
  EXPECT_EQ(target.get(), source.get());
  target = std::move(copy);
  EXPECT_EQ(target.get(), source.get());
  EXPECT_FALSE(copy);  // NOLINT(bugprone-use-after-move): None is promised.
  target = copy;
  EXPECT_FALSE(target);
  static_assert(std::is_nothrow_move_constructible_v<Option<std::string>>);
  static_assert(std::is_nothrow_move_assignable_v<Option<std::string>>);
}

TEST(Option, KeepsItsValueWhenAssignedToItself) {
  const std::string text = "a text that is too long to be stored in place";
  Option<std::string> option = some(text.c_str());
  const Option<std::string>& same = option;
  option = same;
  EXPECT_TRUE(option == text);
  option = same.get();
  EXPECT_TRUE(option == text);
  option = std::move(option.get());
  EXPECT_TRUE(option == text);
}

TEST(Option, IsNoneAfterACopyThatThrows) {
  bool failing = false;
  {
    const Fragile value(&failing);
    Option<Fragile> source;
    source = value;
    Option<Fragile> target;
    target = value;
    failing = true;
    EXPECT_THROW(target = value, std::runtime_error);
    EXPECT_FALSE(target);
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_FALSE(target);
    EXPECT_THROW(Option<Fragile> copy(source), std::runtime_error);
    failing = false;
    target = source;  // the slot is free again
    EXPECT_TRUE(target);
    EXPECT_EQ(Fragile::alive, 3);
  }
  EXPECT_EQ(Fragile::alive, 0);
}

TEST(StackAllocator, HandsOutOneSlotAndClearsIt) {
  StackAllocator<std::string> allocator;
  const auto isZero = [](const void* slot) {
    const auto* bytes = static_cast<const unsigned char*>(slot);
    return std::all_of(bytes, bytes + sizeof(std::string), [](unsigned char b) { return b == 0; });
  };
  void* slot = allocator.allocate();
  EXPECT_TRUE(isZero(slot));
  EXPECT_THROW(allocator.allocate(), std::bad_alloc);

  std::memset(slot, 0xAB, sizeof(std::string));
  std::string foreign;
  EXPECT_THROW(allocator.deallocate(&foreign), std::bad_alloc);
  allocator.deallocate(nullptr);
  EXPECT_FALSE(isZero(slot));
  EXPECT_THROW(allocator.allocate(), std::bad_alloc);

  allocator.deallocate(slot);
  EXPECT_TRUE(isZero(slot));
  EXPECT_EQ(allocator.allocate(), slot);
  static_assert(std::has_virtual_destructor_v<StackAllocator<int>>);
}

TEST(Option, LeavesZeroBytesBehind) {
  Option<std::string> option = some("a text that is too long to be stored in place");
  const auto* bytes = reinterpret_cast<const unsigned char*>(&option.get());
  option.reset();
  EXPECT_TRUE(
      std::all_of(bytes, bytes + sizeof(std::string), [](unsigned char b) { return b == 0; }));
}

}  // namespace
