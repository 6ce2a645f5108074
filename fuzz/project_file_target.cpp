// fuzz/project_file_target.cpp — project files, read, described and opened in the effect.
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/error.h"
#include "cli/project/crc32.h"
#include "cli/project/project_file.h"
#include "cli/project/project_text.h"
#include "cli/shots/levels.h"
#include "fuzz/effect_under_test.h"
#include "fuzz/pattern_layer.h"

namespace fuzz {
namespace {

constexpr std::size_t kPreamble = 40;

// A file in memory, since that is what the reader takes.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(::memfd_create("project", MFD_CLOEXEC)) {
    if (descriptor_ < 0) breach("no file in memory");
  }
  ~MemoryFile() { ::close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void fill(std::span<const std::byte> bytes) {
    if (::ftruncate(descriptor_, 0) != 0 || ::lseek(descriptor_, 0, SEEK_SET) != 0 ||
        ::write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
      breach("the file in memory cannot be written");
    }
  }
  std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

template <class Value>
void put(std::vector<std::byte>& file, std::size_t offset, Value value) {
  std::memcpy(file.data() + offset, &value, sizeof value);
}

// A preamble of a version that fits what follows it, so that what lies behind the checksums is
// reached too.
void repair(std::vector<std::byte>& file, std::uint32_t version) {
  if (file.size() < kPreamble) return;
  const auto rest = std::span<const std::byte>(file).subspan(kPreamble);
  std::uint32_t header = 0;
  std::memcpy(&header, file.data() + 12, sizeof header);
  header = static_cast<std::uint32_t>(std::min<std::size_t>(header, rest.size()));
  constexpr std::array<char, 8> kMagic{'V', 'A', 'R', 'I', 'L', 'U', 'M', '\n'};
  put(file, 0, kMagic);
  put(file, 8, version);
  put(file, 12, header);
  put(file, 16, std::uint64_t{rest.size() - header});
  put(file, 24, cli::crc32(rest.first(header)));
  put(file, 28, cli::crc32(rest.subspan(header)));
  put(file, 32, cli::crc32(std::span<const std::byte>(file).first(32)));
}

// As `info` does.
void describe(const cli::Project& project) {
  try {
    const cli::Levels levels = cli::levelsOf(project);
    if (levels.input.size() > 1000) return;
    cli::projectText(project, levels);
    cli::projectJson(project, levels);
  } catch (const cli::Failure&) {
  }
}

// As `render` does, on a clip of the size that the project names as far as there is memory.
void open(const cli::Project& project, const cli::ProjectShot& shot) {
  EffectUnderTest& test = effectUnderTest(0);
  PatternLayer layer{std::min(project.fingerprint.width, 48),
                     std::min(project.fingerprint.height, 48),
                     std::min(shot.found.frames.pictureCount(), 500), host::Depth::bits8};
  attempt([&] {
    host::Instance fx = host::Instance::open(test.effect(), layer, shot.effect);
    host::Image out;
    attempt([&] { fx.render(0, host::Depth::bits8, out); });
    fx.save();
  });
  test.requireNothingLeft();
}

}  // namespace
}  // namespace fuzz

// The first byte says whether the preamble is put right, and of which version; the file follows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto bytes = std::as_bytes(std::span(data, size).subspan(1));
  std::vector<std::byte> file(bytes.begin(), bytes.end());
  if (data[0] % 2 == 1) fuzz::repair(file, 1U + (data[0] / 2U) % 2U);
  static fuzz::MemoryFile memory;
  memory.fill(file);
  try {
    const cli::Project project = cli::readProject(memory.path());
    fuzz::describe(project);
    constexpr std::size_t kEnoughShots = 8;
    for (std::size_t i = 0; i < std::min(project.shots.size(), kEnoughShots); ++i) {
      fuzz::open(project, project.shots[i]);
    }
  } catch (const cli::Failure&) {
  }
  return 0;
}
