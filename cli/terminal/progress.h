// cli/terminal/progress.h — how far the work is: a bar on a terminal, or one JSON object a line.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace cli {

enum class ProgressStyle { none, bar, json };

/// One phase after another. The bar goes to standard error, a few times a second; JSON goes to
/// standard output, one object a frame. One thread.
class Progress {
 public:
  explicit Progress(ProgressStyle style) : style_(style) {}
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  ProgressStyle style() const noexcept { return style_; }

  /// `phase` as people read it: "Analyzing", "Rendering". Ends the phase before it.
  void begin(std::string phase, std::int64_t total);
  void update(std::int64_t done);
  void end();
  /// Takes the bar off its line so that a message can be printed; update() brings it back.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;
  void draw(std::int64_t done, bool last);
  void print(std::int64_t done) const;

  ProgressStyle style_;
  std::string phase_;
  std::int64_t total_ = 0;
  std::int64_t done_ = 0;
  bool open_ = false;
  bool drawn_ = false;
  Clock::time_point start_;
  Clock::time_point lastDraw_;
};

/// 75 seconds as "1:15", an hour and more as "1:02:03".
std::string clockText(double seconds);

}  // namespace cli
