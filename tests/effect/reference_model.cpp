// tests/effect/reference_model.cpp — the effect's arithmetic in its plainest form, to compare with.
#include "tests/effect/reference_model.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace effect_test {

int channelLevel(double value, host::Depth depth) {
  switch (depth) {
    case host::Depth::bits8:
      return static_cast<int>(value);
    case host::Depth::bits16:
      return (static_cast<int>(value) / 128) % 256;
    case host::Depth::float32:
      break;
  }
  const double scaled = std::trunc(value * 255.0);
  return static_cast<int>(static_cast<std::int64_t>(scaled) & 255);
}

namespace {

int luminanceOf(const Pixel& p, host::Depth depth) {
  const double sum = channelLevel(p.red, depth) * 0.3 + channelLevel(p.green, depth) * 0.59 +
                     channelLevel(p.blue, depth) * 0.11 + 0.5;
  return std::clamp(static_cast<int>(sum), 0, 255);
}

}  // namespace

Levels measure(const host::Image& frame, Area area, std::int32_t step, bool favorBrighter) {
  std::vector<int> levels;
  for (std::int32_t y = area.top; y < area.bottom; y += step) {
    for (std::int32_t x = area.left; x < area.right; x += step) {
      levels.push_back(luminanceOf(getPixel(frame, x, y), frame.depth()));
    }
  }
  if (levels.empty()) return {};
  double sum = 0.0;
  double squares = 0.0;
  for (const int l : levels) {
    sum += l;
    squares += double(l) * l;
  }
  const auto count = static_cast<double>(levels.size());
  Levels result;
  result.luminance = favorBrighter && sum > 0.0
                         ? squares / sum
                         : static_cast<double>(static_cast<float>(sum / count));
  // Level by level, as the deviation sum is defined over the histogram.
  for (int k = 1; k <= 254; ++k) {
    const auto n = std::count(levels.begin(), levels.end(), k);
    result.spread += static_cast<double>(n) * std::fabs(k - result.luminance);
  }
  result.spread /= count;
  return result;
}

std::int32_t samplingStep(std::int32_t speed, Area area) {
  const std::int32_t side = std::min(area.right - area.left, area.bottom - area.top);
  std::int32_t step = std::max(speed, 1);
  while (step > 1 && side / step < 60) --step;
  return step;
}

std::vector<Levels> smooth(const std::vector<Levels>& input, std::int32_t n) {
  std::vector<Levels> result;
  const auto count = static_cast<std::int32_t>(input.size());
  for (std::int32_t i = 0; i < count; ++i) {
    double sum = 0.0, spreadSum = 0.0;
    int used = 0, spreadUsed = 0;
    for (std::int32_t j = i - n; j <= i + n; ++j) {
      if (j < 0 || j >= count) continue;
      const Levels& l = input[static_cast<std::size_t>(j)];
      if (l.luminance > 0.0) sum += l.luminance, ++used;
      if (l.spread > 0.0) spreadSum += l.spread, ++spreadUsed;
    }
    const Levels& own = input[static_cast<std::size_t>(i)];
    Levels out;
    out.luminance = used > 0 ? sum / used : own.luminance;
    out.spread = static_cast<float>(spreadUsed > 0 ? spreadSum / spreadUsed : own.spread);
    result.push_back(out);
  }
  return result;
}

namespace {

double straightLevel(const Correction& c, int level) {
  switch (c.method) {
    case 2: {
      const auto want = static_cast<float>(c.desired.spread);
      const auto have = static_cast<float>(c.input.spread);
      const double k = have > 0.0f ? double(want) / double(have) : 1.0;
      return (level - c.input.luminance) * k + c.desired.luminance;
    }
    case 3: {
      const double a = std::log(c.input.luminance / 255.0);
      const double b = std::log(c.desired.luminance / 255.0);
      return std::pow(level / 255.0, b / a) * 255.0;
    }
    default:
      return level * (c.desired.luminance / c.input.luminance);
  }
}

}  // namespace

double idealLevel(const Correction& c, int level) {
  const int knee = static_cast<int>(c.clippingPercent * 255.0 / 100.0);
  if (c.method == 3 || !c.clipping || level <= knee) return straightLevel(c, level);
  const double atKnee = straightLevel(c, knee);
  return (level - knee) * (255.5 - atKnee) / (255 - knee) + atKnee;
}

bool matchesLevel(double ideal, int actual) {
  const double bounded = std::clamp(ideal, 0.0, 255.0);
  // Half a level of rounding, and a hair for logarithms taken in single precision.
  return std::fabs(bounded - actual) <= 0.501;
}

namespace {

// The approximation of a power that the deeper kernels are defined by.
double quickPower(double a, double p) {
  const auto high = static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(a) >> 32);
  const auto difference = static_cast<std::int32_t>(static_cast<std::uint32_t>(high) - 1072632447u);
  const double t = std::trunc(difference * p + 1072632447.0);
  const std::int32_t top =
      t >= -2147483648.0 && t <= 2147483647.0 ? static_cast<std::int32_t>(t) : INT32_MIN;
  return std::bit_cast<double>(static_cast<std::uint64_t>(static_cast<std::uint32_t>(top)) << 32);
}

float gammaOf(const Correction& c) {
  const float in = static_cast<float>(c.input.luminance) / 255.0f;
  const float want = static_cast<float>(c.desired.luminance) / 255.0f;
  return static_cast<float>(std::log(double(in)) / std::log(double(want)));
}

float spreadRatio(const Correction& c) {
  const auto want = static_cast<float>(c.desired.spread);
  const auto have = static_cast<float>(c.input.spread);
  return have > 0.0f ? want / have : 1.0f;
}

double bounded(double v) {
  return v > 0.0 ? std::min(v, 32767.0) : 0.0;
}

}  // namespace

double corrected16(const Correction& c, double value) {
  const auto v = static_cast<float>(value);
  float out = 0.0f;
  if (c.method == 3) {
    out = static_cast<float>(quickPower(value / 32767.0, 1.0 / double(gammaOf(c))) * 32767.0);
  } else if (c.method == 2) {
    const auto from = static_cast<float>(c.input.luminance / 255.0 * 32767.0);
    const auto to = static_cast<float>(c.desired.luminance / 255.0 * 32767.0);
    out = (v - from) * spreadRatio(c) + to;
  } else {
    out = v * static_cast<float>(c.desired.luminance / c.input.luminance);
  }
  return std::trunc(bounded(out));
}

double correctedFloat(const Correction& c, double value) {
  const auto v = static_cast<float>(value);
  float out = 0.0f;
  if (c.method == 3) {
    out = static_cast<float>(quickPower(value, 1.0 / double(gammaOf(c))));
  } else if (c.method == 2) {
    const auto from = static_cast<float>(c.input.luminance / 255.0);
    const auto to = static_cast<float>(c.desired.luminance / 255.0);
    out = (v - from) * spreadRatio(c) + to;
  } else {
    out = v * static_cast<float>(c.desired.luminance / c.input.luminance);
  }
  return bounded(out);
}

}  // namespace effect_test
