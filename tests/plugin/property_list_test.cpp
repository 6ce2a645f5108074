// tests/plugin/property_list_test.cpp — the property list, byte for byte.
#include "resources/property_list.h"

#include <gtest/gtest.h>

#include <string>

namespace varilum {
namespace {

std::string bytes(std::initializer_list<int> values) {
  std::string result;
  for (const int value : values) result.push_back(static_cast<char>(value));
  return result;
}

// Worked out by hand: codes and numbers with their lowest byte first.
std::string expectedList() {
  const std::string id = bytes({0, 0, 0, 0});
  const auto length = [](int n) { return bytes({n, 0, 0, 0}); };
  std::string list = bytes({1, 0}) + bytes({0, 0, 0, 0}) + bytes({12, 0, 0, 0});
  list += "MIB8dnik" + id + length(4) + "TKFe";
  list += "MIB8eman" + id + length(12) + bytes({8}) + "Varilum4" + bytes({0, 0, 0});
  list += "MIB8gtac" + id + length(8) + bytes({5}) + "Tovan" + bytes({0, 0});
  list += "MIB84668" + id + length(16) + "EntryPointFunc" + bytes({0, 0});
  list += "MIB8RVPe" + id + length(4) + bytes({2, 0, 0, 0});
  list += "MIB8RVSe" + id + length(4) + bytes({13, 0, 14, 0});
  list += "MIB8REVe" + id + length(4) + bytes({0x01, 0x00, 0x21, 0x00});
  list += "MIB8FNIe" + id + length(2) + bytes({3, 0, 0, 0});
  list += "MIB8OLGe" + id + length(4) + bytes({0x54, 0x85, 0x00, 0x06});
  list += "MIB82LGe" + id + length(4) + bytes({0x01, 0x94, 0xF0, 0x01});
  list += "MIB8ANMe" + id + length(16) + bytes({14}) + "Tovan Varilum4" + bytes({0});
  list += "MIB8LFea" + id + length(4) + bytes({0, 0, 0, 0});
  return list;
}

TEST(PropertyList, IsTheWindowsFormByteForByte) {
  const auto list = encodePropertyList();
  EXPECT_EQ(list.size(), 286u);
  EXPECT_EQ(std::string(list.begin(), list.end()), expectedList());
}

TEST(EffectIdentity, ReportsTheAgreedNumbers) {
  EXPECT_EQ(kOutFlags, 0x06008554);
  EXPECT_EQ(kOutFlags2, 0x01F09401);
  EXPECT_EQ(kEffectVersion, 0x00210001u);
  EXPECT_EQ(kEffectVersion, (4u << 19) + (2u << 15) + (0u << 11) + (0u << 9) + 1u);
}

}  // namespace
}  // namespace varilum
