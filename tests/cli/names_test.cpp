// tests/cli/names_test.cpp — names with characters of many scripts, beyond any code page.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

namespace fs = std::filesystem;

// As programs are given them: in UTF-8, whatever std::filesystem makes of narrow text.
std::string narrow(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

class FileNames : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(place_);
    writeLossless(folder_ / clip("plain"), kIn);
    fs::rename(folder_.path() / clip("plain"), in_);
  }
  std::string ok(const std::vector<std::string>& arguments) {
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return outcome.out;
  }
  // The clip under a name that everybody can open.
  Frames read(const fs::path& path) {
    EXPECT_TRUE(fs::exists(path));
    fs::rename(path, folder_.path() / clip("read"));
    return readStripes(folder_ / clip("read"), kEight);
  }

  const Frames kIn = flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7});
  ScratchFolder folder_;
  // Czech, Greek, Chinese, and a sign that takes two halves in UTF-16.
  const fs::path place_ = folder_.path() / u8"k\u016F\u0148 \u03C0 \u6F22\u5B57 \U0001D11E";
  const fs::path in_ = place_ / fs::path(u8"\u0159eka").concat(clip(""));
};

TEST_F(FileNames, OfEveryScriptAreReadWrittenAndKeptInProjects) {
  const fs::path out = place_ / fs::path(u8"\u732B").concat(clip(""));
  const fs::path project = place_ / u8"\u03A9.varilum";
  const fs::path cuts = place_ / u8"\u0161\u0165.txt";
  std::ofstream(cuts) << "3\n";
  ok({"deflicker", narrow(in_), narrow(out), "--shots", narrow(cuts)});
  const Frames steady = read(out);
  EXPECT_EQ(steady.size(), kIn.size());
  EXPECT_NE(steady, kIn);
  ok({"analyze", narrow(in_), "-o", narrow(project), "--shots", narrow(cuts)});
  ok({"render", narrow(project), narrow(out)});
  EXPECT_EQ(read(out), steady);
  // Nothing else was made of any name.
  std::size_t entries = 0;
  for (const auto& entry : fs::directory_iterator(place_)) entries += entry.exists() ? 1U : 0U;
  EXPECT_EQ(entries, 3U);
}

TEST_F(FileNames, AreToldInUtf8) {
  const Outcome outcome = varilum({"info", narrow(place_ / u8"\u00DCber.y4m")});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.err.find(narrow(u8"\u00DCber.y4m")), std::string::npos) << outcome.err;
}

}  // namespace
}  // namespace cli::test
