// cli/options/clip_text.cpp — a clip described, for people and for programs.
#include "cli/options/clip_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/shots/shot_text.h"

namespace cli {
namespace {

const char* depthName(media::Depth depth) {
  switch (depth) {
    case media::Depth::eight:
      return "8";
    case media::Depth::sixteen:
      return "16";
    case media::Depth::floating:
      return "32";
  }
  return "";
}

}  // namespace

std::string clipText(const media::ClipInfo& clip) {
  std::string text;
  const auto line = [&](const char* name, const std::string& value) {
    text += fmt::format("{:<16}{}\n", name, value);
  };
  line("clip", clip.path);
  line("format", fmt::format("{}, {}", clip.container, clip.codec));
  line("size", fmt::format("{} x {} pixels{}", clip.width, clip.height,
                           clip.rotationDegrees == 0 ? ""
                                                     : fmt::format(", shown turned by {} degrees",
                                                                   clip.rotationDegrees)));
  line("frames", fmt::format("{}{}", clip.frameCount, clip.frameCountExact ? "" : " (at most)"));
  line("rate", fmt::format("{:.3f} fps{}", clip.frameRate.value(),
                           clip.variableFrameRate ? ", variable" : ""));
  line("duration", fmt::format("{:.3f} s", clip.durationSeconds));
  line("pixels", fmt::format("{}, {} bits, rendered at {}", clip.pixelFormat, clip.bitsPerComponent,
                             depthName(clip.workingDepth)));
  line("colour", fmt::format("range {}, matrix {}, primaries {}, transfer {}", clip.colourRange,
                             clip.colourMatrix, clip.colourPrimaries, clip.colourTransfer));
  for (const media::OtherStream& stream : clip.otherStreams) {
    line(stream.kind.c_str(),
         fmt::format("{}{}{}", stream.codec, stream.language.empty() ? "" : ", ", stream.language));
  }
  return text;
}

namespace {

nlohmann::ordered_json jsonOf(const media::ClipInfo& clip) {
  nlohmann::ordered_json streams = nlohmann::ordered_json::array();
  for (const media::OtherStream& stream : clip.otherStreams) {
    streams.push_back({{"index", stream.index},
                       {"kind", stream.kind},
                       {"codec", stream.codec},
                       {"language", stream.language}});
  }
  return {{"clip", clip.path},
          {"container", clip.container},
          {"codec", clip.codec},
          {"width", clip.width},
          {"height", clip.height},
          {"rotationDegrees", clip.rotationDegrees},
          {"frames", clip.frameCount},
          {"framesExact", clip.frameCountExact},
          {"frameRate", {{"num", clip.frameRate.num}, {"den", clip.frameRate.den}}},
          {"variableFrameRate", clip.variableFrameRate},
          {"durationSeconds", clip.durationSeconds},
          {"pixelFormat", clip.pixelFormat},
          {"bitsPerComponent", clip.bitsPerComponent},
          {"renderDepth", depthName(clip.workingDepth)},
          {"colour",
           {{"range", clip.colourRange},
            {"matrix", clip.colourMatrix},
            {"primaries", clip.colourPrimaries},
            {"transfer", clip.colourTransfer}}},
          {"otherStreams", streams}};
}

std::string dumped(const nlohmann::ordered_json& object) {
  return object.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string clipJson(const media::ClipInfo& clip) {
  return dumped(jsonOf(clip));
}

std::string clipJson(const media::ClipInfo& clip, std::span<const ShotFindings> shots,
                     const Levels& levels) {
  nlohmann::ordered_json object = jsonOf(clip);
  nlohmann::ordered_json& list = object["shots"] = nlohmann::ordered_json::array();
  for (const ShotFindings& shot : shots) list.push_back(shotJson(shot, levels));
  return dumped(object);
}

}  // namespace cli
