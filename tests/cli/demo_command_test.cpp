// tests/cli/demo_command_test.cpp — the demo overwrites nothing and says where it cannot write.
#include "cli/demo_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "cli/error.h"
#include "tests/cli/scratch_folder.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string failureOf(const cli::DemoOptions& options) {
  try {
    cli::runDemo(options);
  } catch (const cli::Failure& failure) {
    return failure.what();
  }
  return "no failure";
}

TEST(DemoCommand, KeepsFilesThatAreThere) {
  for (const char* name : {"flicker.mp4", "steady.mp4", "before_after.png", "levels.csv"}) {
    const cli::test::ScratchFolder folder;
    const fs::path file = folder.path() / name;
    std::ofstream(file) << "mine";
    cli::DemoOptions options;
    options.folder = folder.path().string();
    options.console.quiet = true;
    EXPECT_THAT(failureOf(options), HasSubstr(file.string()));
    std::string kept;
    std::ifstream(file) >> kept;
    EXPECT_EQ(kept, "mine");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
  }
}

TEST(DemoCommand, SaysThatTheFolderCannotBeMade) {
  const cli::test::ScratchFolder folder;
  std::ofstream(folder.path() / "file") << "in the way";
  cli::DemoOptions options;
  options.folder = (folder.path() / "file" / "demo").string();
  options.console.quiet = true;
  EXPECT_THAT(failureOf(options), HasSubstr(options.folder));
}

}  // namespace
