// tests/effect/fault_regression_test.cpp — refusals that once ended badly.
#include <gmock/gmock.h>

#include "host/error.h"
#include "host/instance_state.h"
#include "host/render_target.h"
#include "tests/effect/fault_scene.h"

namespace effect_test {
namespace {

using host::CallKind;
using host::Depth;
using host::Image;
using host::RenderPath;
using host::Role;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

// Without its global data the effect once ran the 8-bit kernel over 16-bit pixels.
TEST(Refusals, SixteenBitsAreNeverTakenForEight) {
  Scene scene{Role::afterEffects};
  scene.makeReady();
  Image right;
  scene.fx->render(1, Depth::bits16, right, RenderPath::classic);
  host::RenderCopy copy = scene.fx->renderCopy(RenderPath::classic);
  for (std::uint64_t n = 1; n < 40; ++n) {
    SCOPED_TRACE(n);
    scene.app.faults().arm(CallKind::lockHandle, n, 0);
    Image out(Scene::kWidth, Scene::kHeight, Depth::bits16);
    host::clear(out);
    copy.render(1, Depth::bits16, out);
    scene.app.faults().disarm();
    const std::string pixels = pixelsOf(out);
    EXPECT_TRUE(pixels == pixelsOf(right) || pixels == std::string(pixels.size(), '\0'));
  }
  EXPECT_THAT(scene.listener.complaints(), Not(HasSubstr("another depth")));
}

// A project saved in place is in the host's hands before the effect takes its data up again.
TEST(Refusals, SavingInPlaceLosesNeitherImageNorInstance) {
  Scene scene{Role::premiere};
  scene.makeReady();
  const std::string saved = savedState(*scene.fx);
  int reported = 0;
  // Two copies of the Luminance value and the image come before the header and six arrays.
  for (std::uint64_t n = 4; n <= 10; ++n) {
    SCOPED_TRACE(n);
    scene.listener.forget();
    scene.app.faults().arm(CallKind::newHandle, n, 0);
    EXPECT_EQ(savedState(*scene.fx), saved);
    scene.app.faults().disarm();
    reported += scene.listener.shown().empty() ? 0 : 1;
    EXPECT_EQ(savedState(*scene.fx), saved);
  }
  EXPECT_EQ(reported, 7);
}

// A render manager, reference or options that come back empty are a frame that is not ready.
TEST(Refusals, EmptyAnswersOfTheRenderSuitesAreFramesNotReady) {
  Scene scene{Role::afterEffects};
  scene.makeUnanalyzed();
  for (const CallKind kind :
       {CallKind::asyncManager, CallKind::newEffectRef, CallKind::renderOptions,
        CallKind::asyncFrame, CallKind::receiptWorld, CallKind::fillWorld}) {
    SCOPED_TRACE(static_cast<int>(kind));
    host::PanelOptions look;
    look.async.draws = 0;
    host::Panel panel{*scene.fx, look};
    scene.app.faults().resetCounts();
    scene.app.faults().arm(kind, 1, host::kGivesNothing);
    EXPECT_THAT(panel.draw().texts(), Contains("Calculating histogram..."));
    EXPECT_EQ(scene.app.faults().injected(), 1u);
    scene.app.faults().disarm();
    EXPECT_EQ(scene.listener.complaints(), "");
    // Another frame, so that it is not in hand.
    scene.fx->goTo(scene.fx->state().now() == 0 ? 1 : 0);
  }
}

// A drawing without supplier or surface is a failed one; nothing is drawn on null.
TEST(Refusals, ADrawingNeedsASurface) {
  Scene scene{Role::premiere};
  scene.makeReady();
  host::Panel panel{*scene.fx};
  for (std::uint64_t n = 2; n <= 3; ++n) {
    scene.app.faults().arm(CallKind::drawingReference, n, host::kGivesNothing);
    try {
      panel.draw();
      ADD_FAILURE() << "drawn without part " << n;
    } catch (const host::CommandError& error) {
      EXPECT_EQ(error.result(), PF_Err_BAD_CALLBACK_PARAM);
    }
    scene.app.faults().disarm();
    scene.app.faults().resetCounts();
    EXPECT_EQ(scene.listener.complaints(), "");
  }
}

}  // namespace
}  // namespace effect_test
