// plugin/parameter_changes.cpp — USER_CHANGED_PARAM: what each control does when it is used.
#include "plugin/parameter_changes.h"

#include "analysis/analyze_with_host_progress.h"
#include "analysis/analyze_with_worker.h"
#include "platform/web_page.h"
#include "plugin/about.h"
#include "plugin/global_setup.h"
#include "plugin/luminance_value.h"
#include "plugin/messages.h"
#include "plugin/param_index.h"
#include "resources/string_table.h"
#include "stats/invalidation.h"
#include "stats/target_checkouts.h"

namespace varilum {
namespace {

constexpr double kCounterEnd = 64000.0;
// Values that the host has not seen make it redraw the keyframe and the graph.
constexpr double kClearNudge = 0.001;
constexpr double kAnalyzeNudge = -0.001;

struct Change {
  const Command& command;
  GlobalState& global;
  SequenceState& state;
  std::int32_t index;
  bool changedResults = false;  // set by actions that alter what is rendered

  PF_ParamDef& param(std::int32_t at) const noexcept { return *command.params[at]; }
};

void noteChange(Change& change) noexcept {
  ++change.state.changeCounter;
  change.changedResults = true;
}

void setAnalyzed(Change& change, bool analyzed) noexcept {
  PF_ParamDef& param = change.param(PARAM_NEEDS_ANALYZE);
  param.u.bd.value = analyzed ? 1 : 0;
  markChanged(param);
}

// An error here is not the command's: the targets are computed again before they are used.
void updateTargets(const Change& change) {
  recomputeTargets(change.command.in, change.command.params, change.state);
}

void redraw(const Change& change) noexcept {
  change.command.out.out_flags |= PF_OutFlag_REFRESH_UI;
  if (change.global.isPremiere != 0) change.command.out.out_flags |= PF_OutFlag_FORCE_RERENDER;
}

std::int32_t showAbout(Change& change) {
  return about(change.command);
}

std::int32_t openHelp(Change& change) {
  openWebPage(helpAddress());
  change.command.out.out_flags |= PF_OutFlag_REFRESH_UI;
  return 0;
}

std::int32_t analyze(Change& change) {
  const Command& command = change.command;
  std::int32_t result = 0;
  if (change.global.isAfterEffects != 0) {
    invalidateAll(command.in, change.state);
    change.state.refreshPending = 1;
    // What follows is owed whatever comes of the analysis.
    try {
      result = analyzeWithHostProgress(command.in, command.out, command.params);
    } catch (std::int32_t error) {
      result = error;
    }
    change.param(PARAM_LUMINANCE).uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    command.out.out_flags |= kRedrawAndRerender;
  } else if (change.global.isPremiere != 0) {
    invalidateAll(command.in, change.state);
    change.state.refreshPending = 1;
    analyzeWithWorker(command.in, command.out, command.params);
    PF_ParamDef& luminance = change.param(PARAM_LUMINANCE);
    luminance.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    command.out.out_flags |= kRedrawAndRerender;
    nudgeLuminance(command.in, luminance.u.arb_d.value, kAnalyzeNudge);
  }
  setAnalyzed(change, true);
  noteChange(change);
  return result;
}

std::int32_t clear(Change& change) {
  invalidateAll(change.command.in, change.state);
  change.command.out.out_flags |= kRedrawAndRerender;
  PF_ParamDef& luminance = change.param(PARAM_LUMINANCE);
  nudgeLuminance(change.command.in, luminance.u.arb_d.value, kClearNudge);
  luminance.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
  noteChange(change);
  setAnalyzed(change, false);
  return 0;
}

void dropAnalysis(Change& change) {
  invalidateDesired(change.command.in, change.state);
  updateTargets(change);
  noteChange(change);
  setAnalyzed(change, false);
}

std::int32_t changeAnalysisOption(Change& change) {
  dropAnalysis(change);
  change.command.out.out_flags |= kRedrawAndRerender;
  return 0;
}

std::int32_t moveCorner(Change& change) {
  dropAnalysis(change);
  markChanged(change.param(change.index));
  redraw(change);
  return 0;
}

std::int32_t changeTargets(Change& change) {
  markChanged(change.param(change.index));
  updateTargets(change);
  noteChange(change);
  redraw(change);
  return 0;
}

struct Action {
  std::int32_t index;
  std::int32_t (*run)(Change&);
  bool anyHost = false;          // also in hosts that are too old
  bool wantsVersionText = true;  // of the host, fetched when it was not yet
};

constexpr Action kActions[] = {
    {PARAM_ABOUT, showAbout, true},
    {PARAM_HELP, openHelp, true, false},
    {PARAM_ANALYZE, analyze},
    {PARAM_CLEAR, clear},
    {PARAM_SPEED, changeAnalysisOption},
    {PARAM_USE_SUBRECT, changeAnalysisOption},
    {PARAM_CORNER1, moveCorner},
    {PARAM_CORNER2, moveCorner},
    {PARAM_FAVOR_BRIGHTER, changeAnalysisOption},
    {PARAM_DONT_DEFLICKER, changeAnalysisOption},
    {PARAM_DEFLICKER_METHOD, changeTargets},
    {PARAM_CORRECTION_METHOD, changeTargets},
    {PARAM_USE_GAMMA, changeTargets},
    {PARAM_SMOOTHING_FRAMES, changeTargets},
    {PARAM_ADJUST_CLIPPING, changeTargets},
    {PARAM_CLIPPING_PERCENT, changeTargets},
    {PARAM_LUMINANCE, changeTargets},
    {PARAM_SHIFT_SPREAD, changeTargets},
};

const Action* findAction(std::int32_t index) noexcept {
  for (const Action& action : kActions) {
    if (action.index == index) return &action;
  }
  return nullptr;
}

std::int32_t act(const Action& action, Change& change) {
  const PF_InData& in = change.command.in;
  GlobalState& global = change.global;
  if (action.wantsVersionText) fetchVersionText(in, global);
  if (global.hostSupported == 0 && !action.anyHost) {
    showMessage(in, &global,
                global.isAfterEffects != 0 ? kTextUnsupportedAfterEffects : kTextUnsupportedHost);
    return 0;
  }
  return action.run(change);
}

}  // namespace

void bumpCounter(PF_ParamDef** params) noexcept {
  PF_ParamDef& counter = *params[PARAM_COUNTER];
  double& value = counter.u.fs_d.value;
  value = kCounterEnd > value ? value + 1.0 : 0.0;
  markChanged(counter);
}

std::int32_t userChangedParam(const Command& command) {
  if (command.extra == nullptr) return 0;
  const std::int32_t index =
      static_cast<const PF_UserChangedParamExtra*>(command.extra)->param_index;
  const Action* action = findAction(index);
  if (action == nullptr || (command.params == nullptr && !action->anyHost)) return 0;

  std::int32_t result = 0;
  bool changedResults = false;
  {
    // The input record's handles: the output's may not be filled in for this command.
    const Locked<SequenceState> state{command.in, command.in.sequence_data};
    const Locked<GlobalState> global{command.in, command.in.global_data};
    if (!state || !global) return 0;
    Change change{command, *global, *state, index};
    result = act(*action, change);
    changedResults = change.changedResults;
  }
  if (changedResults) bumpCounter(command.params);
  return result;
}

}  // namespace varilum
