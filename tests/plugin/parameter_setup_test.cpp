// tests/plugin/parameter_setup_test.cpp — the declarations as a host takes them.
#include "plugin/parameter_setup.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "plugin/dispatch.h"
#include "tests/plugin/handle_table.h"

namespace varilum {
namespace {

struct Declared {
  std::int32_t index;
  std::int32_t type;
  std::string name;
  std::int32_t flags;
  std::int32_t uiFlags;
};

// As the users' projects and panels know them, in the classic numbers of the host interface.
const std::vector<Declared> kDeclared = {
    {1, 13, "About and help", 0, 0},
    {2, 15, "", 66, 0},
    {3, 15, "", 66, 512},
    {4, 15, "", 66, 0},
    {5, 15, "", 66, 512},
    {6, 14, "", 0, 0},
    {7, 15, " ", 66, 0},
    {8, 15, " ", 66, 0},
    {9, 13, "Analyze options", 0, 0},
    {10, 2, "Speed (1=accurate, 5=fast)", 66, 0},
    {11, 4, "Analyze within sub-rectangle", 98, 0},
    {12, 6, "1st sub-rectangle corner", 64, 0},
    {13, 6, "2nd sub-rectangle corner", 64, 0},
    {14, 4, "Favor brighter pixels", 66, 0},
    {15, 4, "Don't deflicker", 64, 0},
    {16, 14, "", 0, 0},
    {17, 13, "Deflicker options", 0, 0},
    {18, 7, "Deflicker method", 66, 0},
    {19, 7, "Correction method", 66, 0},
    {20, 4, "Use gamma correction", 66, 520},
    {21, 2, "Number of smoothing frames", 96, 0},
    {22, 4, "Adjust for clipping", 66, 0},
    {23, 2, "Adjust for clipping at %", 64, 0},
    {24, 14, "", 0, 0},
    {25, 11, "Luminance", 0, 2},
    {26, 2, "Shift spread", 64, 0},
    {27, 13, "Luminance graph options", 0, 0},
    {28, 4, "Zoom luminance scale", 66, 0},
    {29, 4, "Show red histogram", 66, 0},
    {30, 4, "Show green histogram", 66, 0},
    {31, 4, "Show blue histogram", 66, 0},
    {32, 14, "", 0, 0},
    {33, 10, "Counter", 64, 512},
    {34, 4, "Needs Analyze", 64, 512},
};

class ParameterSetup : public ::testing::Test {
 protected:
  ParameterSetup() {
    current_ = this;
    in_.utils = table_.utils();
    in_.inter.add_param = [](PF_ProgPtr, std::int32_t where, PF_ParamDef* definition) {
      EXPECT_EQ(where, -1);
      if (static_cast<int>(current_->added_.size()) == current_->refuseAt_) return 516;
      current_->added_.push_back(*definition);
      return 0;
    };
    in_.inter.register_ui = [](PF_ProgPtr, PF_CustomUIInfo* info) {
      current_->panels_.push_back(*info);
      return current_->panelError_;
    };
    out_.global_data = table_.create(sizeof(GlobalState));
    global() = GlobalState{};
  }
  ~ParameterSetup() override {
    EXPECT_EQ(table_.locks(), 0);
    EXPECT_EQ(table_.violations(), 0);
  }

  GlobalState& global() {
    return *reinterpret_cast<GlobalState*>(table_.bytes(out_.global_data).data());
  }

  std::int32_t run() {
    return dispatch(PF_Cmd_PARAMS_SETUP, {in_, out_, nullptr, nullptr, nullptr});
  }
  const PF_ParamDef& param(std::size_t index) const { return added_.at(index - 1); }

  inline static ParameterSetup* current_ = nullptr;
  HandleTable table_;
  PF_InData in_{};
  PF_OutData out_{};
  std::vector<PF_ParamDef> added_;
  std::vector<PF_CustomUIInfo> panels_;
  int refuseAt_ = -1;  // number of parameters that are taken
  std::int32_t panelError_ = 0;
};

TEST_F(ParameterSetup, DeclaresEveryParameterInOrder) {
  ASSERT_EQ(run(), 0);
  EXPECT_EQ(out_.num_params, 35);
  ASSERT_EQ(added_.size(), kDeclared.size());
  for (std::size_t i = 0; i < kDeclared.size(); ++i) {
    SCOPED_TRACE(kDeclared[i].index);
    EXPECT_EQ(added_[i].uu.id, kDeclared[i].index);
    EXPECT_EQ(added_[i].param_type, kDeclared[i].type);
    EXPECT_EQ(added_[i].name, kDeclared[i].name);
    EXPECT_EQ(added_[i].flags, kDeclared[i].flags);
    EXPECT_EQ(added_[i].ui_flags, kDeclared[i].uiFlags);
  }
}

TEST_F(ParameterSetup, HidesAboutInAfterEffectsOnly) {
  global().isAfterEffects = 1;
  ASSERT_EQ(run(), 0);
  EXPECT_EQ(param(2).ui_flags, 512);
  EXPECT_EQ(param(4).ui_flags, 0);
}

TEST_F(ParameterSetup, DeclaresRangesAndDefaults) {
  struct Slider {
    std::size_t index;
    std::int32_t least, greatest, initial;
    std::int16_t precision;
  };
  ASSERT_EQ(run(), 0);
  for (const Slider& slider : {Slider{10, 1, 20, 5, 0}, Slider{21, 1, 60, 30, 0},
                               Slider{23, 10, 100, 99, 0}, Slider{26, 0, 255, 0, 2}}) {
    SCOPED_TRACE(slider.index);
    const PF_FixedSliderDef& fd = param(slider.index).u.fd;
    EXPECT_EQ(fd.valid_min, slider.least * 65536);
    EXPECT_EQ(fd.slider_min, slider.least * 65536);
    EXPECT_EQ(fd.valid_max, slider.greatest * 65536);
    EXPECT_EQ(fd.slider_max, slider.greatest * 65536);
    EXPECT_EQ(fd.dephault, slider.initial * 65536);
    EXPECT_EQ(fd.precision, slider.precision);
  }
  EXPECT_EQ(param(12).u.td.x_dephault, 25 * 65536);
  EXPECT_EQ(param(12).u.td.y_dephault, 25 * 65536);
  EXPECT_EQ(param(13).u.td.x_dephault, 75 * 65536);
  EXPECT_EQ(param(13).u.td.y_dephault, 75 * 65536);
  EXPECT_EQ(param(12).u.td.restrict_bounds, 0);
  EXPECT_EQ(param(18).u.pd.num_choices, 2);
  EXPECT_EQ(param(18).u.pd.dephault, 2);
  EXPECT_STREQ(param(18).u.pd.u.namesptr, "Keyframes|Smoothing");
  EXPECT_EQ(param(19).u.pd.num_choices, 3);
  EXPECT_EQ(param(19).u.pd.dephault, 1);
  EXPECT_STREQ(param(19).u.pd.u.namesptr, "Linear|Shift|Gamma");
  const PF_FloatSliderDef& counter = param(33).u.fs_d;
  EXPECT_EQ(counter.value, 0.0);
  EXPECT_EQ(counter.valid_max, 64000.0f);
  EXPECT_EQ(counter.slider_max, 64000.0f);
  EXPECT_EQ(counter.precision, 2);
  EXPECT_EQ(counter.curve_tolerance, 0.05f);
  for (const std::size_t checkbox : {11u, 14u, 15u, 20u, 22u, 28u, 29u, 30u, 31u, 34u}) {
    EXPECT_EQ(param(checkbox).u.bd.dephault, 0) << checkbox;
    EXPECT_STREQ(param(checkbox).u.bd.u.nameptr, "") << checkbox;
  }
}

TEST_F(ParameterSetup, LabelsTheButtons) {
  ASSERT_EQ(run(), 0);
  EXPECT_STREQ(param(2).u.button_d.u.namesptr, "About");
  EXPECT_STREQ(param(3).u.button_d.u.namesptr, "");
  EXPECT_STREQ(param(4).u.button_d.u.namesptr, "Help");
  EXPECT_STREQ(param(7).u.button_d.u.namesptr, "Analyze");
  EXPECT_STREQ(param(8).u.button_d.u.namesptr, "Clear");
}

TEST_F(ParameterSetup, GivesLuminanceADefaultAndAPanel) {
  ASSERT_EQ(run(), 0);
  const PF_ParamDef& luminance = param(25);
  EXPECT_EQ(luminance.ui_width, 400);
  EXPECT_EQ(luminance.ui_height, 332);
  EXPECT_EQ(luminance.u.arb_d.id, 25);
  EXPECT_EQ(luminance.u.arb_d.value, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(luminance.u.arb_d.refconPV), 0xDEADBEEFu);
  double value = 0.0;
  std::memcpy(&value, table_.bytes(luminance.u.arb_d.dephault).data(), sizeof value);
  EXPECT_EQ(value, 128.0);
  ASSERT_EQ(panels_.size(), 1u);
  EXPECT_EQ(panels_[0].events, 4);
  EXPECT_EQ(panels_[0].comp_ui_width, 0);
}

TEST_F(ParameterSetup, StopsAtTheFirstRefusalAndKeepsNothing) {
  for (int taken = 0; taken < 34; ++taken) {
    SCOPED_TRACE(taken);
    added_.clear();
    out_.num_params = 0;
    refuseAt_ = taken;
    const std::size_t before = table_.live();
    EXPECT_EQ(run(), 516);
    EXPECT_EQ(added_.size(), static_cast<std::size_t>(taken));
    EXPECT_EQ(out_.num_params, 0);
    // Once Luminance was taken (25 parameters), its default is the host's.
    EXPECT_EQ(table_.live() - before, taken >= 25 ? 1u : 0u);
  }
}

TEST_F(ParameterSetup, CarriesARefusedPanelToTheEnd) {
  panelError_ = 513;
  EXPECT_EQ(run(), 513);
  EXPECT_EQ(added_.size(), 34u);
  EXPECT_EQ(out_.num_params, 35);
}

TEST_F(ParameterSetup, EndsWhenTheDefaultWillNotLock) {
  table_.refuseLock(2);  // after the global data
  EXPECT_EQ(run(), PF_Err_OUT_OF_MEMORY);
  EXPECT_EQ(added_.size(), 24u);
}

TEST_F(ParameterSetup, AddsLuminanceWithoutADefaultWhenThereIsNoMemory) {
  table_.refuseNew(1);
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(param(25).u.arb_d.dephault, nullptr);
}

}  // namespace
}  // namespace varilum
