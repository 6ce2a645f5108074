// fuzz/make_seeds.cpp — writes what each fuzz target starts from: inputs of our own writers, words.
//
// make_seeds FOLDER: FOLDER/<target>/ gets the inputs and FOLDER/<target>.dict the words.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/project/project_file.h"
#include "fuzz/image_visit.h"
#include "fuzz/pattern_layer.h"
#include "host/effect.h"
#include "host/instance.h"
#include "resources/property_list.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<std::byte>;

template <class Value>
void append(Bytes& bytes, const Value& value) {
  const auto raw = std::as_bytes(std::span(&value, 1));
  bytes.insert(bytes.end(), raw.begin(), raw.end());
}

template <class Value>
void put(Bytes& bytes, std::size_t offset, Value value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

// The inputs and the words of one target.
class Seeds {
 public:
  Seeds(const fs::path& folder, const std::string& target) : inputs_(folder / target) {
    fs::create_directories(inputs_);
    dictionary_.open(folder / (target + ".dict"));
  }

  void input(const std::string& name, std::span<const std::byte> bytes) {
    std::ofstream file(inputs_ / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + (inputs_ / name).string());
  }

  void word(std::span<const std::byte> bytes) {
    dictionary_ << '"';
    for (const std::byte b : bytes) {
      char text[8];
      std::snprintf(text, sizeof text, "\\x%02x", std::to_integer<unsigned>(b));
      dictionary_ << text;
    }
    dictionary_ << "\"\n";
    if (!dictionary_) throw std::runtime_error("cannot write a dictionary");
  }
  void word(std::string_view text) { word(std::as_bytes(std::span(text))); }
  template <class Value>
  void number(Value value) {
    word(std::as_bytes(std::span(&value, 1)));
  }

 private:
  fs::path inputs_;
  std::ofstream dictionary_;
};

// Numbers that break things, beside the sizes that the format itself has.
void hostileNumbers(Seeds& seeds) {
  for (const double value :
       {-1.0, 0.0, 1e-310, 255.0, 255.5, 1e300, -1e300, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    seeds.number(value);
  }
  for (const std::int32_t value :
       {-1, 0, 1, 13, 14, 30, 104, 176, 1068, 4100, 4396, 5196, 123000, 24403223, 24403224,
        std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
    seeds.number(value);
  }
}

Bytes planned(const VisitPlan& plan, std::span<const std::byte> image) {
  Bytes input;
  append(input, plan);
  input.insert(input.end(), image.begin(), image.end());
  return input;
}

// An analysed instance as the effect saves it. 30 histograms are most of it, and cut off by the
// targets' limit of length; the plans put back as many as they name.
host::SavedInstance analysed(std::int32_t frames, host::Depth depth) {
  const host::EffectModule module{VARILUM_EFFECT_PATH};
  host::Host host{host::Role::afterEffects};
  host::Effect effect{host, module};
  PatternLayer layer{24, 16, frames, depth};
  host::Instance fx{effect, layer};
  fx.press("Analyze");
  return fx.save();
}

void images14(const fs::path& folder) {
  Seeds seeds{folder, "saved_image_14"};
  hostileNumbers(seeds);
  constexpr host::Depth kDepths[] = {host::Depth::bits8, host::Depth::bits16, host::Depth::float32};
  for (std::uint8_t i = 0; i < 9; ++i) {
    const std::uint8_t frames = i % 7 + 1;
    const host::SavedInstance saved = analysed(frames, kDepths[i % 3]);
    VisitPlan plan{};
    plan.host = i % 3;
    plan.frames = frames - 1;
    plan.width = 23;
    plan.height = 15;
    plan.depth = i % 3;
    plan.repairs = i < 3 ? 0xFF : kRepairVersion | kRepairSizes | kRepairFlattened;
    plan.imageFrames = frames;
    plan.imageSlots = i % 4;
    plan.acts = 0xFF;
    plan.parameter = i;
    plan.method = i % 4;
    plan.x = static_cast<std::int16_t>(40 * i);
    plan.y = static_cast<std::int16_t>(35 * i);
    plan.toX = 200;
    plan.toY = 150;
    plan.nextFrames = i % 2 == 0 ? plan.frames : 9;
    seeds.input("image" + std::to_string(i), planned(plan, saved.sequenceData));
  }
}

// The previous version is only read nowadays: a header of 1068 bytes, four arrays of levels, and
// 4396 bytes a frame.
Bytes image13(std::size_t frames) {
  constexpr std::size_t kHeader = 1068;
  constexpr std::size_t kFrame = 4396;
  Bytes image(kHeader + frames * (4 * sizeof(double) + kFrame));
  put(image, 8, std::int32_t{13});
  put(image, 21, std::uint8_t{1});
  put(image, 22, std::uint8_t{2});
  put(image, 28, std::int32_t{2});
  put(image, 48, 99.0);
  for (std::size_t i = 0; i < 4 * frames; ++i) {
    put(image, kHeader + 8 * i, 60.0 + 7.0 * static_cast<double>(i % 5));
  }
  for (std::size_t i = 0; i < frames; ++i) {
    const std::size_t record = kHeader + frames * 4 * sizeof(double) + i * kFrame;
    for (std::size_t bin = 0; bin < 256; ++bin) {
      put(image, record + 4 * bin, static_cast<std::uint32_t>(bin % 7));
    }
    put(image, record + 1024, std::int32_t{384});
    put(image, record + 1040, 67.0);
    put(image, record + 4136, std::uint16_t{0x0101});
    put(image, record + 4160, std::uint32_t{5});
  }
  return image;
}

void images13(const fs::path& folder) {
  Seeds seeds{folder, "saved_image_13"};
  hostileNumbers(seeds);
  for (std::uint8_t i = 0; i < 6; ++i) {
    VisitPlan plan{};
    plan.host = i % 3;
    plan.width = 30;
    plan.height = 20;
    plan.depth = i % 3;
    plan.repairs = i % 2 == 0 ? 0xFF : 0;
    plan.imageFrames = plan.frames = i % 3;
    plan.acts = 0xFF;
    plan.method = i % 4;
    plan.x = static_cast<std::int16_t>(60 * i);
    plan.y = static_cast<std::int16_t>(50 * i);
    seeds.input("image" + std::to_string(i),
                planned(plan, image13(plan.repairs == 0 ? i % 3U + 1U : i % 3U)));
  }
}

// Each step of fuzz/arbitrary_data_target.cpp once, with texts as users paste them.
void arbitraryData(const fs::path& folder) {
  Seeds seeds{folder, "arbitrary_data"};
  hostileNumbers(seeds);
  int number = 0;
  for (const std::string_view text :
       {"128.00", "12.5\t", "-3\r", ".5", "1e400", "-", "0x10", "nan", "inf", "  7  ", "abc", ""}) {
    if (!text.empty()) seeds.word(text);
    Bytes steps{std::byte{0}, std::byte{1}, std::byte{0}, static_cast<std::byte>(text.size())};
    for (const char c : text) steps.push_back(static_cast<std::byte>(c));
    for (const int step : {2, 1, 64, 0, 3, 0, 8, 16, 5, 1, 6, 1, 7, 0}) {
      steps.push_back(static_cast<std::byte>(step));
    }
    seeds.input("text" + std::to_string(number++), steps);
  }
  Bytes between{std::byte{1}, std::byte{0}, std::byte{0}, std::byte{8}};
  append(between, 200.0);
  between.push_back(std::byte{4});
  between.push_back(std::byte{1});
  append(between, 0.25);
  seeds.input("between", between);
}

void propertyLists(const fs::path& folder) {
  Seeds seeds{folder, "property_list"};
  const std::vector<std::uint8_t> own = varilum::encodePropertyList();
  seeds.input("own", std::as_bytes(std::span(own)));
  for (const varilum::Property& property : varilum::kProperties) seeds.number(property.key);
  seeds.number(kPropertyVendor);
  seeds.number(kKindEffect);
  hostileNumbers(seeds);
}

// A project of an analysed instance. Its name is how the writer makes it.
void projectFiles(const fs::path& folder) {
  Seeds seeds{folder, "project_file"};
  for (const std::string_view word :
       {"\"program\"",   "\"clip\"",     "\"path\"",       "\"relative\"", "\"startNumber\"",
        "\"frameRate\"", "\"width\"",    "\"height\"",     "\"frames\"",   "\"pixels\"",
        "\"effect\"",    "\"version\"",  "\"parameters\"", "\"id\"",       "\"name\"",
        "\"type\"",      "\"constant\"", "\"keys\"",       "\"frame\"",    "\"value\"",
        "\"data\"",      "true",         "\"shots\"",      "\"first\"",    "\"duplicates\"",
        "\"outliers\"",  "\"matte\"",    "\"dataBytes\"",  "\"target\"",   "\"ramp:0..1\"",
        "false",         "null",         "1e400",          "-1",           "99999999999",
        "VARILUM\n"}) {
    seeds.word(word);
  }
  cli::Project project;
  project.program = "4.2.0";
  project.clip = "/clips/shot.mov";
  project.clipRelative = "shot.mov";
  project.frameRate = 25.0;
  for (const std::int32_t frames : {1, 3}) {
    project.layerFrames = frames;
    project.fingerprint = {24, 16, frames, {1U, 2U, 3U}};
    // Three frames are two shots, the second with a repeated frame and an outlier.
    project.shots = {{{cli::ShotFrames(0, 1), {}, {}}, analysed(1, host::Depth::bits8)}};
    if (frames == 3) {
      cli::ShotFindings second{cli::ShotFrames(1, 2, {2}), {}, footage::Rectangle{0, 2, 24, 14}};
      second.outliers = {{{1, 2, footage::OutlierKind::realLight, 1.5}, true}};
      project.shots.push_back({second, analysed(1, host::Depth::bits8)});
    }
    for (const bool whole : {true, false}) {
      // Without the histograms at its end the analysis is refused, but the file is short.
      for (cli::ProjectShot& shot : project.shots) {
        if (!whole) shot.effect.sequenceData.resize(5196);
      }
      const fs::path file = folder / "seed.varilum";
      cli::writeProject(file, project, true);
      std::ifstream in(file, std::ios::binary);
      std::string bytes{std::istreambuf_iterator<char>(in), {}};
      fs::remove(file);
      for (const char repaired : {'\0', '\3'}) {
        const std::string input = repaired + bytes;
        seeds.input(std::to_string(frames) + (whole ? "whole" : "short") +
                        (repaired != 0 ? "Repaired" : "AsIs"),
                    std::as_bytes(std::span(input)));
      }
    }
  }
}

void sessions(const fs::path& folder) {
  Seeds seeds{folder, "session"};
  for (const std::string_view word : {"open c.y4m\n",
                                      "open p.varilum\n",
                                      "shot=2",
                                      "input=",
                                      "close\n",
                                      "info\n",
                                      "parameters\n",
                                      "get ",
                                      "set ",
                                      "key ",
                                      "unkey ",
                                      "press Analyze\n",
                                      "press Clear\n",
                                      "stop=1",
                                      "undo\n",
                                      "goto ",
                                      "cursor ",
                                      "click ",
                                      "down ",
                                      "drag ",
                                      "up ",
                                      "hover ",
                                      "draw",
                                      " once",
                                      " marks",
                                      " png=a",
                                      " scale=",
                                      "scroll ",
                                      "render ",
                                      " bits=8",
                                      " bits=16",
                                      " bits=32",
                                      "save p.varilum",
                                      " force\n",
                                      "quit\n",
                                      " on\n",
                                      " off\n",
                                      "Luminance",
                                      "\"Correction method\"",
                                      "\"Deflicker method\"",
                                      "-1",
                                      "2147483647",
                                      "1e308",
                                      "nan",
                                      "\"",
                                      "\\",
                                      "#"}) {
    seeds.word(word);
  }
  const std::string_view scripts[] = {
      "open c.y4m\npress Analyze\ndraw marks\nrender 2 bits=16\nsave a.varilum\nquit\n",
      "open p.varilum\ngoto 2\nset \"Deflicker method\" 1\nkey Luminance 1 100\n"
      "key Luminance 3 40\nget Luminance 2\ndraw\nrender 2\nunkey Luminance\nundo\nundo\n",
      "open p.varilum\ndraw once\ndown 200 100\ndrag 220 120\nup 240 130\nclick 40 300\n"
      "hover 200 100\nscroll 10 -20\ncursor 9\ndraw png=a.png scale=0.5\nclose\nopen c.y4m\n",
      "open c.y4m\nset \"Use sub-rectangle\" on\nset 12 2,3\npress Analyze stop=2\nparameters\n"
      "info\npress Analyze\nrender 0 bits=32\nsave p.varilum force\nopen p.varilum input=c.y4m\n",
  };
  for (std::size_t i = 0; i < std::size(scripts); ++i) {
    seeds.input("visit" + std::to_string(i), std::as_bytes(std::span(scripts[i])));
  }
}

}  // namespace
}  // namespace fuzz

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_seeds FOLDER\n");
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    fuzz::images14(folder);
    fuzz::images13(folder);
    fuzz::arbitraryData(folder);
    fuzz::propertyLists(folder);
    fuzz::projectFiles(folder);
    fuzz::sessions(folder);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_seeds: %s\n", error.what());
    return 1;
  }
  return 0;
}
