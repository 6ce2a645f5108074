// tests/cli/output_file_test.cpp — files appear whole or not at all.
#include "cli/output_file.h"

#include <gtest/gtest.h>

#include <string>

#include "cli/error.h"
#include "tests/cli/scratch_folder.h"

namespace cli {
namespace {

using test::readFile;
using test::ScratchFolder;
using test::writeFile;
using Names = std::vector<std::string>;

void write(OutputFile& file, const std::string& text) {
  file.write(std::as_bytes(std::span(text)));
}

TEST(OutputFile, StandsUnderItsNameOnlyWhenCommitted) {
  const ScratchFolder folder;
  {
    OutputFile file(folder / "a.txt", false);
    write(file, "half");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.txt"));
  }
  EXPECT_EQ(folder.names(), Names{});
  OutputFile file(folder / "a.txt", false);
  write(file, "one ");
  write(file, "two");
  file.commit();
  EXPECT_EQ(folder.names(), Names{"a.txt"});
  EXPECT_EQ(readFile(folder / "a.txt"), "one two");
}

TEST(OutputFile, KeepsWhatCameInTheMeantime) {
  const ScratchFolder folder;
  {
    OutputFile file(folder / "a.txt", false);
    write(file, "new");
    writeFile(folder / "a.txt", "mine");
    EXPECT_THROW(file.commit(), Failure);
  }
  EXPECT_EQ(folder.names(), Names{"a.txt"});
  EXPECT_EQ(readFile(folder / "a.txt"), "mine");
}

TEST(OutputFile, ReplacesWhenForced) {
  const ScratchFolder folder;
  writeFile(folder / "a.txt", "old");
  OutputFile file(folder / "a.txt", true);
  write(file, "new");
  EXPECT_EQ(readFile(folder / "a.txt"), "old");
  file.commit();
  EXPECT_EQ(readFile(folder / "a.txt"), "new");
}

TEST(OutputFile, RefusesFoldersAndPlacesThatAreNotThere) {
  const ScratchFolder folder;
  EXPECT_THROW(requireWritable(folder.path(), true), Failure);
  EXPECT_THROW(requireWritable(folder.path() / "none" / "a.txt", true), Failure);
  EXPECT_NO_THROW(requireWritable(folder.path() / "a.txt", false));
}

}  // namespace
}  // namespace cli
