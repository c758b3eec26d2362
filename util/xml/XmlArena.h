#pragma once

#include <algorithm>
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
  /// For a document of `inputSize` bytes, as far as known. Allocates nothing yet.
  explicit XmlArena(std::size_t inputSize) noexcept
      : blockSize_(std::clamp<std::size_t>(inputSize, 1024, MAX_BLOCK)) {}
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

  static constexpr std::size_t MAX_BLOCK = 65536;

  std::size_t blockSize_;
  // A typical document takes three bytes of tree for each of its own.
  std::size_t nextBlockSize_ = std::min(3 * blockSize_, MAX_BLOCK);
  std::byte* next_ = nullptr;
  std::byte* end_ = nullptr;
  std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

}  // namespace orvane::nimbrel::util::internal
