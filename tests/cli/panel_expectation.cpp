// tests/cli/panel_expectation.cpp — what the panel of a striped clip must look like.
#include "tests/cli/panel_expectation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace cli::test {
namespace {

using nlohmann::json;

const json kBackground{0x24 / 255.0, 0x24 / 255.0, 0x24 / 255.0, 1};
const json kFrame{0, 0, 0.4, 1};
const json kPlot{128 / 255.0, 128 / 255.0, 128 / 255.0, 1};
const json kLabel{0.6667, 0.6667, 0.6667, 1};
const json kBlack{0, 0, 0, 1};
const json kWhite{1, 1, 1, 1};
const json kYellow{0.8667, 0.8667, 0, 1};
const json kHandle{0, 0.8667, 0, 1};
const json kGreen{0, 0.7333, 0, 1};
const json kRed{0.7333, 0, 0, 1};

json rect(const json& colour, double x, double y, double w, double h) {
  return {{"kind", "rect"}, {"colour", colour}, {"rect", {x, y, w, h}}};
}

json text(const json& colour, double x, double y, const std::string& words) {
  return {{"kind", "text"}, {"colour", colour}, {"text", words},
          {"size", 12},     {"align", "left"},  {"at", {x, y}}};
}

json stroke(const json& colour, const json& points) {
  return {{"kind", "stroke"},
          {"colour", colour},
          {"width", 1},
          {"path", json::array({{{"points", points}, {"closed", false}}})}};
}

json fill(const json& colour, const json& points) {
  return {{"kind", "fill"},
          {"colour", colour},
          {"rule", "even-odd"},
          {"path", json::array({{{"points", points}, {"closed", false}}})}};
}

std::string print(const char* format, double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

double meanOf(const Stripes& stripes) {
  double sum = 0.0;
  for (const double stripe : stripes) sum += stripe;
  return static_cast<double>(static_cast<float>(sum / kStripes));
}

std::string differenceAt(const json& drawn, const json& expected, const std::string& where) {
  if (drawn.is_number() && expected.is_number()) {
    const double a = drawn.get<double>();
    const double b = expected.get<double>();
    return std::abs(a - b) <= 1e-6 * std::max(1.0, std::abs(b))
               ? ""
               : where + ": " + drawn.dump() + " instead of " + expected.dump() + "\n";
  }
  if (drawn.type() != expected.type() || drawn.size() != expected.size()) {
    return where + ": " + drawn.dump() + " instead of " + expected.dump() + "\n";
  }
  std::string all;
  if (drawn.is_array()) {
    for (std::size_t i = 0; i < drawn.size(); ++i) {
      all += differenceAt(drawn[i], expected[i], where + "/" + std::to_string(i));
    }
  } else if (drawn.is_object()) {
    for (const auto& [key, value] : expected.items()) {
      all += drawn.contains(key) ? differenceAt(drawn[key], value, where + "/" + key)
                                 : where + "/" + key + " is missing\n";
    }
  } else if (drawn != expected) {
    all = where + ": " + drawn.dump() + " instead of " + expected.dump() + "\n";
  }
  return all;
}

}  // namespace

std::string difference(const json& drawn, const json& expected) {
  return differenceAt(drawn, expected, "");
}

PanelExpectation::PanelExpectation(const Frames& frames) : frames_(frames) {}

void PanelExpectation::analyzed(double desired) {
  for (const Stripes& stripes : frames_) input_.push_back(meanOf(stripes));
  desire(desired);
}

void PanelExpectation::desire(double level) {
  desired_.assign(frames_.size(), level);
}

// The plot is 337 by 137 pixels at (9, 13); bins without pixels lie on its bottom edge, and the
// stripes, all of one width, reach its top.
void PanelExpectation::addHistogram(json& marks) const {
  const Stripes& stripes = frames_[static_cast<std::size_t>(frame)];
  json points = json::array({{9, 150}});
  for (int bin = 0; bin < 256; ++bin) {
    const bool used = std::find(stripes.begin(), stripes.end(), bin) != stripes.end();
    points.push_back({9 + bin * 337 / 256, used ? 13 : 150});
  }
  points.push_back({346, 150});
  marks.push_back(stroke(kBlack, points));
  marks.push_back(fill(kWhite, points));
  if (green) marks.push_back(stroke(kGreen, points));  // grey stripes: the same in each channel
}

void PanelExpectation::addMarkers(json& marks) const {
  const auto i = static_cast<std::size_t>(frame);
  const int in = 9 + static_cast<int>(input_[i]) * 337 / 255;
  const json down{{in, 150}, {in - 8, 142}, {in + 8, 142}, {in, 150}};
  marks.push_back(stroke(kBlack, down));
  marks.push_back(fill(kYellow, down));
  const int out = 9 + static_cast<int>(desired_[i]) * 337 / 255;
  const json up{{out, 151}, {out - 8, 159}, {out + 8, 159}, {out, 151}};
  marks.push_back(stroke(kBlack, up));
  marks.push_back(fill(kHandle, up));
}

// The plot is 337 by 130 pixels at (9, 175).
void PanelExpectation::addLuminance(json& marks) const {
  double top = 255.0;
  double bottom = 0.0;
  if (zoom) {
    double low = 255.0;
    double high = 0.0;
    for (const auto* levels : {&input_, &desired_}) {
      low = std::min(low, *std::min_element(levels->begin(), levels->end()));
      high = std::max(high, *std::max_element(levels->begin(), levels->end()));
    }
    top = static_cast<int>(high + 15.0) / 10 * 10;
    bottom = static_cast<int>(low - 15.0) / 10 * 10;
  }
  const int last = static_cast<int>(frames_.size()) - 1;
  const auto curve = [&](const json& colour, const std::vector<double>& levels) {
    json points = json::array();
    for (int i = 0; i <= last; ++i) {
      const double level = levels[static_cast<std::size_t>(i)];
      points.push_back({9 + i * 337 / last, 305.0 - (level - bottom) * 130.0 / (top - bottom)});
    }
    marks.push_back(stroke(colour, points));
  };
  marks.push_back(rect(kFrame, 8, 174, 339, 132));
  marks.push_back(rect(kPlot, 9, 175, 337, 130));
  marks.push_back(text(kLabel, 0, 172, "Luminance Graph"));
  marks.push_back(text(kLabel, 3, 320, "0"));
  marks.push_back(text(kLabel, 121.5, 320, "Time in Frames"));
  marks.push_back(text(kLabel, 342, 320, std::to_string(frames_.size())));
  curve(kYellow, input_);
  curve(kGreen, desired_);
  if (!outside()) {
    const int x = 9 + frame * 337 / last;
    marks.push_back(stroke(kRed, {{x, 175}, {x, 305}}));
  }
  double change = 0.0;
  for (std::size_t i = 1; i < input_.size(); ++i) change += std::abs(input_[i] - input_[i - 1]);
  marks.push_back(text(kYellow, 10, 188, print("Input variance %-6.2f", change / last)));
  marks.push_back(text(kLabel, 349, 176, print("%-6.0f", top)));
  marks.push_back(text(kLabel, 349, 308, print("%-6.0f", bottom)));
}

json PanelExpectation::marks() const {
  json marks = json::array();
  marks.push_back(rect(kBackground, 0, 0, 400, 332));
  marks.push_back(rect(kFrame, 8, 12, 339, 139));
  marks.push_back(rect(kPlot, 9, 13, 337, 137));
  marks.push_back(text(kLabel, 0, 10, "Histogram Graph"));
  if (!outside()) {
    const auto i = static_cast<std::size_t>(frame);
    addHistogram(marks);
    addMarkers(marks);
    marks.push_back(text(kYellow, 10, 26, print("Input = %-6.2f", input_[i])));
    marks.push_back(text(kHandle, 10, 38, print("Desired = %-6.2f", desired_[i])));
  }
  marks.push_back(text(kLabel, 349, 26, "frame " + std::to_string(frame)));
  if (!outside()) {
    marks.push_back(text(kLabel, 349, 38, "4096 of 4096 pixels analyzed"));
    marks.push_back(text(kLabel, 349, 50, "100% unclipped"));
  }
  addLuminance(marks);
  return marks;
}

}  // namespace cli::test
