// tests/cli/panel_expectation.h — what the panel of a striped clip must look like, from its
// numbers.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/cli/striped_clip.h"

namespace cli::test {

/// The panel at (0, 0), fonts 12 high, method Keyframes, for a clip whose frames are all analysed.
class PanelExpectation {
 public:
  explicit PanelExpectation(const Frames& frames);

  void analyzed(double desired);
  void desire(double level);  // of all frames
  int frame = 0;
  bool zoom = false;
  bool green = false;

  nlohmann::json marks() const;

 private:
  void addHistogram(nlohmann::json& marks) const;
  void addMarkers(nlohmann::json& marks) const;
  void addLuminance(nlohmann::json& marks) const;
  bool outside() const { return frame < 0 || frame >= static_cast<int>(frames_.size()); }

  Frames frames_;
  std::vector<double> input_;
  std::vector<double> desired_;
};

/// Empty when both marks agree, numbers to single precision; else what differs.
std::string difference(const nlohmann::json& drawn, const nlohmann::json& expected);

}  // namespace cli::test
