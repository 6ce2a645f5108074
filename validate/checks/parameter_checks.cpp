// validate/checks/parameter_checks.cpp — parameters set to this and that, and frames rendered so.
#include "host/instance_state.h"
#include "validate/checks/checks.h"
#include "validate/settings.h"
#include "validate/stage.h"

namespace validate {
namespace {

host::ValueKind kindOf(host::Instance& instance, std::int32_t index) {
  return host::valueKind(instance.state().declaration(index).definition.param_type);
}

void renderOnce(Stage& stage, host::Instance& instance, std::int32_t frame) {
  host::Image image;
  instance.render(frame, host::Depth::bits8, image, stage.claims().path);
}

void extremes(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (stage.claims().valued.empty()) throw Skipped("the effect has no values to set");
  stage.attempt("apply to a layer", [&] {
    for (const std::int32_t index : stage.claims().valued) {
      host::Instance instance(stage.effect(), stage.layer());
      for (const host::Value& value : extremesOf(instance, index)) {
        stage.attempt("set " + labelOf(instance, index) + " to " +
                          textOf(value, kindOf(instance, index)) + " and render",
                      [&] {
                        setValue(instance, index, value);
                        renderOnce(stage, instance, 0);
                      });
      }
    }
  });
  stage.close();
}

void keyframes(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  const std::int32_t last = stage.layer().info().frameCount - 1;
  bool any = false;
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (const std::int32_t index : stage.claims().valued) {
      if (!mayHaveKeyframes(instance, index)) continue;
      any = true;
      stage.attempt("keyframes on " + labelOf(instance, index), [&] {
        setKeyframe(instance, index, 0, anyValueOf(instance, index, trial.random));
        setKeyframe(instance, index, last, anyValueOf(instance, index, trial.random));
      });
    }
    for (std::int32_t frame = 0; any && frame <= last; ++frame) {
      stage.attempt("render keyframed frame " + std::to_string(frame),
                    [&] { renderOnce(stage, instance, frame); });
    }
  });
  stage.close();
  if (!any) throw Skipped("no parameter may have keyframes");
}

void edits(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  const Claims& claims = stage.claims();
  if (claims.supervised.empty() && claims.buttons.empty()) {
    throw Skipped("the effect supervises no parameter");
  }
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (const std::int32_t index : claims.supervised) {
      stage.attempt("change " + labelOf(instance, index),
                    [&] { setValue(instance, index, anyValueOf(instance, index, trial.random)); });
    }
    for (const std::int32_t index : claims.buttons) {
      stage.attempt("press " + labelOf(instance, index), [&] { instance.state().press(index); });
    }
    for (const host::Depth depth : claims.depths) stage.render(instance, 1, depth);
  });
  stage.close();
}

void randomSettings(Trial& trial) {
  constexpr int kParameterRounds = 20;
  Stage stage(trial);
  stage.setUp();
  const Claims& claims = stage.claims();
  if (claims.valued.empty()) throw Skipped("the effect has no values to set");
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    for (int round = 0; round < kParameterRounds; ++round) {
      const std::string doing = "random settings " + std::to_string(round);
      stage.attempt(doing, [&] {
        instance.goTo(static_cast<std::int32_t>(trial.random() % 4));
        for (const std::int32_t index : claims.valued) {
          if (trial.random() % 2 == 0) continue;
          trial.journal.step(doing + ": " + labelOf(instance, index));
          setValue(instance, index, anyValueOf(instance, index, trial.random));
        }
        trial.journal.step(doing + ": render");
        renderOnce(stage, instance, static_cast<std::int32_t>(trial.random() % 4));
      });
    }
  });
  stage.close();
}

}  // namespace

const Check kExtremes{"extremes",
                      "Every parameter can be set to the ends of its range, and a frame rendered.",
                      extremes};
const Check kKeyframes{"keyframes", "Frames between keyframes of every parameter render.",
                       keyframes};
const Check kEdits{"edits",
                   "Changes of supervised parameters and pressed buttons are answered without an "
                   "error. (Buttons that open windows wait for somebody to close them.)",
                   edits};
const Check kRandomSettings{"random-settings",
                            "Frames render with random settings; the seed makes them again.",
                            randomSettings};

}  // namespace validate
