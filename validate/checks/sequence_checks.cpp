// validate/checks/sequence_checks.cpp — applying the effect to a layer, and removing it.
#include "host/effect_state.h"
#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

void apply(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  for (int i = 0; i < 3; ++i) {
    const bool applied = stage.attempt("apply to a layer (SEQUENCE_SETUP)", [&] {
      host::Instance instance(stage.effect(), stage.layer());
      trial.journal.step("remove (SEQUENCE_SETDOWN)");
    });
    if (!applied) break;
  }
  stage.close();
}

void dynamicFlags(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (!stage.claims().dynamicFlags) throw Skipped("the effect's flags never change");
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    host::SequenceCopy& copy = instance.state().ui;
    for (std::int32_t frame = 0; frame < stage.layer().info().frameCount; ++frame) {
      trial.journal.step("QUERY_DYNAMIC_FLAGS at frame " + std::to_string(frame));
      const auto now = static_cast<std::uint32_t>(copy.dynamicFlags(copy.frameTime(frame)));
      const std::uint32_t fresh = now & ~stage.effect().outFlags2();
      if (fresh == 0) continue;
      char text[80];
      std::snprintf(text, sizeof text, "second flags 0x%08X are on now and were not at start",
                    fresh);
      trial.journal.violate("dynamic-flags", text);
    }
  });
  stage.close();
}

}  // namespace

const Check kApply{"apply",
                   "The effect is applied to a layer and removed, again and again, without leaving "
                   "anything behind.",
                   apply};
const Check kDynamicFlags{"dynamic-flags",
                          "QUERY_DYNAMIC_FLAGS turns on only what GLOBAL_SETUP announced.",
                          dynamicFlags};

}  // namespace validate
