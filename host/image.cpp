// host/image.cpp — an image in the host's memory, as effects see it.
#include "host/image.h"

#include <new>

#include "host/world_format.h"

namespace host {
namespace {
constexpr std::align_val_t kPixelAlignment{64};
}

void Image::Free::operator()(std::byte* p) const noexcept {
  ::operator delete[](p, kPixelAlignment);
}

Image::Image(std::int32_t width, std::int32_t height, Depth depth, std::int32_t rowPadding)
    : width_(width),
      height_(height),
      rowBytes_(static_cast<std::ptrdiff_t>(width) * pixelBytes(depth) + rowPadding),
      depth_(depth) {
  if (width < 0 || height < 0 || rowPadding < 0) throw std::bad_alloc();
  const auto bytes = static_cast<std::size_t>(rowBytes_) * static_cast<std::size_t>(height);
  data_.reset(static_cast<std::byte*>(::operator new[](bytes == 0 ? 1 : bytes, kPixelAlignment)));
}

PF_EffectWorld Image::world(bool writable) noexcept {
  return describeWorld(data_.get(), rowBytes_, width_, height_, depth_, writable);
}

}  // namespace host
