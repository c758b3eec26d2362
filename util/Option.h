#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace orvane::nimbrel::util {

namespace internal {

/// Room for one `T` inside the object itself; never touches the heap.
///
/// The slot is all zero bytes whenever nothing lives in it, so that an empty `Option` leaves no
/// trace of the value it held. Not copyable: an address inside the slot is its identity.
/// Not thread-safe.
template <typename T>
class StackAllocator {
 public:
  StackAllocator() noexcept { clear(); }
  virtual ~StackAllocator() = default;
  StackAllocator(const StackAllocator&) = delete;
  StackAllocator& operator=(const StackAllocator&) = delete;

  /// Hands out the slot. Throws `std::bad_alloc` when it is taken already.
  void* allocate() {
    if (allocated_ != 0) {
      throw std::bad_alloc();
    }
    allocated_ = 1;
    return slot_;
  }

  /// Takes the slot back and fills it with zero bytes; the value in it was destroyed before.
  /// Null does nothing. Throws `std::bad_alloc` for any other address than the slot's own.
  void deallocate(void* address) {
    if (address == nullptr) {
      return;
    }
    if (address != static_cast<void*>(slot_)) {
      throw std::bad_alloc();
    }
    allocated_ = 0;
    clear();
  }

 private:
  void clear() noexcept { std::memset(slot_, 0, sizeof(T)); }

  std::int32_t allocated_ = 0;
  alignas(T) unsigned char slot_[sizeof(T)];
};

}  // namespace internal

/// An optional value, held in place and never on the heap.
///
/// It owns its value. It holds one exactly when `operator bool` says so; "None" is the state
/// without one, the default, and what a move leaves behind. Every operation that copies a value
/// lets through what the copy throws and then leaves None (basic guarantee); `get` changes nothing.
/// Assigning an option to itself, or the value to the option that holds it, changes nothing. Const
/// members may run on several threads.
template <typename T>
class Option {
 public:
  /// None.
  Option() noexcept = default;

  /// A copy of the other's value, or None.
  Option(const Option& other) {
    if (other.value_ != nullptr) {
      construct(*other.value_);
    }
  }

  /// The other's value, or None. The other becomes None.
  Option(Option&& other) noexcept(std::is_nothrow_move_constructible_v<T>) {
    *this = std::move(other);
  }

  ~Option() { reset(); }

  /// Drops the value and copies the other's. Basic guarantee: when the copy throws, None is left.
  Option& operator=(const Option& other) {
    if (this != &other) {
      reset();
      if (other.value_ != nullptr) {
        construct(*other.value_);
      }
    }
    return *this;
  }

  /// Drops the value and moves the other's in. The other becomes None, unless it is this one.
  Option& operator=(Option&& other) noexcept(std::is_nothrow_move_constructible_v<T>) {
    if (this != &other) {
      reset();
      if (other.value_ != nullptr) {
        construct(std::move(*other.value_));
        other.reset();
      }
    }
    return *this;
  }

  /// Drops the value and copies `value`. Basic guarantee: when the copy throws, None is left.
  Option& operator=(const T& value) {
    if (std::addressof(value) != value_) {
      reset();
      construct(value);
    }
    return *this;
  }

  /// Drops the value and moves `value` in, which is then as its own move leaves it.
  Option& operator=(T&& value) noexcept(std::is_nothrow_move_constructible_v<T>) {
    if (std::addressof(value) != value_) {
      reset();
      construct(std::move(value));
    }
    return *this;
  }

  /// Drops the value and makes one in place of the arguments, which must not be part of it. Basic
  /// guarantee: when making it throws, None is left.
  template <typename... Arguments>
  T& emplace(Arguments&&... arguments) {
    reset();
    construct(std::forward<Arguments>(arguments)...);
    return *value_;
  }

  /// The value. Throws `std::logic_error` on None. The reference ends with the value.
  T& get() {
    requireValue();
    return *value_;
  }
  /// The value. Throws `std::logic_error` on None. The reference ends with the value.
  const T& get() const {
    requireValue();
    return *value_;
  }

  /// True while a value is held.
  explicit operator bool() const noexcept { return value_ != nullptr; }

  /// Destroys the value, if any, and clears its bytes.
  void reset() noexcept {
    if (value_ != nullptr) {
      value_->~T();
      allocator_.deallocate(value_);
      value_ = nullptr;
    }
  }

  /// The text held, or "none". Only for `Option<std::string>`. Valid while the value is unchanged.
  template <typename U = T>
  std::enable_if_t<std::is_same_v<U, std::string>, const char*> c_str() const noexcept {
    return value_ != nullptr ? value_->c_str() : "none";
  }

  /// True when a text is held and equals `text` byte for byte. Only for `Option<std::string>`.
  template <typename U = T>
  std::enable_if_t<std::is_same_v<U, std::string>, bool> operator==(
      const std::string& text) const noexcept {
    return value_ != nullptr && *value_ == text;
  }

 private:
  template <typename... Arguments>
  void construct(Arguments&&... arguments) {
    void* slot = allocator_.allocate();
    try {
      value_ = ::new (slot) T(std::forward<Arguments>(arguments)...);
    } catch (...) {
      allocator_.deallocate(slot);
      throw;
    }
  }

  void requireValue() const {
    if (value_ == nullptr) {
      throw std::logic_error("Attempt to obtain value when there is None.");
    }
  }

  internal::StackAllocator<T> allocator_;
  T* value_ = nullptr;
};

}  // namespace orvane::nimbrel::util
