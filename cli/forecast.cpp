// cli/forecast.cpp — how a shot would come out, known before any of it is rendered.
#include "cli/forecast.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "host/frame_source.h"

namespace cli {
namespace {

constexpr int kSide = 16;
constexpr int kLevels = kSide * kSide;

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

using Curve = std::array<double, kLevels>;

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

// What the curve makes of a level in 1/256.
double valueAt(const Curve& curve, std::uint16_t level) {
  const std::size_t below = level / 256U;
  const double share = level % 256U / 256.0;
  return share > 0.0 ? curve[below] + share * (curve[below + 1] - curve[below]) : curve[below];
}

double levelOf(const footage::LuminanceQuantiles& light, const Curve& curve, bool favorBrighter) {
  double sum = 0.0;
  double weight = 0.0;
  for (const std::uint16_t level : light) {
    const double value = valueAt(curve, level);
    const double pixels = favorBrighter ? value : 1.0;
    sum += pixels * value;
    weight += pixels;
  }
  return weight > 0.0 ? sum / weight : 0.0;
}

}  // namespace

Forecast forecast(host::Effect& effect, Shot& shot, host::Depth depth, host::RenderPath path,
                  bool favorBrighter) {
  Forecast levels;
  if (shot.light.empty()) return levels;
  GreyLayer layer(shot.layer().info());
  host::Instance probe = host::Instance::open(effect, layer, shot.instance().save());
  host::RenderCopy copy = probe.renderCopy(path);
  Curve unchanged{};
  for (std::size_t i = 0; i < unchanged.size(); ++i) unchanged[i] = static_cast<double>(i);
  const std::vector<double> measured = shot.levels().input;
  host::Image image;
  Curve curve{};
  for (std::size_t picture = 0; picture < shot.light.size(); ++picture) {
    const footage::LuminanceQuantiles& light = shot.light[picture];
    levels.input.push_back(levelOf(light, unchanged, favorBrighter));
    if (measured[picture] > 0.0) {
      copy.render(static_cast<std::int32_t>(picture), depth, image);
      readCurve(image, curve);
      levels.output.push_back(levelOf(light, curve, favorBrighter));
    } else {
      levels.output.push_back(levels.input.back());
    }
  }
  return levels;
}

}  // namespace cli
