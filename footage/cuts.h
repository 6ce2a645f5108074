// footage/cuts.h — hard cuts between shots.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// Finds the frames that begin a new shot while a clip's frames come in, in order. However long the
/// clip, it holds the pictures around the frame that is being judged.
///
/// Pictures are compared with their exposure taken out, and across the frame in question: what was
/// before against what comes after. So exposure jumps, flashes of a few frames, black frames,
/// dissolves, fades, pans and repeated frames are no cuts, in colour or black and white.
class CutFinder {
 public:
  CutFinder();
  ~CutFinder();
  CutFinder(const CutFinder&) = delete;
  CutFinder& operator=(const CutFinder&) = delete;

  void add(const FrameMeasure& frame);
  /// After the last frame.
  void finish();

  /// Cuts found so far, rising; never frame 0.
  const std::vector<std::int64_t>& cuts() const noexcept;
  /// Whether a frame before this one begins a shot is decided; all are after finish(). At most
  /// kMostUndecided frames less than were added.
  std::int64_t decided() const noexcept;
  static constexpr std::int64_t kMostUndecided = 30;

 private:
  class Window;
  std::unique_ptr<Window> window_;
};

/// The cuts of a whole clip; empty for a clip of one shot.
std::vector<std::int64_t> findCuts(std::span<const FrameMeasure> frames);

/// Consecutive frames.
struct Shot {
  std::int64_t first = 0;
  std::int64_t count = 0;

  friend bool operator==(const Shot&, const Shot&) = default;
};

/// The shots between cuts, in order, covering frames 0..frameCount - 1. `cuts` rise, and may name 0
/// or frames beyond the end, which change nothing.
std::vector<Shot> shotsBetween(std::span<const std::int64_t> cuts, std::int64_t frameCount);

}  // namespace footage
