// analysis/analyze_with_host_progress.cpp — the analysis under the host's own progress dialog.
#include "analysis/analyze_with_host_progress.h"

#include <optional>

#include "access/bounded_text.h"
#include "access/handle_lock.h"
#include "access/host_progress_dialog.h"
#include "access/suite.h"
#include "analysis/frame_loop.h"
#include "hostapi/commands.h"
#include "hostapi/suites/adv_app.h"
#include "plugin/global_state.h"
#include "resources/string_table.h"

namespace varilum {
namespace {

bool isAfterEffects(const PF_InData& in, const PF_OutData& out) noexcept {
  const Locked<GlobalState> global{in, out.global_data};
  return global && global->isAfterEffects != 0;
}

// The host's dialog, and its Info panel where it has one.
class HostProgress : public AnalysisProgress {
 public:
  HostProgress(const PF_InData& in, HostProgressDialog& dialog, bool showsInfo)
      : in_(in), dialog_(dialog), showsInfo_(showsInfo) {}

  bool stopRequested() override { return false; }

  std::int32_t framesRead(std::int32_t shown, std::int32_t count) override {
    return dialog_.update(shown, count);
  }

  std::int32_t frameStored(const char* statusText) override {
    if (!showsInfo_) return 0;
    if (!info_) info_.emplace(in_, kPFAdvAppSuite, kPFAdvAppSuiteVersion2);
    return (*info_)->PF_InfoDrawText(statusText, nullptr);
  }

 private:
  const PF_InData& in_;
  HostProgressDialog& dialog_;
  const bool showsInfo_;
  std::optional<Suite<PF_AdvAppSuite2>> info_;
};

}  // namespace

std::int32_t analyzeWithHostProgress(const PF_InData& in, PF_OutData& out, PF_ParamDef** params) {
  if (out.sequence_data == nullptr) {
    copyText(out.return_msg, lookupString(kTextNoSequenceData));
    out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    return PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
  HostProgressDialog dialog{in, u"Varilum4 analyzing..."};
  if (dialog.error() != 0) return dialog.error();
  HostProgress progress{in, dialog, isAfterEffects(in, out)};
  return runAnalysis(in, out, params, progress);
}

}  // namespace varilum
