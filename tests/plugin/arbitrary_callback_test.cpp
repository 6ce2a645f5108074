// tests/plugin/arbitrary_callback_test.cpp — the Luminance value in the host's hands.
#include "plugin/arbitrary_callback.h"

#include <gtest/gtest.h>

#include <cstring>

#include "hostapi/arbitrary.h"
#include "plugin/dispatch.h"
#include "tests/plugin/handle_table.h"

namespace varilum {
namespace {

void* const kRefcon = reinterpret_cast<void*>(std::uintptr_t{0xDEADBEEF});
void* const kSecondRefcon = reinterpret_cast<void*>(std::uintptr_t{0xDEADBEAD});
void* const kWrongRefcon = reinterpret_cast<void*>(std::uintptr_t{0x1234});

class ArbitraryCallback : public ::testing::Test {
 protected:
  ArbitraryCallback() { in_.utils = table_.utils(); }
  ~ArbitraryCallback() override {
    EXPECT_EQ(table_.locks(), 0);
    EXPECT_EQ(table_.violations(), 0);
  }

  std::int32_t call(std::int32_t selector) {
    extra_.which_function = selector;
    extra_.id = 25;
    return dispatch(PF_Cmd_ARBITRARY_CALLBACK, {in_, out_, nullptr, nullptr, &extra_});
  }

  void** value(double luminance) {
    void** handle = table_.create(sizeof luminance);
    std::memcpy(table_.bytes(handle).data(), &luminance, sizeof luminance);
    return handle;
  }

  double read(void** handle) {
    double luminance = -1000.0;
    EXPECT_EQ(table_.bytes(handle).size(), 8u);
    std::memcpy(&luminance, table_.bytes(handle).data(), sizeof luminance);
    return luminance;
  }

  std::int32_t interpolate(void** left, void** right, double fraction) {
    extra_.u.interp_func_params = {kRefcon, left, right, fraction, &result_};
    return call(PF_Arbitrary_INTERP_FUNC);
  }

  std::int32_t compare(void** a, void** b) {
    comparison_ = 99;
    extra_.u.compare_func_params = {kRefcon, a, b, &comparison_};
    return call(PF_Arbitrary_COMPARE_FUNC);
  }

  std::int32_t scan(const char* text) {
    result_ = nullptr;
    extra_.u.scan_func_params = {kRefcon, text, 1, &result_};
    return call(PF_Arbitrary_SCAN_FUNC);
  }

  HandleTable table_;
  PF_InData in_{};
  PF_OutData out_{};
  PF_ArbParamsExtra extra_{};
  void** result_ = nullptr;
  std::int32_t comparison_ = 99;
};

TEST_F(ArbitraryCallback, NewMakesTheDefault) {
  extra_.u.new_func_params = {kSecondRefcon, &result_};
  EXPECT_EQ(call(0), 0);
  EXPECT_EQ(read(result_), 128.0);
}

TEST_F(ArbitraryCallback, NewWithoutMemoryIsNoErrorAndNoValue) {
  table_.refuseNew(1);
  extra_.u.new_func_params = {kRefcon, &result_};
  EXPECT_EQ(call(0), 0);
  EXPECT_EQ(result_, nullptr);
}

TEST_F(ArbitraryCallback, NewThatWillNotLockLeavesNothingBehind) {
  table_.refuseLock(1);
  extra_.u.new_func_params = {kRefcon, &result_};
  EXPECT_EQ(call(0), PF_Err_OUT_OF_MEMORY);
  EXPECT_EQ(result_, nullptr);
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(ArbitraryCallback, KnowsItsTwoRefcons) {
  extra_.u.new_func_params = {kWrongRefcon, &result_};
  EXPECT_EQ(call(0), 512);
  extra_.u.dispose_func_params = {kWrongRefcon, nullptr};
  EXPECT_EQ(call(1), 512);
  extra_.u.copy_func_params = {kWrongRefcon, nullptr, &result_};
  EXPECT_EQ(call(2), 0);
  extra_.u.interp_func_params = {kWrongRefcon, nullptr, nullptr, 0.5, &result_};
  EXPECT_EQ(call(6), 0);
  std::uint32_t size = 0;
  extra_.u.print_size_func_params = {kSecondRefcon, nullptr, &size};
  EXPECT_EQ(call(8), 514) << "the one call that takes the first only";
  extra_.u.print_func_params = {kWrongRefcon, 0, nullptr, 0, nullptr};
  EXPECT_EQ(call(9), 514);
  extra_.u.scan_func_params = {kWrongRefcon, "1", 1, &result_};
  EXPECT_EQ(call(10), 514);
  EXPECT_EQ(table_.live(), 0u);
  EXPECT_EQ(result_, nullptr);
}

TEST_F(ArbitraryCallback, DisposeGivesTheHandleBack) {
  extra_.u.dispose_func_params = {kRefcon, value(1.0)};
  EXPECT_EQ(call(1), 0);
  EXPECT_EQ(table_.live(), 0u);
}

TEST_F(ArbitraryCallback, CopyMakesAnEqualValueOrTheDefault) {
  extra_.u.copy_func_params = {kRefcon, value(77.25), &result_};
  EXPECT_EQ(call(2), 0);
  EXPECT_EQ(read(result_), 77.25);
  extra_.u.copy_func_params = {kSecondRefcon, nullptr, &result_};
  EXPECT_EQ(call(2), 0);
  EXPECT_EQ(read(result_), 128.0);
}

TEST_F(ArbitraryCallback, FlattensIntoExactlyEightBytes) {
  std::uint32_t size = 0;
  extra_.u.flat_size_func_params = {kWrongRefcon, nullptr, &size};
  EXPECT_EQ(call(3), 0);
  EXPECT_EQ(size, 8u);
  unsigned char buffer[16];
  std::memset(buffer, 0xEE, sizeof buffer);
  extra_.u.flatten_func_params = {kWrongRefcon, value(1.0), 16, buffer};
  EXPECT_EQ(call(4), 0);
  EXPECT_EQ(buffer[0], 0xEE) << "another size: nothing is written";
  extra_.u.flatten_func_params.buf_sizeLu = 8;
  EXPECT_EQ(call(4), 0);
  const unsigned char one[] = {0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0xEE};
  EXPECT_EQ(std::memcmp(buffer, one, sizeof one), 0);
}

TEST_F(ArbitraryCallback, UnflattensFromExactlyEightBytes) {
  const unsigned char two[] = {0, 0, 0, 0, 0, 0, 0, 0x40};
  extra_.u.unflatten_func_params = {kWrongRefcon, 7, two, &result_};
  EXPECT_EQ(call(5), 0);
  EXPECT_EQ(result_, nullptr);
  extra_.u.unflatten_func_params = {kWrongRefcon, 8, two, &result_};
  EXPECT_EQ(call(5), 0);
  EXPECT_EQ(read(result_), 2.0);
}

TEST_F(ArbitraryCallback, InterpolatesBetweenValues) {
  EXPECT_EQ(interpolate(value(100.0), value(140.0), 0.25), 0);
  EXPECT_EQ(read(result_), 110.0);
  EXPECT_EQ(interpolate(nullptr, value(140.0), 0.25), 0);
  EXPECT_EQ(read(result_), 128.0) << "one is missing: the default";
}

TEST_F(ArbitraryCallback, ComparesValues) {
  void** small = value(1.0);
  void** large = value(2.0);
  EXPECT_EQ(compare(large, small), 0);
  EXPECT_EQ(comparison_, 2);
  EXPECT_EQ(compare(small, large), 0);
  EXPECT_EQ(comparison_, 1);
  EXPECT_EQ(compare(small, small), 0);
  EXPECT_EQ(comparison_, 0);
  EXPECT_EQ(compare(small, nullptr), 0);
  EXPECT_EQ(comparison_, 0);
  table_.refuseLock(2);
  EXPECT_EQ(compare(small, large), 514);
}

TEST_F(ArbitraryCallback, PrintsWithoutFlagsIntoLargeBuffers) {
  char buffer[64] = "old";
  extra_.u.print_func_params = {kSecondRefcon, 0, value(3.14159), 64, buffer};
  EXPECT_EQ(call(9), 0);
  EXPECT_STREQ(buffer, "3.14  ");
  extra_.u.print_func_params.print_flags = PF_ArbPrint_ABBREVIATED;
  EXPECT_EQ(call(9), 0);
  EXPECT_STREQ(buffer, "");
  std::strcpy(buffer, "old");
  extra_.u.print_func_params = {kRefcon, 0, value(1.0), 63, buffer};
  EXPECT_EQ(call(9), 0);
  EXPECT_STREQ(buffer, "");
  std::strcpy(buffer, "old");
  extra_.u.print_func_params = {kRefcon, 0, nullptr, 64, buffer};
  EXPECT_EQ(call(9), 0);
  EXPECT_STREQ(buffer, "old") << "no value: untouched";
  extra_.u.print_func_params = {kRefcon, 0, value(1e300), 64, buffer};
  EXPECT_EQ(call(9), 4);
  table_.refuseLock(1);
  EXPECT_EQ(call(9), 514);
  std::uint32_t size = 0;
  extra_.u.print_size_func_params = {kRefcon, nullptr, &size};
  EXPECT_EQ(call(8), 0);
  EXPECT_EQ(size, 64u);
}

TEST_F(ArbitraryCallback, ScansNumbersAndKeepsTheDefaultOtherwise) {
  EXPECT_EQ(scan(" 42.5 "), 0);
  EXPECT_EQ(read(result_), 42.5);
  EXPECT_EQ(scan("abc"), 0xFEBE02);
  EXPECT_EQ(read(result_), 128.0);
  EXPECT_EQ(scan(""), 0xFEBE00);
  EXPECT_EQ(read(result_), 128.0);
}

TEST_F(ArbitraryCallback, PassesOverOtherSelectors) {
  EXPECT_EQ(call(11), 0);
  EXPECT_EQ(call(-1), 0);
}

}  // namespace
}  // namespace varilum
