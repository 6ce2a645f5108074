// validate/checks/refusal_checks.cpp — calls that the application refuses, one at a time.
#include <algorithm>
#include <limits>

#include "host/error.h"
#include "host/instance_state.h"
#include "host/panel.h"
#include "validate/checks/checks.h"
#include "validate/settings.h"
#include "validate/stage.h"

namespace validate {
namespace {

struct Kind {
  host::CallKind kind;
  const char* name;
  std::int32_t error;
};

constexpr std::int32_t kMemory = PF_Err_OUT_OF_MEMORY;
constexpr std::int32_t kCancel = PF_Interrupt_CANCEL;
constexpr std::int32_t kBad = PF_Err_BAD_CALLBACK_PARAM;
constexpr std::int32_t kIndex = PF_Err_INVALID_INDEX;

constexpr Kind kKinds[] = {
    {host::CallKind::newHandle, "a new handle or world", kMemory},
    {host::CallKind::lockHandle, "the lock of a handle", kMemory},
    {host::CallKind::resizeHandle, "a larger handle", kMemory},
    {host::CallKind::checkoutParam, "the check-out of a parameter", kIndex},
    {host::CallKind::checkoutLayer, "the check-out of a layer", kCancel},
    {host::CallKind::checkinParam, "a check-in", kBad},
    {host::CallKind::acquireSuite, "a suite", kBad},
    {host::CallKind::addParam, "add_param", kMemory},
    {host::CallKind::registerUi, "register_ui", kBad},
    {host::CallKind::iterate, "iteration", kCancel},
    {host::CallKind::fill, "fill", kCancel},
    {host::CallKind::copy, "copy", kCancel},
    {host::CallKind::progress, "going on (progress)", kCancel},
    {host::CallKind::infoText, "the info text", kBad},
    {host::CallKind::guidMixIn, "GuidMixInPtr", kBad},
    {host::CallKind::checkoutPixels, "checkout_layer_pixels", kMemory},
    {host::CallKind::checkoutOutput, "checkout_output", kMemory},
    {host::CallKind::getPixelFormat, "PF_GetPixelFormat", kBad},
    {host::CallKind::updateParamUi, "PF_UpdateParamUI", kIndex},
    {host::CallKind::script, "a script", kBad},
    {host::CallKind::registerAegp, "AEGP_RegisterWithAEGP", kBad},
    {host::CallKind::isRenderEngine, "PF_IsRenderEngine", kBad},
    {host::CallKind::backgroundColour, "PF_AppGetBgColor", kBad},
    {host::CallKind::drawingReference, "a drawing reference", kBad},
    {host::CallKind::fontSize, "the font's size", kBad},
    {host::CallKind::newDrawingObject, "a drawing object", kMemory},
    {host::CallKind::pathCall, "a path's point", kBad},
    {host::CallKind::drawCall, "a drawing", kBad},
    {host::CallKind::asyncManager, "the asynchronous manager", kBad},
    {host::CallKind::newEffectRef, "an effect reference", kMemory},
    {host::CallKind::renderOptions, "render options", kMemory},
    {host::CallKind::asyncFrame, "an asynchronous frame", kCancel},
    {host::CallKind::receiptWorld, "a receipt's world", kBad},
    {host::CallKind::fillWorld, "AEGP_FillOutPFEffectWorld", kBad},
};

// What a user does; each part may fail by itself.
void visit(Stage& stage) {
  stage.setUp();
  const Claims& claims = stage.claims();
  stage.tolerate("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    const auto part = [&](const std::function<void()>& work) {
      try {
        work();
      } catch (const host::Error&) {
        return;  // it was told, and the user may go on
      } catch (const std::bad_alloc&) {
        return;
      }
    };
    for (const std::int32_t index : claims.supervised) {
      part([&] { setValue(instance, index, extremesOf(instance, index).back()); });
    }
    for (const std::int32_t index : claims.buttons) {
      part([&] { instance.state().press(index); });
    }
    host::Image image;
    for (const host::Depth depth : claims.depths) {
      part([&] { instance.render(1, depth, image, claims.path); });
    }
    part([&] {
      if (!claims.panel) return;
      host::Panel panel(instance);
      panel.drawUntilReady();
      const host::PanelRect area = panel.control();
      const host::Mouse middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
      panel.click(middle);
      panel.release(middle);
    });
    part([&] { host::Instance::open(stage.effect(), stage.layer(), instance.save()); });
  });
}

StageOptions smallStage() {
  StageOptions options;
  options.layer.width = 16;
  options.layer.height = 12;
  options.layer.frames = 2;
  return options;
}

std::uint64_t callsOf(Trial& trial, host::CallKind kind) {
  Stage stage(trial, smallStage());
  stage.host().faults().arm(kind, std::numeric_limits<std::uint64_t>::max(), kMemory);
  visit(stage);
  return stage.host().faults().calls(kind);
}

std::optional<Pixels> freshPicture(Stage& stage) {
  std::optional<Pixels> picture;
  stage.attempt(
      "use the effect once more, nothing refused",
      [&] {
        host::Instance instance(stage.effect(), stage.layer());
        picture = stage.render(instance, 1, stage.claims().depths.back(), "after-refusal");
      },
      "after-refusal");
  return picture;
}

// One visit in which the n-th call is refused, and one frame after it.
void refuse(Trial& trial, const Kind& kind, std::uint64_t n,
            const std::optional<Pixels>& expected) {
  const std::string what = std::string("refuse ") + kind.name + ", call " + std::to_string(n);
  Stage stage(trial, smallStage());
  stage.host().faults().arm(kind.kind, n, kind.error);
  stage.forgive({"arbitrary-copy", "command-failed"});  // what is refused cannot be made
  bool started = true;
  try {
    visit(stage);
  } catch (const CannotStart&) {
    started = false;  // told by GLOBAL_SETUP or PARAMS_SETUP
  }
  stage.host().faults().disarm();
  stage.forgive({});
  trial.journal.step(what);
  if (started) {
    const auto picture = freshPicture(stage);
    trial.journal.step(what);
    if (picture && expected && *picture != *expected) {
      trial.journal.violate("after-refusal", "a fresh instance renders another picture");
    }
  }
  stage.close();
}

void refuseFirst(Trial& trial, std::uint64_t most) {
  std::optional<Pixels> expected;
  {
    Stage stage(trial, smallStage());
    stage.setUp();
    expected = freshPicture(stage);
  }
  for (const Kind& kind : kKinds) {
    const std::uint64_t calls = callsOf(trial, kind.kind);
    // Beyond the limit by even steps: late calls count, too.
    const std::uint64_t step = std::max<std::uint64_t>(1, calls / most);
    for (std::uint64_t n = 1; n <= calls; n += n < most / 2 ? 1 : step) {
      refuse(trial, kind, n, expected);
    }
  }
}

void someRefusals(Trial& trial) {
  constexpr std::uint64_t kSome = 4;
  refuseFirst(trial, kSome);
}

void everyRefusal(Trial& trial) {
  constexpr std::uint64_t kMost = 400;
  refuseFirst(trial, kMost);
}

}  // namespace

const Check kSomeRefusals{"some-refusals",
                          "A few calls of each kind are refused, one a visit: the effect neither "
                          "crashes nor loses anything, and works afterwards.",
                          someRefusals};
const Check kEveryRefusal{"every-refusal",
                          "Every call of a visit is refused once (beyond 400 of a kind, every so "
                          "many): nothing crashes, nothing is lost, the effect works afterwards.",
                          everyRefusal};

}  // namespace validate
