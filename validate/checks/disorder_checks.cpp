// validate/checks/disorder_checks.cpp — commands out of order, and unusual times.
#include <limits>

#include "host/effect_state.h"
#include "host/handles.h"
#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

// One command to one copy; its result is the effect's affair, a crash is not.
std::int32_t send(Trial& trial, host::SequenceCopy& copy, std::int32_t command, const char* doing,
                  bool withParams = false) {
  trial.journal.step(doing);
  host::Command sent(copy.effect, &copy, command);
  if (withParams) sent.giveParams();
  return sent.send();
}

void aboutAtAnyTime(Trial& trial) {
  Stage stage(trial);
  trial.journal.step("ABOUT before GLOBAL_SETUP");
  host::EffectState bare(stage.host(), stage.module());
  host::Command command(bare, nullptr, PF_Cmd_ABOUT);
  command.quiet = true;
  command.send();
}

void withoutSequenceData(Trial& trial, Stage& stage) {
  host::EffectState& effect = stage.effect().state();
  host::SequenceCopy copy(effect, stage.layer(), host::ParameterStore(effect, stage.layer().info()),
                          false);
  if (stage.claims().dynamicFlags) {
    send(trial, copy, PF_Cmd_QUERY_DYNAMIC_FLAGS, "QUERY_DYNAMIC_FLAGS without sequence data");
  }
  send(trial, copy, PF_Cmd_UPDATE_PARAMS_UI, "UPDATE_PARAMS_UI without sequence data", true);
  if (stage.claims().flattensCopies) {
    trial.journal.step("GET_FLATTENED_SEQUENCE_DATA without sequence data");
    host::Command command(effect, &copy, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA);
    command.send();
    host::disposeHandle(command.out.sequence_data);
  }
  send(trial, copy, PF_Cmd_SEQUENCE_RESETUP, "SEQUENCE_RESETUP without sequence data", true);
  send(trial, copy, PF_Cmd_SEQUENCE_RESETUP, "SEQUENCE_RESETUP again", true);
  send(trial, copy, PF_Cmd_SEQUENCE_SETDOWN, "SEQUENCE_SETDOWN");
}

void flattenOutOfOrder(Trial& trial, Stage& stage) {
  stage.attempt("apply, and flatten out of order", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    host::SequenceCopy& copy = instance.state().ui;
    send(trial, copy, PF_Cmd_SEQUENCE_RESETUP, "SEQUENCE_RESETUP of live data", true);
    if (!stage.claims().flattens) return;
    send(trial, copy, PF_Cmd_SEQUENCE_FLATTEN, "SEQUENCE_FLATTEN");
    send(trial, copy, PF_Cmd_SEQUENCE_FLATTEN, "SEQUENCE_FLATTEN of flat data");
    if (stage.claims().flattensCopies) {
      trial.journal.step("GET_FLATTENED_SEQUENCE_DATA of flat data");
      host::Command command(copy.effect, &copy, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA);
      command.send();
      if (command.out.sequence_data != copy.sequenceData) {
        host::disposeHandle(command.out.sequence_data);
      }
    }
    trial.journal.step("SEQUENCE_SETDOWN of flat data");
  });
}

void outOfOrder(Trial& trial) {
  aboutAtAnyTime(trial);
  Stage stage(trial);
  stage.setUp();
  withoutSequenceData(trial, stage);
  flattenOutOfOrder(trial, stage);
  stage.attempt("apply to a layer after all that", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    stage.render(instance, 1, stage.claims().depths.back());
  });
  stage.close();
}

struct Times {
  const char* what;
  std::int32_t current;
  std::int32_t step;
  std::int32_t total;
  std::uint32_t scale;
};

void oddTimes(Trial& trial) {
  constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
  constexpr Times kTimes[] = {
      {"a step of 0", 128, 0, 512, 3200},
      {"a negative step", 128, -128, 512, 3200},
      {"a negative time", -1000, 128, 512, 3200},
      {"a time behind the end", 100'000, 128, 512, 3200},
      {"a time between frames", 77, 128, 512, 3200},
      {"no duration", 0, 128, 0, 3200},
      {"a duration below one step", 0, 128, 5, 3200},
      {"the longest duration", 0, 128, kMost, 3200},
      {"the largest time", kMost, 128, kMost, 3200},
      {"a huge scale", 128, 128, 512, 0xFFFFFFFFU},
      {"other steps than before", 128, 107, 512, 3200},
  };
  Stage stage(trial);
  stage.setUp();
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    host::SequenceCopy& copy = instance.state().ui;
    const auto sendAt = [&](const Times& times, std::int32_t command, const char* name) {
      trial.journal.step(std::string(name) + " with " + times.what);
      host::Command sent(copy.effect, &copy, command);
      if (command != PF_Cmd_QUERY_DYNAMIC_FLAGS) sent.giveParams();
      sent.in.current_time = times.current;
      sent.in.time_step = times.step;
      sent.in.total_time = times.total;
      sent.in.time_scale = times.scale;
      sent.send();
    };
    for (const Times& times : kTimes) {
      sendAt(times, PF_Cmd_UPDATE_PARAMS_UI, "UPDATE_PARAMS_UI");
      if (stage.claims().dynamicFlags) {
        sendAt(times, PF_Cmd_QUERY_DYNAMIC_FLAGS, "QUERY_DYNAMIC_FLAGS");
      }
    }
    stage.render(instance, 1, stage.claims().depths.back());
  });
  stage.close();
}

}  // namespace

const Check kOutOfOrder{"out-of-order",
                        "ABOUT before everything, commands without sequence data, flattening twice "
                        "and live data at RESETUP are survived.",
                        outOfOrder};
const Check kOddTimes{
    "odd-times", "Steps of 0, negative times, huge durations and scales are survived.", oddTimes};

}  // namespace validate
