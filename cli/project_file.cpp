// cli/project_file.cpp — a fixed preamble, a JSON header, the effect's own flat data.
#include "cli/project_file.h"

#include <fmt/format.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <span>
#include <vector>

#include "cli/crc32.h"
#include "cli/error.h"
#include "cli/output_file.h"

namespace cli {
namespace {

using nlohmann::json;

constexpr std::array<char, 8> kMagic{'V', 'A', 'R', 'I', 'L', 'U', 'M', '\n'};
constexpr std::uint32_t kVersion = 1;

struct Preamble {
  std::array<char, 8> magic;
  std::uint32_t version;
  std::uint32_t headerBytes;
  std::uint64_t dataBytes;
  std::uint32_t headerSum;
  std::uint32_t dataSum;
  std::uint32_t ownSum;  // of the bytes before it
  std::uint32_t reserved;
};
static_assert(sizeof(Preamble) == 40 && offsetof(Preamble, ownSum) == 32);
static_assert(std::endian::native == std::endian::little, "the file is little-endian");

// Far above what 24 million frames with a keyframe each would be split into by a sane user.
constexpr std::uint64_t kMostHeaderBytes = 1ULL << 30;

std::uint32_t ownSum(const Preamble& preamble) {
  return crc32(std::as_bytes(std::span(&preamble, 1)).first(offsetof(Preamble, ownSum)));
}

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

double finite(const json& value) {
  const double number = value.get<double>();
  if (!std::isfinite(number)) throw std::invalid_argument("a number is not finite");
  return number;
}

host::SavedParameter parameterFrom(const json& value) {
  host::SavedParameter parameter;
  parameter.id = value.at("id").get<std::int32_t>();
  parameter.name = value.at("name").get<std::string>();
  parameter.type = value.at("type").get<std::int32_t>();
  parameter.constant = value.at("constant").get<bool>();
  for (const json& entry : value.at("keys")) {
    host::SavedKeyframe key;
    key.frame = entry.at("frame").get<std::int32_t>();
    if (key.frame < 0) throw std::invalid_argument("a keyframe before the first frame");
    key.value = finite(entry.at("value"));
    if (entry.contains("y")) key.y = finite(entry.at("y"));
    if (entry.contains("data")) key.opaque = fromHex(entry.at("data").get<std::string>());
    parameter.keys.push_back(std::move(key));
  }
  return parameter;
}

json headerOf(const Project& project) {
  json parameters = json::array();
  for (const auto& parameter : project.effect.parameters) parameters.push_back(toJson(parameter));
  const ClipFingerprint& print = project.fingerprint;
  return {{"program", project.program},
          {"clip",
           {{"path", project.clip},
            {"relative", project.clipRelative},
            {"startNumber", project.startNumber},
            {"frameRate", project.frameRate},
            {"width", print.width},
            {"height", print.height},
            {"frames", print.frames},
            {"pixels", print.pixels}}},
          {"effect",
           {{"version", project.effectVersion},
            {"frames", project.layerFrames},
            {"parameters", std::move(parameters)}}}};
}

void takeHeader(const json& header, Project& project) {
  const json& clip = header.at("clip");
  const json& effect = header.at("effect");
  project.program = header.at("program").get<std::string>();
  project.clip = clip.at("path").get<std::string>();
  project.clipRelative = clip.at("relative").get<std::string>();
  project.startNumber = clip.at("startNumber").get<int>();
  project.frameRate = finite(clip.at("frameRate"));
  ClipFingerprint& print = project.fingerprint;
  print.width = clip.at("width").get<int>();
  print.height = clip.at("height").get<int>();
  print.frames = clip.at("frames").get<std::int64_t>();
  print.pixels = clip.at("pixels").get<std::array<std::uint32_t, 3>>();
  project.effectVersion = effect.at("version").get<std::uint32_t>();
  project.layerFrames = effect.at("frames").get<std::int32_t>();
  if (print.width < 1 || print.height < 1 || project.layerFrames < 1 ||
      print.frames < project.layerFrames) {
    throw std::invalid_argument("a size or frame count is out of range");
  }
  for (const json& parameter : effect.at("parameters")) {
    project.effect.parameters.push_back(parameterFrom(parameter));
  }
}

[[noreturn]] void damaged(const std::filesystem::path& path, const std::string& why) {
  throw Failure(
      fmt::format("The project {} is damaged ({}); analyse the clip again.", path.string(), why));
}

std::vector<std::byte> readAll(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    throw Failure(fmt::format("There is no file {}; check the name.", path.string()));
  }
  if (!std::filesystem::is_regular_file(path, error)) {
    throw Failure(fmt::format("{} is not a file; give a .varilum project.", path.string()));
  }
  const auto size = std::filesystem::file_size(path, error);
  std::ifstream in(path, std::ios::binary);
  if (error || !in) {
    throw Failure(fmt::format("{} cannot be read; check its permissions.", path.string()));
  }
  std::vector<std::byte> bytes(size);
  in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  if (static_cast<std::uintmax_t>(in.gcount()) != size) {
    throw Failure(fmt::format("{} could not be read to its end.", path.string()));
  }
  return bytes;
}

}  // namespace

void writeProject(const std::filesystem::path& path, const Project& project, bool force) {
  const std::string header =
      headerOf(project).dump(1, ' ', false, json::error_handler_t::replace) + "\n";
  const std::vector<std::byte>& data = project.effect.sequenceData;
  Preamble preamble{};
  preamble.magic = kMagic;
  preamble.version = kVersion;
  preamble.headerBytes = static_cast<std::uint32_t>(header.size());
  preamble.dataBytes = data.size();
  preamble.headerSum = crc32(std::as_bytes(std::span(header)));
  preamble.dataSum = crc32(data);
  preamble.ownSum = ownSum(preamble);

  OutputFile file(path, force);
  file.write(std::as_bytes(std::span(&preamble, 1)));
  file.write(std::as_bytes(std::span(header)));
  file.write(data);
  file.commit();
}

Project readProject(const std::filesystem::path& path) {
  const std::vector<std::byte> bytes = readAll(path);
  Preamble preamble{};
  if (bytes.size() >= sizeof(kMagic)) std::memcpy(&preamble, bytes.data(), sizeof(kMagic));
  if (preamble.magic != kMagic) {
    throw Failure(fmt::format("{} is not a Varilum4 project; make one with 'varilum4 analyze'.",
                              path.string()));
  }
  if (bytes.size() < sizeof(Preamble)) damaged(path, "it ends too early");
  std::memcpy(&preamble, bytes.data(), sizeof(Preamble));
  if (preamble.ownSum != ownSum(preamble)) damaged(path, "its beginning was changed");
  if (preamble.version > kVersion) {
    throw Failure(
        fmt::format("The project {} was made by a newer version of this program; "
                    "update, or analyse the clip again.",
                    path.string()));
  }
  const std::uint64_t rest = bytes.size() - sizeof(Preamble);
  if (preamble.version == 0 || preamble.headerBytes > kMostHeaderBytes) {
    damaged(path, "its beginning makes no sense");
  }
  if (preamble.headerBytes > rest || preamble.dataBytes > rest - preamble.headerBytes) {
    damaged(path, "it ends too early");
  }
  if (preamble.dataBytes != rest - preamble.headerBytes) damaged(path, "it is too long");
  const std::span body = std::span(bytes).subspan(sizeof(Preamble));
  const auto header = body.first(preamble.headerBytes);
  const auto data = body.subspan(preamble.headerBytes);
  if (crc32(header) != preamble.headerSum) damaged(path, "its settings were changed");
  if (crc32(data) != preamble.dataSum) damaged(path, "its analysis was changed");

  Project project;
  try {
    const char* text = reinterpret_cast<const char*>(header.data());
    takeHeader(json::parse(text, text + header.size()), project);
  } catch (const std::exception&) {
    damaged(path, "its settings make no sense");
  }
  project.effect.sequenceData.assign(data.begin(), data.end());
  return project;
}

bool looksLikeProject(const std::filesystem::path& path) noexcept {
  std::array<char, 8> start{};
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  std::ifstream in(path, std::ios::binary);
  in.read(start.data(), start.size());
  return in && start == kMagic;
}

}  // namespace cli
