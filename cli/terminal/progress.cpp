// cli/terminal/progress.cpp — how far the work is: a bar on a terminal, or one JSON object a line.
#include "cli/terminal/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/terminal/terminal.h"

namespace cli {
namespace {

constexpr auto kBetweenDraws = std::chrono::milliseconds(200);
constexpr int kWidestBar = 40;
constexpr int kNarrowestBar = 8;

}  // namespace

std::string clockText(double seconds) {
  const auto whole = static_cast<std::int64_t>(std::clamp(seconds, 0.0, 1e9) + 0.5);
  if (whole >= 3600) {
    return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
  }
  return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

Progress::~Progress() {
  clear();
}

void Progress::begin(std::string phase, std::int64_t total) {
  end();
  phase_ = std::move(phase);
  total_ = total;
  done_ = 0;
  open_ = true;
  start_ = Clock::now();
  lastDraw_ = start_ - kBetweenDraws;
  if (style_ == ProgressStyle::bar) draw(0, false);
}

void Progress::update(std::int64_t done) {
  if (!open_ || done == done_) return;
  done_ = done;
  if (style_ == ProgressStyle::bar) draw(done, false);
  if (style_ == ProgressStyle::json) print(done);
}

void Progress::end() {
  if (!open_) return;
  open_ = false;
  if (style_ == ProgressStyle::bar) {
    draw(done_, true);
    std::fputc('\n', stderr);
    drawn_ = false;
  }
}

void Progress::clear() {
  if (!drawn_) return;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
  drawn_ = false;
}

void Progress::draw(std::int64_t done, bool last) {
  const auto now = Clock::now();
  if (!last && now - lastDraw_ < kBetweenDraws) return;
  lastDraw_ = now;
  const double seconds = std::chrono::duration<double>(now - start_).count();
  const double rate = seconds > 0.0 ? static_cast<double>(done) / seconds : 0.0;
  const double share =
      total_ > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(total_), 0.0, 1.0)
                 : 1.0;
  std::string tail = fmt::format(" {:3.0f}%  {}/{} frames", share * 100.0, done, total_);
  if (done > 0) {
    tail += fmt::format("  {:.1f} fps", rate);
    tail += last ? fmt::format("  in {}", clockText(seconds))
                 : fmt::format("  {} left", clockText(static_cast<double>(total_ - done) / rate));
  }
  // Room for the longest text of the phase, so that the bar keeps its width.
  const std::size_t longest =
      fmt::format(" 100%  {}/{} frames  1000.0 fps  00:00 left", total_, total_).size();
  const int room = terminalColumns() - 1 - static_cast<int>(phase_.size() + longest) - 3;
  std::string line = phase_;
  if (room >= kNarrowestBar) {
    const int width = std::min(room, kWidestBar);
    const auto full = static_cast<std::size_t>(share * width);
    line += " [" + std::string(full, '#') +
            std::string(static_cast<std::size_t>(width) - full, '.') + "]";
  }
  std::fprintf(stderr, "\r%s%s\x1b[K", line.c_str(), tail.c_str());
  std::fflush(stderr);
  drawn_ = true;
}

void Progress::print(std::int64_t done) const {
  const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  const double rate = seconds > 0.0 ? static_cast<double>(done) / seconds : 0.0;
  const nlohmann::ordered_json line{
      {"event", "progress"},
      {"phase", phase_},
      {"done", done},
      {"total", total_},
      {"fps", rate},
      {"remainingSeconds", rate > 0.0 ? static_cast<double>(total_ - done) / rate : 0.0}};
  std::puts(line.dump().c_str());
  std::fflush(stdout);
}

}  // namespace cli
