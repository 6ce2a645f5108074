// tests/stats/image_bytes.h — writing saved images by offset, apart from the code that reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace varilum::test {

class ImageBytes {
 public:
  explicit ImageBytes(std::size_t size) : bytes_(size) {}

  template <class Value>
  ImageBytes& put(std::size_t offset, Value value) {
    std::memcpy(bytes_.data() + offset, &value, sizeof value);
    return *this;
  }
  ImageBytes& resize(std::size_t size) {
    bytes_.resize(size);
    return *this;
  }
  std::size_t size() const { return bytes_.size(); }
  std::byte* data() { return bytes_.data(); }
  const std::byte* data() const { return bytes_.data(); }
  operator std::span<const std::byte>() const { return bytes_; }

 private:
  std::vector<std::byte> bytes_;
};

}  // namespace varilum::test
