// analysis/analyze_with_worker.cpp — the analysis on a thread of its own, under the effect's
// dialog.
#include "analysis/analyze_with_worker.h"

#include <cstdio>
#include <new>

#include "access/bounded_text.h"
#include "access/handle_lock.h"
#include "analysis/frame_loop.h"
#include "hostapi/commands.h"
#include "plugin/global_state.h"
#include "resources/string_table.h"

namespace varilum {
namespace {

constexpr std::int32_t kEndPosition = 100;

class WorkerProgress : public AnalysisProgress {
 public:
  WorkerProgress(WorkerBlock& block, bool passesOverAll)
      : block_(block), passesOverAll_(passesOverAll) {}

  bool stopRequested() override { return block_.stopRequested.load() != 0; }
  bool passesOverAll() override { return passesOverAll_; }

  std::int32_t framesRead(std::int32_t shown, std::int32_t count) override {
    char text[64];
    std::snprintf(text, sizeof text, lookupString(kTextFramesAnalyzed), shown, count);
    const float share = static_cast<float>(shown - 1) / static_cast<float>(count);
    sendProgress(block_, text, static_cast<std::int32_t>(share * 100.0F));
    return 0;
  }

  std::int32_t frameStored(const char*) override { return 0; }

 private:
  WorkerBlock& block_;
  const bool passesOverAll_;
};

bool isAfterEffects(const AnalysisContext& context) noexcept {
  const Locked<GlobalState> global{*context.in, context.out->global_data};
  return global && global->isAfterEffects != 0;
}

void analyze(WorkerBlock& block, const AnalysisContext& context) {
  if (context.out->sequence_data == nullptr) {
    copyText(context.out->return_msg, lookupString(kTextNoSequenceData));
    context.out->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    return;
  }
  WorkerProgress progress{block, isAfterEffects(context)};
  runAnalysis(*context.in, *context.out, context.params, progress);
}

}  // namespace

bool analysisWorker(WorkerBlock& block) {
  const auto& context = *static_cast<const AnalysisContext*>(block.context);
  sendProgress(block, "Counting..", 0);
  // An error ends the run; what was analysed until then stays.
  try {
    analyze(block, context);
  } catch (std::int32_t) {
  } catch (const std::bad_alloc&) {
  }
  sendProgress(block, "Done !!", kEndPosition);
  return true;
}

void analyzeWithWorker(const PF_InData& in, PF_OutData& out, PF_ParamDef** params) {
  void* window = nullptr;
  in.utils->get_platform_data(in.effect_ref, PF_PlatData_MAIN_WND, &window);
  char title[256] = {};
  in.utils->ansi.sprintf(title, lookupString(kTextAnalyzing), lookupString(kTextEffectName));
  AnalysisContext context{&in, &out, params, 0};
  makeWorkerDialog(in, window, analysisWorker, &context, title, true)->doModal();
}

}  // namespace varilum
