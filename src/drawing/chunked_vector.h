// A list for many elements, in which drawings keep their operations.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace vaxel {

// A list that only grows at its end and never moves an element. It takes the memory of its elements and of
// at most one block more, where a vector that doubles would take up to three times as much while it grows.
template <class T, std::size_t BlockSize = 512>
class ChunkedVector {
 public:
  std::size_t size() const { return size_; }

  T& push_back(T value) {
    if (size_ == blocks_.size() * BlockSize) blocks_.push_back(std::make_unique<T[]>(BlockSize));
    T& place = blocks_.back()[size_ % BlockSize];
    place = std::move(value);
    ++size_;
    return place;
  }

  T& operator[](std::size_t index) { return blocks_[index / BlockSize][index % BlockSize]; }
  const T& operator[](std::size_t index) const { return blocks_[index / BlockSize][index % BlockSize]; }

  void clear() {
    blocks_.clear();
    size_ = 0;
  }

 private:
  std::vector<std::unique_ptr<T[]>> blocks_;
  std::size_t size_ = 0;
};

}  // namespace vaxel
