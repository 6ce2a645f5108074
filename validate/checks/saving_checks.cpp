// validate/checks/saving_checks.cpp — projects saved and opened, and layers beside one another.
#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/settings.h"
#include "validate/stage.h"

namespace validate {
namespace {

using Pictures = std::vector<std::optional<Pixels>>;

Pictures renderAll(Stage& stage, host::Instance& instance) {
  Pictures pictures;
  for (std::int32_t frame = 0; frame < stage.layer().info().frameCount; ++frame) {
    pictures.push_back(stage.render(instance, frame, stage.claims().depths.back()));
  }
  return pictures;
}

void compare(Trial& trial, const Pictures& before, const Pictures& after, const char* rule,
             const char* what) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (!before[i] || !after[i] || *before[i] == *after[i]) continue;
    return trial.journal.violate(rule, "frame " + std::to_string(i) + " " + what);
  }
}

void change(Stage& stage, Trial& trial, host::Instance& instance) {
  for (const std::int32_t index : stage.claims().valued) {
    setValue(instance, index, anyValueOf(instance, index, trial.random));
  }
  for (const std::int32_t index : stage.claims().buttons) instance.state().press(index);
}

void saving(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  host::SavedInstance first;
  Pictures before;
  stage.attempt("apply, change and save", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    change(stage, trial, instance);
    before = renderAll(stage, instance);
    trial.journal.step("save");
    first = instance.save();
    const Pictures after = renderAll(stage, instance);
    trial.journal.step("compare with the pictures before saving");
    compare(trial, before, after, "saved-differs", "is another picture after saving");
  });
  if (!before.empty()) {
    stage.attempt("open the saved instance", [&] {
      host::Instance opened = host::Instance::open(stage.effect(), stage.layer(), first);
      const Pictures after = renderAll(stage, opened);
      trial.journal.step("compare with the pictures before opening");
      compare(trial, before, after, "saved-differs", "is another picture after opening");
      trial.journal.step("save the opened instance and open it once more");
      host::Instance again = host::Instance::open(stage.effect(), stage.layer(), opened.save());
      const Pictures third = renderAll(stage, again);
      compare(trial, before, third, "saved-differs", "is another picture after a second opening");
    });
  }
  stage.close();
}

void twoInstances(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  stage.attempt("apply to two layers", [&] {
    host::Instance left(stage.effect(), stage.layer());
    const Pictures before = renderAll(stage, left);
    {
      host::Instance right(stage.effect(), stage.layer());
      stage.attempt("change the other instance", [&] { change(stage, trial, right); });
      const Pictures beside = renderAll(stage, left);
      trial.journal.step("compare while another instance has other settings");
      compare(trial, before, beside, "instances-mixed",
              "is another picture since another instance was changed");
    }
    const Pictures after = renderAll(stage, left);
    trial.journal.step("compare after the other instance was removed");
    compare(trial, before, after, "instances-mixed",
            "is another picture since another instance was removed");
  });
  stage.close();
}

}  // namespace

const Check kSaving{"saving",
                    "An instance can be saved and goes on as before; opened again, it renders the "
                    "same pictures.",
                    saving};
const Check kTwoInstances{"two-instances", "What is done to one instance does not show in another.",
                          twoInstances};

}  // namespace validate
