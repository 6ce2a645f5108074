// report/report_json.cpp — a report as a tree of JSON.
#include "report/report_json.h"

#include <cmath>
#include <cstddef>
#include <string_view>

namespace report {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormat = 1;
constexpr double kLevelSteps = 1e4;
constexpr double kFigureSteps = 1e6;

// Not a number and infinities have no place in JSON.
Json rounded(double value, double steps) {
  if (!std::isfinite(value)) return nullptr;
  return std::round(value * steps) / steps;
}

Json figuresJson(const Figures& figures) {
  const auto pair = [](double before, double after) {
    return Json{{"before", rounded(before, kFigureSteps)}, {"after", rounded(after, kFigureSteps)}};
  };
  return Json{{"flickerPercent", pair(figures.flickerBefore, figures.flickerAfter)},
              {"jerkPercent", pair(figures.jerkBefore, figures.jerkAfter)}};
}

Json outlierJson(const Outlier& outlier) {
  return Json{{"first", outlier.first},
              {"last", outlier.last},
              {"kind", outlier.kind},
              {"reason", outlier.reason},
              {"ratio", rounded(outlier.ratio, kLevelSteps)},
              {"left", outlier.left}};
}

Json shotJson(const Shot& shot) {
  Json json{{"first", shot.first}, {"last", shot.last}};
  json.update(figuresJson(shot.figures));
  json["passedThrough"] = shot.passedThrough;
  json["matte"] = shot.matte ? Json(*shot.matte) : Json(nullptr);
  json["outliers"] = Json::array();
  for (const Outlier& outlier : shot.outliers) json["outliers"].push_back(outlierJson(outlier));
  return json;
}

Json rowsJson(const std::vector<Row>& rows) {
  Json json = Json::object();
  for (const auto& [name, value] : rows) json[name] = value;
  return json;
}

// Frames in columns: a long clip's report stays small, and plots take it as it is.
Json framesJson(const Report& report) {
  Json input = Json::array();
  Json target = Json::array();
  Json output = Json::array();
  Json repeats = Json::array();
  Json untouched = Json::array();
  for (std::size_t i = 0; i < report.frames.size(); ++i) {
    const Frame& frame = report.frames[i];
    const std::int64_t number = report.first + static_cast<std::int64_t>(i);
    input.push_back(rounded(frame.input, kLevelSteps));
    target.push_back(rounded(frame.target, kLevelSteps));
    output.push_back(rounded(frame.output, kLevelSteps));
    if (frame.original != number) repeats.push_back({number, frame.original});
    if (!frame.untouched) continue;
    if (!untouched.empty() && untouched.back()[1] == number - 1) {
      untouched.back()[1] = number;
    } else {
      untouched.push_back({number, number});
    }
  }
  return Json{{"first", report.first},         {"input", std::move(input)},
              {"target", std::move(target)},   {"output", std::move(output)},
              {"repeats", std::move(repeats)}, {"untouched", std::move(untouched)}};
}

}  // namespace

Json jsonOf(const Report& report) {
  Json json{{"format", kFormat},
            {"input", report.input},
            {"output", report.output},
            {"width", report.width},
            {"height", report.height},
            {"frameRate", rounded(report.frameRate, kFigureSteps)},
            {"clipFrames", report.clipFrames},
            {"seconds", rounded(report.seconds, kLevelSteps)}};
  json.update(figuresJson(report.figures));
  json["settings"] = rowsJson(report.settings);
  json["versions"] = rowsJson(report.versions);
  json["shots"] = Json::array();
  for (const Shot& shot : report.shots) json["shots"].push_back(shotJson(shot));
  json["frames"] = framesJson(report);
  return json;
}

std::string textOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string jsonReport(const Report& report) {
  return textOf(jsonOf(report)) + '\n';
}

}  // namespace report
