// footage/matte.cpp — letterbox and pillar box.
#include "footage/matte.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "footage/line_fit.h"

namespace footage {
namespace {

constexpr double kThinnest = 0.004;    // of the frame; thinner bars change no measurement
constexpr double kFewFrames = 0.05;    // that dust or a flash in the bar may spoil
constexpr double kAgreeing = 0.3;      // of the frames, that have to end the bar at one place
constexpr double kAlikeLines = 0.006;  // of the frame: one place
// Percent of the bar's length where the picture has to be brighter: by itself, or when the bar on
// the other side is as wide. The edge of a dark thing in the picture is seldom so straight.
constexpr double kStraightEdge = 90;
constexpr double kStraightEdgeOfTwo = 25;

struct Edge {
  int extent = 0;
  double straight = 0;
};

bool ofSize(const FrameMeasure& frame, const FrameMeasure& other) {
  return frame.width == other.width && frame.height == other.height;
}

/// The bar that most frames agree on. Dark pictures make bars wider, never narrower.
Edge agreedEdge(std::span<const FrameMeasure> shot, Bar FrameMeasure::*side, int lines) {
  std::vector<int> extents;
  for (const FrameMeasure& frame : shot) {
    if (ofSize(frame, shot.front()) && (frame.*side).extent < lines) {
      extents.push_back((frame.*side).extent);
    }
  }
  if (extents.empty()) return {};
  std::sort(extents.begin(), extents.end());
  const int narrow =
      extents[static_cast<std::size_t>(kFewFrames * static_cast<double>(extents.size()))];
  const int wide = narrow + std::max(1, static_cast<int>(std::lround(kAlikeLines * lines)));
  if (narrow < std::max(2.0, kThinnest * lines)) return {};
  Edge edge{narrow, 0};
  std::vector<double> straight;
  for (const FrameMeasure& frame : shot) {
    const Bar& bar = frame.*side;
    if (!ofSize(frame, shot.front()) || bar.extent < narrow || bar.extent > wide) continue;
    edge.extent = std::max<int>(edge.extent, bar.extent);
    straight.push_back(bar.edge);
  }
  if (static_cast<double>(straight.size()) < kAgreeing * static_cast<double>(extents.size())) {
    return {};
  }
  edge.straight = median(std::move(straight));
  return edge;
}

/// The bars of two opposite sides, both 0 when there is none.
void judgePair(Edge& one, Edge& other, int lines) {
  const bool even = one.extent > 0 && other.extent > 0 &&
                    std::abs(one.extent - other.extent) <= std::max(2.0, 0.01 * lines);
  const double least = even ? kStraightEdgeOfTwo : kStraightEdge;
  if (one.straight < least) one.extent = 0;
  if (other.straight < least) other.extent = 0;
}

}  // namespace

std::optional<Rectangle> findMatte(std::span<const FrameMeasure> shot) {
  if (shot.empty()) return std::nullopt;
  const int width = shot.front().width;
  const int height = shot.front().height;
  Edge top = agreedEdge(shot, &FrameMeasure::top, height);
  Edge bottom = agreedEdge(shot, &FrameMeasure::bottom, height);
  Edge left = agreedEdge(shot, &FrameMeasure::left, width);
  Edge right = agreedEdge(shot, &FrameMeasure::right, width);
  judgePair(top, bottom, height);
  judgePair(left, right, width);
  const Rectangle live{left.extent, top.extent, width - right.extent, height - bottom.extent};
  if (live == Rectangle{0, 0, width, height}) return std::nullopt;
  return live;
}

}  // namespace footage
