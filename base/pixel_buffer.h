#pragma once

#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

namespace corvane {

// `bytes` of uninitialized memory on a 64-byte boundary; large blocks come in huge pages where the system has
// them. Throws std::bad_alloc, also where the system would promise memory that it does not have.
void* AllocatePixels(std::size_t bytes);
void FreePixels(void* memory, std::size_t bytes);

// An array of pixels whose values start out unspecified: nothing is written that a kernel overwrites anyway.
template <class T>
class PixelBuffer {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  PixelBuffer() = default;
  explicit PixelBuffer(std::size_t count) { Resize(count); }
  PixelBuffer(PixelBuffer&& other) noexcept { Swap(other); }
  PixelBuffer& operator=(PixelBuffer&& other) noexcept {
    PixelBuffer taken(std::move(other));
    Swap(taken);
    return *this;
  }
  PixelBuffer(const PixelBuffer&) = delete;
  PixelBuffer& operator=(const PixelBuffer&) = delete;
  ~PixelBuffer() { FreePixels(values_, capacity_ * sizeof(T)); }

  // Changes the length; the values are unspecified afterwards. Memory is kept when it suffices and is not
  // more than twice what is needed.
  void Resize(std::size_t count) {
    if (count > capacity_ || count < capacity_ / 2) {
      FreePixels(values_, capacity_ * sizeof(T));
      values_ = nullptr;
      size_ = capacity_ = 0;
      if (count > 0) values_ = static_cast<T*>(AllocatePixels(count * sizeof(T)));
      capacity_ = count;
    }
    size_ = count;
  }

  T* data() { return values_; }
  const T* data() const { return values_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T& operator[](std::size_t i) { return values_[i]; }
  const T& operator[](std::size_t i) const { return values_[i]; }
  T* begin() { return values_; }
  T* end() { return values_ + size_; }
  const T* begin() const { return values_; }
  const T* end() const { return values_ + size_; }
  void Swap(PixelBuffer& other) noexcept {
    std::swap(values_, other.values_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  T* values_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// Gives `buffer` this length, values unspecified. Where memory does not suffice it stays as it was, and
// std::bad_alloc is thrown.
template <class T>
void ReplaceSize(PixelBuffer<T>& buffer, std::size_t count) {
  if (buffer.size() != count) buffer = PixelBuffer<T>(count);
}

using ByteBuffer = PixelBuffer<unsigned char>;

}  // namespace corvane
