// tests/media/remains_test.cpp — what killed runs left goes, what is in use stays.
#include "media/remains.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "media/pending_file.h"
#include "media/temporary_folder.h"
#include "tests/media/media_fixture.h"

namespace media {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Remains : public testing::Test {
 protected:
  void leave(const std::string& name) { std::ofstream(folder_ / name) << "half"; }

  test::ScratchFolder folder_;
};

TEST_F(Remains, FilesAndFoldersThatNobodyUsesGo) {
  leave(".out.part-17-0.mov");
  std::filesystem::create_directory(folder_ / ".out.part-17-1");
  leave(".out.part-17-1/picture.png");
  removeRemains(folder_.path(), "out");
  EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(Remains, OtherNamesStay) {
  const std::vector<std::string> names{".other.part-17-0.mov", ".out.mov",
                                       ".out.part-17.mov",     ".out.part-x-0.mov",
                                       ".out.part-17-0x",      "out.part-17-0.mov"};
  for (const std::string& name : names) leave(name);
  removeRemains(folder_.path(), "out");
  EXPECT_THAT(folder_.names(), testing::UnorderedElementsAreArray(names));
}

TEST_F(Remains, WhatIsInUseStaysUntilItsProcessIsGone) {
  const PendingFile file(folder_ / "out.mov", false);
  const TemporaryFolder pictures(folder_.path(), "out");
  removeRemains(folder_.path(), "out");
  EXPECT_THAT(folder_.names(), testing::SizeIs(2));
  leave(".out.part-17-0.mov");
  file.removeRemains();
  EXPECT_THAT(folder_.names(), testing::SizeIs(2));
}

// Process numbers come again, in containers at every start.
TEST_F(Remains, NamesThatAreTakenAreNoObstacle) {
  const std::string next = temporaryName("out", ".mov");
  const auto serial = std::stoi(next.substr(next.rfind('-') + 1));
  const std::string process = next.substr(0, next.rfind('-') + 1);
  leave(process + std::to_string(serial + 1) + ".mov");
  leave(process + std::to_string(serial + 2) + ".mov");
  PendingFile file(folder_ / "out.mov", false);
  ASSERT_TRUE(file.write(reinterpret_cast<const std::uint8_t*>("whole"), 5));
  file.removeRemains();
  file.commit();
  EXPECT_THAT(folder_.names(), ElementsAre("out.mov"));
  EXPECT_EQ(std::filesystem::file_size(folder_ / "out.mov"), 5U);
}

}  // namespace
}  // namespace media
