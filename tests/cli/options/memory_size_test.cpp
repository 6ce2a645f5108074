// tests/cli/options/memory_size_test.cpp — sizes as people write them, and the machine's own.
#include "cli/options/memory_size.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace cli {
namespace {

TEST(MemorySize, UnderstandsUnitsOf1024) {
  EXPECT_EQ(parseMemorySize("0"), 0U);
  EXPECT_EQ(parseMemorySize("1000"), 1000U);
  EXPECT_EQ(parseMemorySize("3K"), 3072U);
  EXPECT_EQ(parseMemorySize("512M"), 536'870'912U);
  EXPECT_EQ(parseMemorySize("2g"), 2'147'483'648U);
  EXPECT_EQ(parseMemorySize("1.5G"), 1'610'612'736U);
  EXPECT_EQ(parseMemorySize("1T"), 1'099'511'627'776U);
}

TEST(MemorySize, RefusesWhatIsNoSize) {
  for (const char* text : {"", "G", "-1", "2GB", "2 G", "2X", "1e3", "nan", "inf", "99999999T"}) {
    EXPECT_FALSE(parseMemorySize(text)) << text;
  }
}

#ifdef __linux__
TEST(MemorySize, TheMachineHasNoMoreThanTheKernelCounts) {
  std::ifstream in("/proc/meminfo");
  std::string name;
  std::uint64_t kibibytes = 0;
  ASSERT_TRUE(in >> name >> kibibytes);
  ASSERT_EQ(name, "MemTotal:");
  EXPECT_GT(machineMemory(), 16U << 20U);
  EXPECT_LE(machineMemory(), kibibytes * 1024);
}
#endif

}  // namespace
}  // namespace cli
