// tests/validate/property_list_test.cpp — a library and a property list that say different things.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "hostapi/property_list.h"
#include "tests/validate/attach_property_list.h"
#include "tests/validate/run_odd_effect.h"

namespace {

namespace fs = std::filesystem;

// A property list written by hand; the odd effect says version 0x00080001 and no flags.
class ListWriter {
 public:
  ListWriter() {
    number(1, 2);
    number(0, 4);
    number(7, 4);
  }
  void word(std::uint32_t key, std::uint32_t value) {
    head(key, 4);
    number(value, 4);
  }
  void text(std::uint32_t key, const std::string& value, bool pascal) {
    const std::string data = pascal ? static_cast<char>(value.size()) + value : value + '\0';
    head(key, data.size());
    bytes_ += data;
    while (bytes_.size() % 4 != 2) bytes_ += '\0';
  }
  const std::string& bytes() const { return bytes_; }

 private:
  void head(std::uint32_t key, std::size_t length) {
    number(kPropertyVendor, 4);
    number(key, 4);
    number(0, 4);
    number(length, 4);
  }
  void number(std::size_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) bytes_ += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  std::string bytes_;
};

class PropertyList : public testing::Test {
 protected:
  PropertyList() {
    fs::create_directory(folder_);
    fs::copy_file(VARILUM_ODD_EFFECT_PATH, library_);
  }
  ~PropertyList() override { fs::remove_all(folder_); }

  validate::RunResult judge(std::uint32_t flags, std::uint32_t version, const std::string& name) {
    ListWriter list;
    list.word(kPropertyKind, kKindEffect);
    list.text(kPropertyName, name, true);
    list.text(kPropertyCategory, "Odd", true);
    list.text(kPropertyMatchName, "odd effect", true);
    list.text(kPropertyEntry64, "EntryPointFunc", false);
    list.word(kPropertyEffectVersion, version);
    list.word(kPropertyOutFlags, flags);
    attachPropertyList(library_, list.bytes());
    const OddVariant variant("plain");
    return validate::runChecks(judging(library_.string(), {"load", "set-up"}));
  }

 private:
  const fs::path folder_ =
      fs::temp_directory_path() / ("odd_effect_" + std::to_string(std::random_device{}()));
  const fs::path library_ = folder_ / fs::path(VARILUM_ODD_EFFECT_PATH).filename();
};

TEST_F(PropertyList, OfTheSameFlagsAndVersionIsFine) {
  const validate::RunResult result = judge(0, 0x00080001, "Odd");
  EXPECT_EQ(describe(result), "");
}

TEST_F(PropertyList, OfOtherFlagsIsFoundOut) {
  const validate::RunResult result = judge(0x40, 0x00080001, "Odd");
  EXPECT_THAT(rulesBroken(result), testing::ElementsAre("property-mismatch"));
}

TEST_F(PropertyList, OfAnotherVersionIsFoundOut) {
  const validate::RunResult result = judge(0, 0x00080002, "Odd");
  EXPECT_THAT(rulesBroken(result), testing::ElementsAre("property-mismatch"));
}

TEST_F(PropertyList, WithoutANameIsFoundOut) {
  const validate::RunResult result = judge(0, 0x00080001, "");
  EXPECT_THAT(rulesBroken(result), testing::ElementsAre("property-list"));
}

}  // namespace
