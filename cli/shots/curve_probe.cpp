// cli/shots/curve_probe.cpp — what the effect makes of each level of grey at each picture of a
// shot.
#include "cli/shots/curve_probe.h"

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace cli {
namespace {

constexpr int kSide = 16;

double whiteOf(host::Depth depth) {
  switch (depth) {
    case host::Depth::bits8:
      return 255.0;
    case host::Depth::bits16:
      return 32768.0;
    case host::Depth::float32:
      break;
  }
  return 1.0;
}

// Pixel i of a row-by-row count has grey level i of 255, whatever the depth.
class GreyLayer final : public host::FrameSource {
 public:
  explicit GreyLayer(const host::LayerInfo& like) : info_(like) {
    info_.width = kSide;
    info_.height = kSide;
  }

  const host::LayerInfo& info() const override { return info_; }

  void read(std::int32_t, host::Image& image) override {
    switch (image.depth()) {
      case host::Depth::bits8:
        return fill<std::uint8_t>(image);
      case host::Depth::bits16:
        return fill<std::uint16_t>(image);
      case host::Depth::float32:
        return fill<float>(image);
    }
  }

 private:
  template <typename Component>
  static void fill(host::Image& image) {
    const double white = whiteOf(image.depth());
    for (int y = 0; y < kSide; ++y) {
      auto* component = reinterpret_cast<Component*>(image.row(y));
      for (int x = 0; x < kSide; ++x) {
        double grey = (y * kSide + x) * white / 255.0;
        if constexpr (std::is_integral_v<Component>) grey = std::round(grey);
        *component++ = static_cast<Component>(white);
        for (int c = 0; c < 3; ++c) *component++ = static_cast<Component>(grey);
      }
    }
  }

  host::LayerInfo info_;
};

template <typename Component>
void readGreen(const host::Image& image, Curve& curve) {
  const double white = whiteOf(image.depth());
  for (int y = 0; y < kSide; ++y) {
    const auto* row = reinterpret_cast<const Component*>(image.row(y));
    for (int x = 0; x < kSide; ++x) {
      curve[static_cast<std::size_t>(y * kSide + x)] =
          static_cast<double>(row[4 * x + 2]) * 255.0 / white;
    }
  }
}

void readCurve(const host::Image& image, Curve& curve) {
  switch (image.depth()) {
    case host::Depth::bits8:
      return readGreen<std::uint8_t>(image, curve);
    case host::Depth::bits16:
      return readGreen<std::uint16_t>(image, curve);
    case host::Depth::float32:
      return readGreen<float>(image, curve);
  }
}

}  // namespace

CurveProbe::CurveProbe(host::Effect& effect, Shot& shot, host::Depth depth, host::RenderPath path)
    : depth_(depth),
      layer_(std::make_unique<GreyLayer>(shot.layer().info())),
      instance_(host::Instance::open(effect, *layer_, shot.instance().save())),
      copy_(instance_.renderCopy(path)) {}

CurveProbe::~CurveProbe() = default;

const Curve& CurveProbe::at(std::int32_t picture) {
  copy_.render(picture, depth_, image_);
  readCurve(image_, curve_);
  return curve_;
}

}  // namespace cli
