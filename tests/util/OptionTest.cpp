#include <algorithm>
#include <cstddef>

#include "tests/support/Checks.h"
#include "util/Option.h"

namespace {

using orvane::nimbrel::util::Option;
using orvane::nimbrel::util::internal::StackAllocator;

constexpr const char* LONG = "a text that is too long to be stored in place";

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
  EXPECT_EQ(orvane::nimbrel::test::thrownBy<std::logic_error>([&] { (void)option.get(); }),
            "Attempt to obtain value when there is None.");
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
  const Option<std::string> source = some(LONG);
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
  const std::string text = LONG;
  Option<std::string> option = some(LONG);
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

/// Whether nothing is left of the string that was there.
bool isZero(const void* slot) {
  const auto* bytes = static_cast<const unsigned char*>(slot);
  return std::all_of(bytes, bytes + sizeof(std::string), [](unsigned char b) { return b == 0; });
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

TEST(Option, LeavesZeroBytesBehind) {
  Option<std::string> option = some(LONG);
  const void* slot = &option.get();
  option.reset();
  EXPECT_TRUE(isZero(slot));
}

}  // namespace
