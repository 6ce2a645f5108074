// tests/host/property_list_test.cpp — reading well-formed, unpadded and damaged property lists.
#include "host/property_list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "host/error.h"

namespace {

// Written by hand, byte for byte, so that it shares nothing with the reader.
class ListBuilder {
 public:
  ListBuilder& property(const char* key, std::string data, bool padded = true) {
    ++count_;
    body_ += "MIB8";
    for (int i = 3; i >= 0; --i) body_ += key[i];
    body_ += std::string(4, '\0');
    body_ += little(static_cast<std::uint32_t>(data.size()), 4);
    body_ += data;
    if (padded) body_ += std::string((4 - data.size() % 4) % 4, '\0');
    return *this;
  }

  static std::string little(std::uint32_t value, int width) {
    std::string text;
    for (int i = 0; i < width; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
  }

  static std::string pascal(const std::string& text) {
    return static_cast<char>(text.size()) + text;
  }

  std::vector<std::byte> bytes() const {
    const std::string all = little(1, 2) + little(0, 4) + little(count_, 4) + body_;
    std::vector<std::byte> out;
    for (const char c : all) out.push_back(static_cast<std::byte>(c));
    return out;
  }

 private:
  std::string body_;
  std::uint32_t count_ = 0;
};

ListBuilder complete() {
  ListBuilder list;
  list.property("kind", "TKFe")
      .property("name", ListBuilder::pascal("Steady"))
      .property("catg", ListBuilder::pascal("Light"))
      .property("8664", std::string("Entry\0", 6))
      .property("eSVR", std::string("\x0D\0\x0E\0", 4))
      .property("eVER", ListBuilder::little(0x00210001, 4))
      .property("eINF", std::string("\x03\0", 2))
      .property("eGLO", ListBuilder::little(0x06008554, 4))
      .property("eGL2", ListBuilder::little(0x01F09401, 4))
      .property("eMNA", ListBuilder::pascal("Maker Steady"));
  return list;
}

TEST(PropertyList, readsEveryPropertyOfAnEffect) {
  const host::PropertyList list = host::readPropertyList(complete().bytes());
  EXPECT_EQ(list.name, "Steady");
  EXPECT_EQ(list.category, "Light");
  EXPECT_EQ(list.matchName, "Maker Steady");
  EXPECT_EQ(list.entryPoint, "Entry");
  EXPECT_EQ(list.specMajor, 13);
  EXPECT_EQ(list.specMinor, 14);
  EXPECT_EQ(list.effectVersion, 0x00210001u);
  EXPECT_EQ(list.outFlags, 0x06008554u);
  EXPECT_EQ(list.outFlags2, 0x01F09401u);
}

TEST(PropertyList, acceptsLengthsThatCountThePadding) {
  ListBuilder list;
  list.property("kind", "TKFe")
      .property("name", std::string("\x06Steady\0", 8))
      .property("8664", std::string("Entry\0\0\0", 8));
  const host::PropertyList read = host::readPropertyList(list.bytes());
  EXPECT_EQ(read.name, "Steady");
  EXPECT_EQ(read.entryPoint, "Entry");
}

TEST(PropertyList, refusesWhatIsNoEffectOrHasNoEntry) {
  ListBuilder other;
  other.property("kind", "XXXX").property("8664", std::string("Entry\0", 6));
  EXPECT_THROW(host::readPropertyList(other.bytes()), host::ModuleError);
  ListBuilder mute;
  mute.property("kind", "TKFe");
  EXPECT_THROW(host::readPropertyList(mute.bytes()), host::ModuleError);
}

TEST(PropertyList, everyTruncationIsRefused) {
  const std::vector<std::byte> whole = complete().bytes();
  // The last property may lose its padding, but no byte of its own.
  const std::size_t lastPadding = 3;
  for (std::size_t length = 0; length + lastPadding < whole.size(); ++length) {
    EXPECT_THROW(host::readPropertyList(std::span(whole).first(length)), host::ModuleError)
        << length;
  }
}

TEST(PropertyList, damageNeverReadsOutside) {
  const std::uint32_t seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int round = 0; round < 20000; ++round) {
    std::vector<std::byte> bytes = complete().bytes();
    for (int i = 0; i < 3; ++i) {
      bytes[random() % bytes.size()] = static_cast<std::byte>(random() & 0xFF);
    }
    // A vector of exact size: the sanitizer sees every read past it.
    bytes.shrink_to_fit();
    try {
      host::readPropertyList(bytes);
    } catch (const host::ModuleError&) {
      continue;
    }
  }
}

}  // namespace
