// host/render_target.cpp — the world that an effect renders into.
#include "host/render_target.h"

#include <algorithm>
#include <cstring>

#include "host/host_state.h"

namespace host {
namespace {

// Row padding of outputs differs from that of inputs, and keeps the pixels aligned.
std::int32_t outputPadding(const Stress& stress) noexcept {
  return stress.rowPadding > 0 ? 2 * stress.rowPadding + 16 : 0;
}

bool isWhole(const PF_LRect& rect, const Image& image) noexcept {
  return rect.left == 0 && rect.top == 0 && rect.right == image.width() &&
         rect.bottom == image.height();
}

bool covers(const PF_LRect& rect, const PF_LRect& other) noexcept {
  return rect.left <= other.left && rect.top <= other.top && rect.right >= other.right &&
         rect.bottom >= other.bottom;
}

}  // namespace

Margins stressMargins(const Stress& stress) noexcept {
  const std::int32_t x = std::max(stress.originX, 0);
  const std::int32_t y = std::max(stress.originY, 0);
  return {x, y, x > 0 ? x + 1 : 0, y > 0 ? y + 1 : 0};
}

void clear(Image& image) noexcept {
  clear(image, {0, 0, image.width(), image.height()});
}

void clear(Image& image, const PF_LRect& part) noexcept {
  const auto pixel = static_cast<std::size_t>(pixelBytes(image.depth()));
  for (std::int32_t y = part.top; y < part.bottom; ++y) {
    std::memset(image.row(y) + static_cast<std::size_t>(part.left) * pixel, 0,
                static_cast<std::size_t>(part.right - part.left) * pixel);
  }
}

RenderTarget::RenderTarget(HostState& host, Image& output, const PF_LRect& result, Depth depth,
                           const Margins& margins, const PF_LRect& region)
    : output_(output), result_(result), region_(region) {
  const std::int32_t padding = outputPadding(host.options.stress);
  const bool bottomUp = host.options.stress.bottomUp;
  if (padding == 0 && !bottomUp && margins.none() && isWhole(result, output)) {
    if (host.options.stress.poisonMemory) {
      for (std::int32_t y = 0; y < output.height(); ++y) {
        std::memset(output.row(y), 0xCD, static_cast<std::size_t>(output.rowBytes()));
      }
    }
    world_ = output.world(true);
    return;
  }
  window_.emplace(result.right - result.left, result.bottom - result.top, depth, padding, margins,
                  bottomUp);
  world_ = window_->world(true);
  world_.origin_x += result.left;
  world_.origin_y += result.top;
}

void RenderTarget::finish(HostState& host) {
  if (!window_) return;
  if (!window_->intact()) host.report("the effect wrote outside its output");
  if (!covers(result_, region_)) clear(output_, region_);
  const auto pixel = static_cast<std::size_t>(pixelBytes(output_.depth()));
  const std::int32_t left = std::max(result_.left, 0);
  const std::int32_t right = std::min(result_.right, output_.width());
  if (right <= left) return;
  const std::int32_t bottom = std::min(result_.bottom, output_.height());
  for (std::int32_t y = std::max(result_.top, 0); y < bottom; ++y) {
    std::memcpy(
        output_.row(y) + static_cast<std::size_t>(left) * pixel,
        window_->row(y - result_.top) + static_cast<std::size_t>(left - result_.left) * pixel,
        static_cast<std::size_t>(right - left) * pixel);
  }
}

}  // namespace host
