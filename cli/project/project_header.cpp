// cli/project/project_header.cpp — the JSON header of a project file.
#include "cli/project/project_header.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>
#include <vector>

#include "cli/shots/target.h"

namespace cli {
namespace {

using nlohmann::json;

struct OutlierName {
  footage::OutlierKind kind;
  const char* name;
};
constexpr OutlierName kOutlierNames[] = {{footage::OutlierKind::black, "black"},
                                         {footage::OutlierKind::exposureJump, "exposureJump"},
                                         {footage::OutlierKind::realLight, "realLight"}};

std::string toHex(const std::vector<std::byte>& bytes) {
  std::string text;
  for (const std::byte b : bytes) text += fmt::format("{:02x}", std::to_integer<unsigned>(b));
  return text;
}

std::vector<std::byte> fromHex(const std::string& text) {
  const auto digit = [](char c) -> unsigned {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
    throw std::invalid_argument("not a hexadecimal number");
  };
  if (text.size() % 2 != 0) throw std::invalid_argument("odd number of hexadecimal digits");
  std::vector<std::byte> bytes;
  bytes.reserve(text.size() / 2);
  for (std::size_t i = 0; i < text.size(); i += 2) {
    bytes.push_back(static_cast<std::byte>(digit(text[i]) * 16 + digit(text[i + 1])));
  }
  return bytes;
}

json toJson(const host::SavedParameter& parameter) {
  json keys = json::array();
  for (const auto& key : parameter.keys) {
    json entry{{"frame", key.frame}, {"value", key.value}};
    if (key.y != 0.0) entry["y"] = key.y;
    if (!key.opaque.empty()) entry["data"] = toHex(key.opaque);
    keys.push_back(std::move(entry));
  }
  return {{"id", parameter.id},
          {"name", parameter.name},
          {"type", parameter.type},
          {"constant", parameter.constant},
          {"keys", std::move(keys)}};
}

// A whole number that the type holds.
template <typename Number>
Number whole(const json& value) {
  if (!value.is_number_integer()) throw std::invalid_argument("not a whole number");
  const bool fits = value.is_number_unsigned() ? std::in_range<Number>(value.get<std::uint64_t>())
                                               : std::in_range<Number>(value.get<std::int64_t>());
  if (!fits) throw std::invalid_argument("a whole number out of range");
  return value.get<Number>();
}

template <typename Number, std::size_t N>
std::array<Number, N> wholes(const json& value) {
  if (!value.is_array() || value.size() != N) throw std::invalid_argument("not that many numbers");
  std::array<Number, N> numbers{};
  for (std::size_t i = 0; i < N; ++i) numbers[i] = whole<Number>(value[i]);
  return numbers;
}

double finite(const json& value) {
  const double number = value.get<double>();
  if (!std::isfinite(number)) throw std::invalid_argument("a number is not finite");
  return number;
}

host::SavedParameter parameterFrom(const json& value) {
  host::SavedParameter parameter;
  parameter.id = whole<std::int32_t>(value.at("id"));
  parameter.name = value.at("name").get<std::string>();
  parameter.type = whole<std::int32_t>(value.at("type"));
  parameter.constant = value.at("constant").get<bool>();
  for (const json& entry : value.at("keys")) {
    host::SavedKeyframe key;
    key.frame = whole<std::int32_t>(entry.at("frame"));
    if (key.frame < 0) throw std::invalid_argument("a keyframe before the first frame");
    key.value = finite(entry.at("value"));
    if (entry.contains("y")) key.y = finite(entry.at("y"));
    if (entry.contains("data")) key.opaque = fromHex(entry.at("data").get<std::string>());
    parameter.keys.push_back(std::move(key));
  }
  return parameter;
}

json toJson(const ShotOutlier& outlier) {
  const auto row = std::find_if(std::begin(kOutlierNames), std::end(kOutlierNames),
                                [&](const auto& r) { return r.kind == outlier.found.kind; });
  return {{"first", outlier.found.first},
          {"last", outlier.found.last},
          {"kind", row->name},
          {"ratio", outlier.found.ratio},
          {"left", outlier.left}};
}

json toJson(const ProjectShot& shot) {
  const ShotFrames& frames = shot.found.frames;
  json outliers = json::array();
  for (const ShotOutlier& outlier : shot.found.outliers) outliers.push_back(toJson(outlier));
  json parameters = json::array();
  for (const auto& parameter : shot.effect.parameters) parameters.push_back(toJson(parameter));
  json value{{"first", frames.first()},
             {"frames", frames.count()},
             {"duplicates", frames.duplicates()},
             {"outliers", std::move(outliers)},
             {"dataBytes", shot.effect.sequenceData.size()},
             {"parameters", std::move(parameters)}};
  if (shot.found.matte) {
    const footage::Rectangle& m = *shot.found.matte;
    value["matte"] = {m.left, m.top, m.right, m.bottom};
  }
  return value;
}

ShotOutlier outlierFrom(const json& value, const ShotFrames& frames) {
  ShotOutlier outlier;
  outlier.found.first = whole<std::int64_t>(value.at("first"));
  outlier.found.last = whole<std::int64_t>(value.at("last"));
  outlier.found.ratio = finite(value.at("ratio"));
  outlier.left = value.at("left").get<bool>();
  if (!frames.holds(outlier.found.first) || !frames.holds(outlier.found.last) ||
      outlier.found.last < outlier.found.first) {
    throw std::invalid_argument("an outlier outside its shot");
  }
  const auto name = value.at("kind").get<std::string>();
  const auto row = std::find_if(std::begin(kOutlierNames), std::end(kOutlierNames),
                                [&](const auto& r) { return name == r.name; });
  if (row == std::end(kOutlierNames)) throw std::invalid_argument("an outlier of unknown kind");
  outlier.found.kind = row->kind;
  return outlier;
}

footage::Rectangle matteFrom(const json& value, const ClipFingerprint& print) {
  const auto sides = wholes<int, 4>(value);
  const footage::Rectangle matte{sides[0], sides[1], sides[2], sides[3]};
  if (matte.left < 0 || matte.top < 0 || matte.right <= matte.left || matte.bottom <= matte.top ||
      matte.right > print.width || matte.bottom > print.height) {
    throw std::invalid_argument("a matte outside the picture");
  }
  return matte;
}

std::vector<host::SavedParameter> parametersFrom(const json& value) {
  std::vector<host::SavedParameter> parameters;
  for (const json& parameter : value) parameters.push_back(parameterFrom(parameter));
  return parameters;
}

ShotFrames framesFrom(const json& value) {
  std::vector<std::int64_t> duplicates;
  for (const json& frame : value.at("duplicates")) {
    duplicates.push_back(whole<std::int64_t>(frame));
  }
  return {whole<std::int64_t>(value.at("first")), whole<std::int64_t>(value.at("frames")),
          std::move(duplicates)};
}

// The sequence data of all shots. A single one gets them without a copy.
class ShotData {
 public:
  explicit ShotData(std::vector<std::byte> all) : all_(std::move(all)), left_(all_.size()) {}

  std::size_t left() const noexcept { return left_; }

  // The next ones; at most left().
  std::vector<std::byte> take(std::size_t count) {
    const bool isAll = count == all_.size();
    const auto next = all_.end() - static_cast<std::ptrdiff_t>(left_);
    left_ -= count;
    return isAll ? std::move(all_)
                 : std::vector<std::byte>(next, next + static_cast<std::ptrdiff_t>(count));
  }

 private:
  std::vector<std::byte> all_;
  std::size_t left_;
};

// Takes a shot and its part off the front of the data.
ProjectShot shotFrom(const json& value, const Project& project, ShotData& data) {
  ProjectShot shot;
  ShotFindings& found = shot.found;
  found.frames = framesFrom(value);
  for (const json& entry : value.at("outliers")) {
    found.outliers.push_back(outlierFrom(entry, found.frames));
  }
  if (value.contains("matte")) found.matte = matteFrom(value["matte"], project.fingerprint);
  shot.effect.parameters = parametersFrom(value.at("parameters"));
  const auto bytes = whole<std::uint64_t>(value.at("dataBytes"));
  if (bytes > data.left()) throw std::invalid_argument("more data than there are");
  shot.effect.sequenceData = data.take(static_cast<std::size_t>(bytes));
  return shot;
}

void takeShots(const json& list, ShotData data, Project& project) {
  std::int64_t next = 0;
  for (const json& entry : list) {
    project.shots.push_back(shotFrom(entry, project, data));
    const ShotFrames& frames = project.shots.back().found.frames;
    if (frames.first() != next) throw std::invalid_argument("a gap between shots");
    next = frames.last() + 1;
  }
  if (next != project.layerFrames || data.left() > 0) {
    throw std::invalid_argument("the shots do not add up");
  }
}

void takeClip(const json& clip, Project& project) {
  project.clip = clip.at("path").get<std::string>();
  project.clipRelative = clip.at("relative").get<std::string>();
  project.startNumber = whole<int>(clip.at("startNumber"));
  project.frameRate = finite(clip.at("frameRate"));
  ClipFingerprint& print = project.fingerprint;
  print.width = whole<int>(clip.at("width"));
  print.height = whole<int>(clip.at("height"));
  print.frames = whole<std::int64_t>(clip.at("frames"));
  print.pixels = wholes<std::uint32_t, 3>(clip.at("pixels"));
}

}  // namespace

std::string projectHeader(const Project& project) {
  json shots = json::array();
  for (const ProjectShot& shot : project.shots) shots.push_back(toJson(shot));
  const ClipFingerprint& print = project.fingerprint;
  const json header{
      {"program", project.program},
      {"clip",
       {{"path", project.clip},
        {"relative", project.clipRelative},
        {"startNumber", project.startNumber},
        {"frameRate", project.frameRate},
        {"width", print.width},
        {"height", print.height},
        {"frames", print.frames},
        {"pixels", print.pixels}}},
      {"effect", {{"version", project.effectVersion}, {"frames", project.layerFrames}}},
      {"target", project.target},
      {"shots", std::move(shots)}};
  return header.dump(1, ' ', false, json::error_handler_t::replace) + "\n";
}

Project projectFrom(std::string_view text, std::uint32_t version,
                    std::vector<std::byte> sequenceData) {
  const json header = json::parse(text);
  const json& effect = header.at("effect");
  Project project;
  project.program = header.at("program").get<std::string>();
  takeClip(header.at("clip"), project);
  project.effectVersion = whole<std::uint32_t>(effect.at("version"));
  project.layerFrames = whole<std::int32_t>(effect.at("frames"));
  const ClipFingerprint& print = project.fingerprint;
  if (print.width < 1 || print.height < 1 || project.layerFrames < 1 ||
      print.frames < project.layerFrames) {
    throw std::invalid_argument("a size or frame count is out of range");
  }
  if (version > 1) {
    project.target = toText(targetFromProject(header.at("target").get<std::string>()));
    takeShots(header.at("shots"), ShotData(std::move(sequenceData)), project);
    return project;
  }
  ProjectShot only;
  only.found.frames = ShotFrames(0, project.layerFrames);
  only.effect.parameters = parametersFrom(effect.at("parameters"));
  only.effect.sequenceData = std::move(sequenceData);
  project.shots.push_back(std::move(only));
  return project;
}

}  // namespace cli
