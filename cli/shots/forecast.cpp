// cli/shots/forecast.cpp — how a shot would come out, known before any of it is rendered.
#include "cli/shots/forecast.h"

#include <cstddef>
#include <cstdint>

#include "cli/shots/curve_probe.h"

namespace cli {
namespace {

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
  CurveProbe probe(effect, shot, depth, path);
  Curve unchanged{};
  for (std::size_t i = 0; i < unchanged.size(); ++i) unchanged[i] = static_cast<double>(i);
  const std::vector<double> measured = shot.levels().input;
  for (std::size_t picture = 0; picture < shot.light.size(); ++picture) {
    const footage::LuminanceQuantiles& light = shot.light[picture];
    levels.input.push_back(levelOf(light, unchanged, favorBrighter));
    if (measured[picture] > 0.0) {
      const Curve& curve = probe.at(static_cast<std::int32_t>(picture));
      levels.output.push_back(levelOf(light, curve, favorBrighter));
    } else {
      levels.output.push_back(levels.input.back());
    }
  }
  return levels;
}

}  // namespace cli
