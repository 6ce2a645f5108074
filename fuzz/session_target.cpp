// fuzz/session_target.cpp — scripts of the session command, with a clip and a project at hand.
//
// Scripts name files. Lines with a slash in a word are left out, so that all names are looked up in
// a folder of this process's own, which is tidied between inputs.
#include <unistd.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

#include "cli/commands.h"
#include "cli/error.h"
#include "fuzz/effect_under_test.h"
#include "fuzz/small_clip.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

constexpr const char* kClip = "c.y4m";
constexpr const char* kProject = "p.varilum";
constexpr const char* kKept = "kept";

void runSession(const std::string& script) {
  std::istringstream lines(script);
  std::streambuf* const before = std::cin.rdbuf(lines.rdbuf());
  std::cin.clear();
  CLI::App app;
  cli::Work work;
  cli::addSessionCommand(app, work);
  app.parse("session --quiet --threads 1");
  try {
    work();
  } catch (const cli::Failure&) {
    // Some command failed, and the answers said so.
  }
  std::cin.rdbuf(before);
}

class Folder {
 public:
  Folder() {
    std::string name = (fs::temp_directory_path() / "varilum-fuzz-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) breach("no folder to work in");
    path_ = name;
    fs::current_path(path_);
    writeSmallClip(kClip);
    if (std::freopen("/dev/null", "w", stdout) == nullptr) breach("the answers go nowhere");
    runSession("open c.y4m\npress Analyze\nsave p.varilum\n");
    if (!fs::exists(kProject)) breach("the project to start from was not made");
    fs::copy(kProject, kKept);
  }
  ~Folder() {
    std::error_code ignored;
    fs::current_path("/", ignored);
    fs::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  // Takes away what a script wrote, and puts back what it replaced.
  void tidy() {
    for (const auto& entry : fs::directory_iterator(path_)) {
      if (entry.path().filename() != kKept) fs::remove_all(entry.path());
    }
    fs::copy(kKept, kProject);
    writeSmallClip(kClip);
  }

 private:
  fs::path path_;
};

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The fuzzer writes to the library's counters between inputs, so that it must not be unloaded.
  [[maybe_unused]] static const fuzz::EffectUnderTest& loaded = fuzz::effectUnderTest(0);
  static fuzz::Folder folder;
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string script;
  for (std::string line; std::getline(lines, line);) {
    if (line.find('/') == std::string::npos) script += line + "\n";
  }
  fuzz::runSession(script);
  folder.tidy();
  return 0;
}
