// host/layer_frame.cpp — frames of the layer on loan to the effect.
#include "host/layer_frame.h"

#include <cstring>

#include "host/host_state.h"

namespace host {
namespace {
constexpr std::size_t kSpareImages = 4;
}

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
                                            const Margins& margins) {
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
  const std::int32_t padding = host.options.stress.rowPadding;
  if (padding > 0 || !margins.none()) {
    loan->window.emplace(info.width, info.height, depth, padding, margins);
    loan->window->load(loan->image);
    loan->world = loan->window->world(false);
  } else {
    loan->world = loan->image.world(false);
  }
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
