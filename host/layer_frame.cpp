// host/layer_frame.cpp — frames of the layer on loan to the effect.
#include "host/layer_frame.h"

#include <cstring>

#include "host/host_state.h"

namespace host {
namespace {

constexpr std::size_t kSpareImages = 4;

// Every by-th pixel of a part.
Image cut(const Image& whole, const PF_LRect& part, const Downsample& by) {
  Image image(part.right - part.left, part.bottom - part.top, whole.depth());
  const auto pixel = static_cast<std::size_t>(pixelBytes(whole.depth()));
  for (std::int32_t y = 0; y < image.height(); ++y) {
    const std::byte* const from = whole.row((part.top + y) * by.y);
    for (std::int32_t x = 0; x < image.width(); ++x) {
      std::memcpy(image.row(y) + static_cast<std::size_t>(x) * pixel,
                  from + static_cast<std::size_t>((part.left + x) * by.x) * pixel, pixel);
    }
  }
  return image;
}

}  // namespace

Image FramePool::takeImage(const HostState& host, const LayerInfo& info, Depth depth) {
  {
    const std::lock_guard guard(mutex_);
    for (Image& image : spare_) {
      if (image.width() != info.width || image.height() != info.height || image.depth() != depth) {
        continue;
      }
      Image taken = std::move(image);
      image = std::move(spare_.back());
      spare_.pop_back();
      return taken;
    }
  }
  Image image(info.width, info.height, depth);
  if (host.options.stress.poisonMemory) {
    for (std::int32_t y = 0; y < image.height(); ++y) {
      std::memset(image.row(y), 0xCD, static_cast<std::size_t>(image.rowBytes()));
    }
  }
  return image;
}

std::unique_ptr<LayerFrame> FramePool::read(HostState& host, FrameSource& source,
                                            std::int32_t frame, Depth depth,
                                            const FrameView& view) {
  const LayerInfo& info = source.info();
  auto loan = std::make_unique<LayerFrame>();
  loan->image = takeImage(host, info, depth);
  if (frame >= 0 && frame < info.frameCount) {
    source.read(frame, loan->image);
  } else {
    for (std::int32_t y = 0; y < info.height; ++y) {
      std::memset(loan->image.row(y), 0, static_cast<std::size_t>(loan->image.rowBytes()));
    }
  }
  const PF_LRect bounds = reducedBounds(info, view.downsample);
  const bool whole = view.part.right <= view.part.left || view.part.bottom <= view.part.top;
  const PF_LRect part = whole ? bounds : view.part;
  if (part.right - part.left != info.width || part.bottom - part.top != info.height) {
    loan->image = cut(loan->image, part, view.downsample);
  }
  const Stress& stress = host.options.stress;
  if (stress.rowPadding > 0 || stress.bottomUp || !view.margins.none()) {
    loan->window.emplace(loan->image.width(), loan->image.height(), depth, stress.rowPadding,
                         view.margins, stress.bottomUp);
    loan->window->load(loan->image);
    loan->world = loan->window->world(false);
  } else {
    loan->world = loan->image.world(false);
  }
  loan->world.origin_x += part.left;
  loan->world.origin_y += part.top;
  loan->world.pix_aspect_ratio = {info.pixelAspectNum, info.pixelAspectDen};
  return loan;
}

void FramePool::giveBack(HostState& host, std::unique_ptr<LayerFrame> frame) {
  if (frame->window && (!frame->window->intact() || !frame->window->sameAs(frame->image))) {
    host.report("the effect wrote into a layer that it had checked out");
  }
  const std::lock_guard guard(mutex_);
  if (spare_.size() < kSpareImages) spare_.push_back(std::move(frame->image));
}

}  // namespace host
