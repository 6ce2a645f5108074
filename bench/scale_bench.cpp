// bench/scale_bench.cpp — time and memory against the number of frames and their size.
//
// By frame count: analysing, then saving to a project file and opening it again, beside a plain
// copy of that file. By frame size: correcting one frame, beside a memory copy of it.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/against_floor.h"
#include "cli/project/project_file.h"
#include "host/instance.h"

namespace {

using host::Depth;
using host::Image;
using host::Instance;
using varilum::bench::againstFloor;

// Grey frames, each with a level of its own, painted as fast as memory takes them.
class GreySource final : public host::FrameSource {
 public:
  GreySource(std::int32_t width, std::int32_t height, std::int32_t frames) {
    info_.width = width;
    info_.height = height;
    info_.frameCount = frames;
  }
  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t frame, Image& image) override {
    for (std::int32_t y = 0; y < image.height(); ++y) {
      std::memset(image.row(y), 60 + frame * 37 % 50, static_cast<std::size_t>(image.rowBytes()));
    }
  }

 private:
  host::LayerInfo info_;
};

// One picture with a level in every byte, read again and again without cost.
class PictureSource final : public host::FrameSource {
 public:
  PictureSource(std::int32_t width, std::int32_t height) {
    info_.width = width;
    info_.height = height;
    info_.frameCount = 3;
  }
  const host::LayerInfo& info() const override { return info_; }
  void read(std::int32_t, Image& image) override {
    if (painted_ == image.row(0)) return;
    painted_ = image.row(0);
    std::uint32_t noise = 1;
    for (std::int32_t y = 0; y < image.height(); ++y) {
      for (std::ptrdiff_t i = 0; i < image.rowBytes(); ++i) {
        noise = noise * 1664525 + 1013904223;
        const auto level = static_cast<std::ptrdiff_t>(noise >> 28) + 40 + y % 64 + i / 64 % 64;
        image.row(y)[i] = static_cast<std::byte>(level);
      }
    }
  }

 private:
  host::LayerInfo info_;
  const std::byte* painted_ = nullptr;
};

host::HostOptions oneThread() {
  host::HostOptions options;
  options.threads = 1;
  return options;
}

struct Application {
  host::EffectModule module{VARILUM_EFFECT_PATH};
  host::Host app{host::Role::afterEffects, {13, 14}, oneThread()};
  host::Effect effect{app, module};
};

// A folder that goes with its files.
class Folder {
 public:
  Folder()
      : path_(std::filesystem::temp_directory_path() /
              ("varilum-scale-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(path_);
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::filesystem::path file(const char* name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

std::size_t memoryInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// Frames of 64 x 36 pixels. Counters: bytes that the instance holds afterwards.
void analyse(benchmark::State& state) {
  const auto frames = static_cast<std::int32_t>(state.range(0));
  Application application;
  GreySource source(64, 36, frames);
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::size_t before = memoryInUse();
    Instance instance(application.effect, source);
    instance.press("Analyze");
    bytes = memoryInUse() - before;
    benchmark::DoNotOptimize(&instance);
  }
  state.counters["frames"] = frames;
  state.counters["bytes"] = static_cast<double>(bytes);
}

// The file's bytes read and written once more, as any program would do it.
void copyFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::filesystem::remove(to);
  std::ifstream in(from, std::ios::binary);
  std::ofstream out(to, std::ios::binary);
  std::vector<char> piece(std::size_t{1} << 20);
  while (in.read(piece.data(), static_cast<std::streamsize>(piece.size())) || in.gcount() > 0) {
    out.write(piece.data(), in.gcount());
  }
}

cli::Project projectOf(Instance& instance, std::int32_t frames) {
  cli::Project project;
  project.program = "bench";
  project.clip = project.clipRelative = "bench.mov";
  project.fingerprint.width = project.fingerprint.height = 1;
  project.layerFrames = frames;
  project.fingerprint.frames = frames;
  project.shots.push_back({{cli::ShotFrames(0, frames), {}, {}}, instance.save()});
  return project;
}

// Saving, reopening, or both; floor: a copy of the project file.
void keep(benchmark::State& state, bool saves, bool opens) {
  const auto frames = static_cast<std::int32_t>(state.range(0));
  Application application;
  GreySource source(64, 36, frames);
  Instance instance(application.effect, source);
  instance.press("Analyze");
  const Folder folder;
  const auto path = folder.file("project.varilum");
  const auto save = [&] { cli::writeProject(path, projectOf(instance, frames), true); };
  const auto open = [&] {
    const cli::Project project = cli::readProject(path);
    const Instance opened =
        Instance::open(application.effect, source, project.shots.front().effect);
    benchmark::DoNotOptimize(&opened);
  };
  save();
  againstFloor(
      state, [&] { copyFile(path, folder.file("copy")); },
      [&] {
        if (saves) save();
        if (opens) open();
      });
  state.counters["frames"] = frames;
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
}

void save(benchmark::State& state) {
  keep(state, true, false);
}
void reopen(benchmark::State& state) {
  keep(state, false, true);
}
void saveAndReopen(benchmark::State& state) {
  keep(state, true, true);
}

void byCount(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgName("frames")
      ->RangeMultiplier(10)
      ->Range(100, 100000)
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK(analyse)->Apply(byCount);
BENCHMARK(save)->Apply(byCount)->UseManualTime();
BENCHMARK(reopen)->Apply(byCount)->UseManualTime();
BENCHMARK(saveAndReopen)->Apply(byCount)->UseManualTime();

struct Copy {
  Copy(std::int32_t width, std::int32_t height)
      : from(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, std::byte{90}),
        to(from) {}
  void operator()() {
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::ClobberMemory();
  }
  std::vector<std::byte> from;
  std::vector<std::byte> to;
};

// One 8-bit frame by the smart pair.
void renderFrame(benchmark::State& state) {
  const auto width = static_cast<std::int32_t>(state.range(0));
  const auto height = static_cast<std::int32_t>(state.range(1));
  Application application;
  PictureSource source(width, height);
  Instance instance(application.effect, source);
  instance.press("Analyze");
  Image output;
  instance.render(1, Depth::bits8, output);  // its memory is there from now on
  Copy copy(width, height);
  againstFloor(state, copy, [&] { instance.render(1, Depth::bits8, output); });
  state.counters["pixels"] = static_cast<double>(width) * height;
}

void bySize(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"width", "height"})->Unit(benchmark::kMillisecond)->UseManualTime();
  for (const auto& [width, height] :
       {std::pair{1280, 720}, {1920, 1080}, {2560, 1440}, {3840, 2160}, {7680, 4320}}) {
    benchmark->Args({width, height});
  }
}
BENCHMARK(renderFrame)->Apply(bySize);

}  // namespace
