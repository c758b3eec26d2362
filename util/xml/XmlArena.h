#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace orvane::nimbrel::util::internal {

/// The memory of one document: bytes one behind the other in a few blocks, all freed at once. What
/// lies in it gets no destructor call.
class XmlArena {
 public:
  /// Allocates nothing yet; `firstBlock` bytes first, then `blockSize` each time.
  XmlArena(std::size_t firstBlock, std::size_t blockSize) noexcept
      : nextBlockSize_(firstBlock), blockSize_(blockSize) {}
  XmlArena(const XmlArena&) = delete;
  XmlArena& operator=(const XmlArena&) = delete;

  /// Room for `size` bytes at a power of two. Two rooms without alignment adjoin unless a block
  /// ends in between.
  void* allocate(std::size_t size, std::size_t alignment) {
    const std::size_t padding = -reinterpret_cast<std::uintptr_t>(next_) & (alignment - 1);
    if (static_cast<std::size_t>(end_ - next_) < padding + size) {
      return allocateInNewBlock(size);
    }
    std::byte* const room = next_ + padding;
    next_ = room + size;
    return room;
  }

 private:
  void* allocateInNewBlock(std::size_t size) {
    // What is large gets a block to itself, so that not much is ever left at the end of a block.
    const bool isLarge = size > blockSize_ / 8;
    const std::size_t blockSize = isLarge ? size : std::exchange(nextBlockSize_, blockSize_);
    blocks_.emplace_back();
    blocks_.back().reset(new std::byte[blockSize]);  // aligned for everything, and not cleared
    std::byte* const block = blocks_.back().get();
    if (!isLarge) {
      next_ = block + size;
      end_ = block + blockSize;
    }
    return block;
  }

  std::size_t nextBlockSize_;
  std::size_t blockSize_;
  std::byte* next_ = nullptr;
  std::byte* end_ = nullptr;
  std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

}  // namespace orvane::nimbrel::util::internal
