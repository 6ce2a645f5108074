// tests/plugin/parameter_ui_test.cpp — labels and greyed controls.
#include "plugin/parameter_ui.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "hostapi/suites/basic.h"
#include "hostapi/suites/param_utils.h"
#include "plugin/dispatch.h"
#include "plugin/param_index.h"
#include "tests/plugin/handle_table.h"

namespace varilum {
namespace {

struct Redefined {
  std::int32_t index;
  PF_ParamDef definition;
};

class ParameterUi : public ::testing::Test {
 protected:
  ParameterUi() {
    current_ = this;
    suite_.PF_UpdateParamUI = [](PF_ProgPtr, std::int32_t index, const PF_ParamDef* definition) {
      current_->calls_.push_back({index, *definition});
      return current_->error_;
    };
    basic_.AcquireSuite = [](const char* name, std::int32_t version, const void** table) {
      if (std::strcmp(name, "PF Param Utils Suite") != 0 || version != 3 || !current_->offered_) {
        return kSPSuiteNotFoundError;
      }
      ++current_->references_;
      *table = &current_->suite_;
      return kSPNoError;
    };
    basic_.ReleaseSuite = [](const char*, std::int32_t) {
      --current_->references_;
      return kSPNoError;
    };
    in_.utils = table_.utils();
    in_.pica_basicP = &basic_;
    in_.time_step = 1;
    out_.global_data = table_.create(sizeof(GlobalState));
    out_.sequence_data = table_.create(sizeof(SequenceState));
    global() = GlobalState{};
    global().isAfterEffects = 1;
    state() = freshSequenceState();
    for (PF_ParamDef& definition : definitions_) pointers_.push_back(&definition);
    param(PARAM_DEFLICKER_METHOD).u.pd.value = 2;
    param(PARAM_CORRECTION_METHOD).u.pd.value = 1;
    param(PARAM_SHIFT_SPREAD).u.fd.value = 1234;
  }
  ~ParameterUi() override {
    EXPECT_EQ(references_, 0);
    EXPECT_EQ(table_.locks(), 0);
  }

  template <class Record>
  Record& record(void** handle) {
    return *reinterpret_cast<Record*>(table_.bytes(handle).data());
  }
  GlobalState& global() { return record<GlobalState>(out_.global_data); }
  SequenceState& state() { return record<SequenceState>(out_.sequence_data); }
  PF_ParamDef& param(std::int32_t index) { return definitions_[static_cast<std::size_t>(index)]; }

  std::int32_t update() {
    calls_.clear();
    return dispatch(PF_Cmd_UPDATE_PARAMS_UI, {in_, out_, pointers_.data(), nullptr, nullptr});
  }
  // The last redefinition of a parameter.
  const PF_ParamDef& redefined(std::int32_t index) const {
    for (auto call = calls_.rbegin(); call != calls_.rend(); ++call) {
      if (call->index == index) return call->definition;
    }
    ADD_FAILURE() << index << " was not redefined";
    static const PF_ParamDef none{};
    return none;
  }
  void expectLook(std::int32_t index, bool enabled, std::int32_t flags) {
    SCOPED_TRACE(index);
    EXPECT_EQ(redefined(index).ui_flags, enabled ? 0 : 32);
    EXPECT_EQ(redefined(index).flags, flags);
  }

  inline static ParameterUi* current_ = nullptr;
  HandleTable table_;
  SPBasicSuite basic_{};
  PF_ParamUtilsSuite3 suite_{};
  PF_InData in_{};
  PF_OutData out_{};
  std::vector<PF_ParamDef> definitions_{35};
  std::vector<PF_ParamDef*> pointers_;
  std::vector<Redefined> calls_;
  std::int32_t error_ = 0;
  bool offered_ = true;
  int references_ = 0;
};

TEST_F(ParameterUi, RedefinesInAFixedOrderInAfterEffects) {
  ASSERT_EQ(update(), 0);
  std::vector<std::int32_t> order;
  for (const Redefined& call : calls_) order.push_back(call.index);
  EXPECT_EQ(order, (std::vector<std::int32_t>{7, 8, 26, 26, 21, 26, 21, 22, 23, 12, 13}));
}

TEST_F(ParameterUi, LabelsFollowTheAnalysis) {
  // No frames count as analysed.
  ASSERT_EQ(update(), 0);
  EXPECT_STREQ(redefined(7).name, "Analyzed");
  EXPECT_STREQ(redefined(7).u.button_d.u.namesptr, "Analyze");
  EXPECT_EQ(redefined(7).flags, 66);
  EXPECT_EQ(redefined(7).param_type, 15);
  EXPECT_STREQ(redefined(8).name, "0 of 0 frames analyzed");
  EXPECT_STREQ(redefined(8).u.button_d.u.namesptr, "Clear");
  EXPECT_EQ(state().analysisComplete, 1);
}

TEST_F(ParameterUi, UnanalyzedFramesAskForAnalysis) {
  FrameStats fresh[2];
  for (FrameStats& stats : fresh) resetFrameStats(stats);
  fresh[0].analyzed = 1;
  void** records = table_.create(sizeof fresh);
  std::memcpy(table_.bytes(records).data(), fresh, sizeof fresh);
  SequenceState changed = state();
  changed.frameCount = 2;
  changed.frameStatsBytes = sizeof fresh;
  changed.frameStats = reinterpret_cast<StoredHandle>(records);
  changed.analysisComplete = 1;
  state() = changed;
  ASSERT_EQ(update(), 0);
  EXPECT_STREQ(redefined(7).name, "Analyze required");
  EXPECT_STREQ(redefined(8).name, "1 of 2 frames analyzed");
  EXPECT_EQ(state().analysisComplete, 0);
}

TEST_F(ParameterUi, GreysWhatDoesNotApply) {
  for (std::int32_t deflicker = 1; deflicker <= 2; ++deflicker) {
    for (std::int32_t correction = 1; correction <= 3; ++correction) {
      for (std::int32_t adjust = 0; adjust <= 1; ++adjust) {
        SCOPED_TRACE(testing::Message() << deflicker << ' ' << correction << ' ' << adjust);
        param(PARAM_DEFLICKER_METHOD).u.pd.value = deflicker;
        param(PARAM_CORRECTION_METHOD).u.pd.value = correction;
        param(PARAM_ADJUST_CLIPPING).u.bd.value = adjust;
        param(PARAM_USE_SUBRECT).u.bd.value = adjust;
        ASSERT_EQ(update(), 0);
        const bool shift = deflicker == 1 && correction == 2;
        expectLook(26, shift, shift ? 64 : 96);
        expectLook(21, deflicker == 2, deflicker == 2 ? 64 : 96);
        expectLook(22, correction != 3, 66);
        const bool percent = correction != 3 && adjust == 1;
        expectLook(23, percent, percent ? 66 : 98);
        expectLook(12, adjust == 1, 64);
        expectLook(13, adjust == 1, 64);
      }
    }
  }
}

TEST_F(ParameterUi, KeepsValuesNamesAndTypes) {
  ASSERT_EQ(update(), 0);
  EXPECT_EQ(redefined(26).u.fd.value, 1234);
  EXPECT_STREQ(redefined(26).name, "Shift spread");
  EXPECT_EQ(redefined(26).param_type, 2);
  EXPECT_STREQ(redefined(21).name, "Number of smoothing frames");
  EXPECT_STREQ(redefined(22).name, "Adjust for clipping");
  EXPECT_EQ(redefined(22).param_type, 4);
  EXPECT_STREQ(redefined(23).name, "Adjust for clipping at %");
  EXPECT_STREQ(redefined(12).name, "1st sub-rectangle corner");
  EXPECT_EQ(redefined(12).param_type, 6);
  EXPECT_STREQ(redefined(13).name, "2nd sub-rectangle corner");
}

TEST_F(ParameterUi, ElsewhereOnlyAChangedStatusIsShown) {
  global().isAfterEffects = 0;
  global().isPremiere = 1;
  ASSERT_EQ(update(), 0);
  ASSERT_EQ(calls_.size(), 1u);
  EXPECT_EQ(calls_[0].index, 8);
  std::memcpy(param(8).name, calls_[0].definition.name, sizeof param(8).name);
  ASSERT_EQ(update(), 0);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(ParameterUi, PremiereNeverGreysButForGamma) {
  global().isAfterEffects = 0;
  global().isPremiere = 1;
  param(PARAM_CORRECTION_METHOD).u.pd.value = 3;
  param(PARAM_DEFLICKER_METHOD).u.pd.value = 1;
  for (const std::int32_t index : {26, 18, 19, 11}) {
    ASSERT_EQ(updateParamUi(global(), in_, pointers_.data(), index, state()), 0);
  }
  expectLook(26, true, 64);
  expectLook(21, true, 64);
  expectLook(22, false, 66);
  expectLook(23, true, 66);
  expectLook(12, true, 64);
}

TEST_F(ParameterUi, CutsLongLabelsAndFindsThemAgain) {
  global().isAfterEffects = 0;
  SequenceState changed = state();
  changed.frameCount = 123456;  // "0 of 123456 frames analyzed" is 27 characters: not cut
  state() = changed;
  ASSERT_EQ(update(), 0);
  EXPECT_STREQ(redefined(8).name, "0 of 123456 frames analyzed");
  std::strcpy(state().statusText, "123456 of 123456 frames analyzed");  // 32 characters
  ASSERT_EQ(updateParamUi(global(), in_, pointers_.data(), 8, state()), 0);
  EXPECT_STREQ(redefined(8).name, "123456 of 123456 frames analyze");
  std::memcpy(param(8).name, redefined(8).name, sizeof param(8).name);
  calls_.clear();
  EXPECT_EQ(updateParamUis(global(), in_, pointers_.data(), state()), 0);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(ParameterUi, OtherIndicesRedefineNothing) {
  EXPECT_EQ(updateParamUi(global(), in_, pointers_.data(), 10, state()), 0);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(ParameterUi, FailuresAreTheCommandsResult) {
  error_ = 513;
  EXPECT_EQ(update(), 513);
  offered_ = false;
  EXPECT_EQ(update(), 516);
}

}  // namespace
}  // namespace varilum
