#include <algorithm>
#include <cstddef>

#include "tests/support/Checks.h"
#include "util/Option.h"

namespace {

using orvane::nimbrel::util::Option;
using orvane::nimbrel::util::internal::StackAllocator;

constexpr const char* LONG_TEXT = "a text that is too long to be stored in place";

Option<std::string> some(const char* text) {
  Option<std::string> option;
  option = std::string(text);
  return option;
}

/// Whether nothing is left of the string that was there.
bool isZero(const void* slot) {
  const auto* bytes = static_cast<const unsigned char*>(slot);
  return std::all_of(bytes, bytes + sizeof(std::string), [](unsigned char b) { return b == 0; });
}

TEST(Option, NoneHasNoValueAndSaysSo) {
  Option<std::string> option;
  option.reset();
  EXPECT_FALSE(option);
  EXPECT_STREQ(option.c_str(), "none");
  EXPECT_FALSE(option == std::string());
  EXPECT_FALSE(option == std::string("none"));
  EXPECT_EQ(orvane::nimbrel::test::thrownBy<std::logic_error>([&] { (void)option.get(); }),
            "Attempt to obtain value when there is None.");
  const std::string text("a\0b", 3);
  option = text;
  EXPECT_TRUE(option == text);
  EXPECT_FALSE(option == std::string("a"));
  EXPECT_FALSE(option == std::string("a\0c", 3));
}

TEST(Option, CopiesAndMovesAsAValue) {
  // A vector moves what holds an option when it grows.
  struct Entry {
    std::string text;
    Option<std::string> value;
  };
  static_assert(std::is_nothrow_move_constructible_v<Entry>);
  static_assert(std::is_nothrow_move_assignable_v<Entry>);
  const Option<std::string> source = some(LONG_TEXT);
  Option<std::string> copy(source);
  EXPECT_EQ(copy.get(), source.get());
  EXPECT_NE(&copy.get(), &source.get());

  Option<std::string> target = some("old");
  target = copy;
  EXPECT_EQ(target.get(), source.get());
  // NOLINTBEGIN(bugprone-use-after-move): what a move leaves is promised
  const void* const slot = &copy.get();
  const void* const characters = copy.get().data();
  Option<std::string> moved(std::move(copy));
  EXPECT_EQ(moved.get().data(), characters);
  EXPECT_FALSE(copy);
  EXPECT_TRUE(isZero(slot));
  target = std::move(moved);
  EXPECT_EQ(target.get().data(), characters);
  EXPECT_FALSE(moved);
  Option<std::string>& same = target;
  target = std::move(same);
  EXPECT_EQ(target.get().data(), characters);
  target = std::move(moved);
  EXPECT_FALSE(target);
  // NOLINTEND(bugprone-use-after-move)
}

TEST(Option, KeepsItsValueWhenAssignedToItselfAndLeavesZeroBytes) {
  const std::string text = LONG_TEXT;
  Option<std::string> option = some(LONG_TEXT);
  const Option<std::string>& same = option;
  option = same;
  EXPECT_TRUE(option == text);
  option = same.get();
  EXPECT_TRUE(option == text);
  option = std::move(option.get());
  EXPECT_TRUE(option == text);
  const void* slot = &option.get();
  option.reset();
  EXPECT_TRUE(isZero(slot));
}

TEST(StackAllocator, HandsOutOneSlotAndClearsIt) {
  StackAllocator<std::string> allocator;
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

}  // namespace
