// cli/demo/demo_scene.cpp — the demo's steady picture: a landscape on the move under a slow sun.
#include "cli/demo/demo_scene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace cli {
namespace {

constexpr std::uint64_t kSceneSeed = 0x5EED;
constexpr float kHorizon = 0.58F;  // share of the height
constexpr float kAspect = 16.0F / 9.0F;
constexpr std::size_t kGrainCells = 1U << 20U;
constexpr double kGrainDeviation = 1.4;
constexpr float kDrift = 0.10F;

// Colours of code values.
constexpr SceneColour kZenith{58, 98, 158};
constexpr SceneColour kHaze{172, 156, 140};
constexpr SceneColour kCloud{188, 186, 186};
constexpr SceneColour kSun{206, 194, 150};
constexpr SceneColour kGrass{86, 104, 52};
constexpr SceneColour kEarth{132, 104, 74};

struct Hills {
  float height, relief;  // of the ridge above the horizon, in picture heights
  float pan, wave;       // travel over the clip; tiles a picture height
  float section;         // of the noise tile
  SceneColour colour;
};
constexpr std::array<Hills, 2> kHills{{{0.11F, 0.34F, 0.12F, 0.16F, 0.17F, {96, 104, 122}},
                                       {0.05F, 0.22F, 0.30F, 0.22F, 0.33F, {58, 78, 68}}}};

struct Balloon {
  float x, y, radius, speed;  // in picture heights; speed a clip
  SceneColour colour;
};
constexpr std::array<Balloon, 3> kBalloons{{{0.25F, 0.30F, 0.085F, 0.55F, {178, 64, 52}},
                                            {1.40F, 0.20F, 0.055F, -0.35F, {196, 158, 60}},
                                            {0.85F, 0.42F, 0.035F, 0.25F, {64, 110, 170}}}};

SceneColour between(const SceneColour& a, const SceneColour& b, float t) {
  return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t};
}

/// 0 below `low`, 1 above `high`, smooth between.
float step(float low, float high, float value) {
  const float t = std::clamp((value - low) / (high - low), 0.0F, 1.0F);
  return t * t * (3.0F - 2.0F * t);
}

/// A striped ball lit from the upper left; edge softened over `soft`.
void paintBalloon(const Balloon& balloon, float x, float y, float soft, SceneColour& colour) {
  const float dx = (x - balloon.x) / balloon.radius;
  const float dy = (y - balloon.y) / (balloon.radius * 1.15F);
  const float distance = std::sqrt(dx * dx + dy * dy);
  if (distance > 1.0F + soft / balloon.radius) return;
  const float light = 0.80F - 0.30F * (dx + dy) * 0.7F;
  const float bulge = std::sqrt(std::max(0.0F, 1.0F - std::min(1.0F, dy * dy)));
  const float stripe = bulge > 0.05F ? std::sin(dx / bulge * 9.0F) : 0.0F;
  const float shade = light * (0.92F + 0.10F * stripe);
  const SceneColour lit{balloon.colour[0] * shade, balloon.colour[1] * shade,
                        balloon.colour[2] * shade};
  const float edge = soft / balloon.radius;
  colour = between(colour, lit, 1.0F - step(1.0F - edge, 1.0F + edge, distance));
}

}  // namespace

struct DemoScene::Moment {
  int frame;
  float time;  // 0..1 over the clip
  float sunX, sunY;
  float daylight;
  std::array<Balloon, kBalloons.size()> balloons;
};

DemoScene::DemoScene(int width, int height, int frames)
    : width_(width),
      height_(height),
      frames_(frames),
      clouds_(kSceneSeed + 100, 4, 5, 0.5),
      soil_(kSceneSeed + 200, 16, 5, 0.85),
      grain_(kGrainCells) {
  for (std::size_t i = 0; i < kGrainCells; ++i) {
    grain_[i] = static_cast<float>(kGrainDeviation * demoNormal(kSceneSeed + 300, i));
  }
}

DemoScene::Moment DemoScene::momentOf(int frame) const {
  Moment moment{};
  moment.frame = frame;
  moment.time = static_cast<float>(frame) / static_cast<float>(std::max(1, frames_ - 1));
  moment.sunX = 0.45F + 0.9F * moment.time;
  moment.sunY = 0.26F - 0.12F * std::sin(std::numbers::pi_v<float> * moment.time);
  moment.daylight = 1.0F + kDrift * std::sin(2.0F * std::numbers::pi_v<float> * moment.time);
  moment.balloons = kBalloons;
  for (Balloon& balloon : moment.balloons) {
    balloon.x += balloon.speed * moment.time;
    balloon.y += 0.02F * std::sin(12.0F * moment.time + balloon.speed * 20.0F);
  }
  return moment;
}

SceneColour DemoScene::sky(const Moment& moment, float x, float y) const {
  const float height = y / kHorizon;
  SceneColour colour = between(kZenith, kHaze, height * height);
  const float dx = x - moment.sunX;
  const float dy = y - moment.sunY;
  const float fromSun = std::sqrt(dx * dx + dy * dy);
  colour = between(colour, kSun, 0.55F * std::exp(-fromSun * 5.0F));
  const float depth = 0.35F / (1.15F - height);
  const float cover = clouds_.at((x - 0.9F) * depth * 0.5F + 0.4F * moment.time, depth);
  colour = between(colour, kCloud, 0.75F * step(0.48F, 0.68F, cover));
  return between(kSun, colour, step(0.040F, 0.046F, fromSun));
}

SceneColour DemoScene::ground(const Moment& moment, float x, float y) const {
  const float depth = 0.06F / (y - kHorizon + 0.015F);
  const float u = (x - 0.5F * kAspect) * depth;
  const float v = depth + 2.0F * moment.time;
  const float clear = std::exp(-depth * 0.9F);  // far texture melts into one tone
  const float texture = 0.5F + (soil_.at(u, v) - 0.5F) * clear;
  const float patches = 0.5F + (clouds_.at(u * 0.23F, v * 0.23F) - 0.5F) * clear;
  SceneColour colour = between(kGrass, kEarth, step(0.42F, 0.58F, patches));
  const float shade = 0.45F + 1.10F * texture;
  for (float& channel : colour) channel *= shade;
  return between(colour, kHaze, 0.55F * (1.0F - clear));
}

float DemoScene::ridge(const Moment& moment, float x, std::size_t layer) const {
  const Hills& hills = kHills[layer];
  const float u = (x + hills.pan * moment.time) * hills.wave;
  return kHorizon - hills.height - (clouds_.at(u, hills.section) - 0.5F) * hills.relief;
}

void DemoScene::draw(int frame, int first, int last, std::span<SceneColour> rows) const {
  const Moment moment = momentOf(frame);
  const float unit = 1.0F / static_cast<float>(height_);
  const auto width = static_cast<std::size_t>(width_);
  const auto across = [&](std::size_t column) {
    return (static_cast<float>(column) + 0.5F) * unit;
  };

  std::vector<std::array<float, kHills.size()>> ridges(width);
  for (std::size_t column = 0; column < width; ++column) {
    for (std::size_t layer = 0; layer < kHills.size(); ++layer) {
      ridges[column][layer] = ridge(moment, across(column), layer);
    }
  }
  for (int y = first; y < last; ++y) {
    const float down = (static_cast<float>(y) + 0.5F) * unit;
    const std::uint64_t grainStart = demoHash(kSceneSeed + 400, static_cast<std::uint64_t>(frame),
                                              static_cast<std::uint64_t>(y));
    const auto row = rows.subspan(static_cast<std::size_t>(y - first) * width, width);
    for (std::size_t column = 0; column < width; ++column) {
      const float x = across(column);
      const bool above = down < kHorizon;
      SceneColour colour = above ? sky(moment, x, down) : ground(moment, x, down);
      for (std::size_t layer = 0; above && layer < kHills.size(); ++layer) {
        const float top = ridges[column][layer];
        colour = between(colour, kHills[layer].colour, step(top - unit, top + unit, down));
      }
      for (const Balloon& balloon : moment.balloons) {
        paintBalloon(balloon, x, down, 2.0F * unit, colour);
      }
      const float grain = grain_[(grainStart + column) % kGrainCells];
      for (float& channel : colour) channel = channel * moment.daylight + grain;
      row[column] = colour;
    }
  }
}

}  // namespace cli
