// validate/checks/panel_checks.cpp — the effect's own panel: drawn, clicked, dragged, closed.
#include "host/panel.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

constexpr std::int32_t kSteps = 4;  // of the grid of clicks, each way
constexpr std::uint32_t kKey = 'a';

void clickAround(Stage& stage, host::Panel& panel) {
  const host::PanelRect area = panel.control();
  for (std::int32_t i = 0; i <= kSteps; ++i) {
    for (std::int32_t j = 0; j <= kSteps; ++j) {
      const host::Mouse mouse{area.left + (area.right - area.left - 1) * i / kSteps,
                              area.top + (area.bottom - area.top - 1) * j / kSteps};
      const std::string at = std::to_string(mouse.x) + ", " + std::to_string(mouse.y);
      stage.attempt("cursor, click, drag and release at " + at, [&] {
        panel.adjustCursor(mouse);
        panel.click(mouse);
        if (!panel.dragging()) return;
        panel.drag({mouse.x + 10, mouse.y - 10});
        panel.drag({mouse.x - 1000, mouse.y + 1000});  // out of the panel
        panel.release(mouse);
      });
    }
  }
}

void panelChecks(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (!stage.claims().panel) throw Skipped("the effect has no panel of its own");
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    stage.attempt("open the panel and draw it before anything was rendered", [&] {
      host::Panel panel(instance);
      panel.draw();
      trial.journal.step("draw until every frame asked for is there");
      panel.drawUntilReady();
      stage.attempt("draw the title", [&] { panel.draw(host::PanelArea::title); });
      stage.attempt("DRAW that must not draw", [&] { panel.draw(host::PanelArea::control, true); });
      clickAround(stage, panel);
      stage.attempt("a key and idle time", [&] {
        panel.key(kKey);
        panel.idle();
      });
      stage.attempt("draw with the time cursor behind the layer's end", [&] {
        panel.placeCursor(stage.layer().info().frameCount + 3);
        panel.draw();
        panel.followInstance();
      });
      stage.attempt("draw scrolled", [&] {
        panel.moveTo(17, -60);
        panel.draw();
      });
      stage.attempt("close the panel", [&] { panel.close(); });
    });
    stage.render(instance, 1, host::Depth::bits8);
  });
  stage.close();
}

}  // namespace

const Check kPanel{"panel",
                   "The panel opens, draws, answers the mouse, and closes, giving back all that it "
                   "drew with.",
                   panelChecks};

}  // namespace validate
