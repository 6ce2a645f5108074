// tests/effect/fault_visits.cpp — what users and hosts do, as short scripts for faults to happen
// in.
#include "tests/effect/fault_visits.h"

#include <algorithm>

#include "tests/effect/saved_images.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;
using host::Instance;
using host::RenderPath;
using host::Role;

void setUp(Scene& scene) {
  scene.effect.emplace(scene.app, effectModule());
  scene.fx.emplace(*scene.effect, scene.footage);
  scene.seen = scene.effect->about();
}

void nothingYet(Scene& scene) {
  scene.makeEffect();
  scene.effect.reset();
}

void ready(Scene& scene) {
  scene.makeReady();
}

void unanalyzed(Scene& scene) {
  scene.makeUnanalyzed();
}

void edit(Scene& scene) {
  Instance& fx = *scene.fx;
  fx.param("Number of smoothing frames").setAt(1, 5.0);
  fx.param("Deflicker method").set(1.0);
  fx.param("Luminance").setTextAt(0, "90");
  fx.param("Luminance").setTextAt(2, "110");
  fx.param("Correction method").set(3.0);
  fx.param("Don't deflicker").setAt(1, 1.0);
  fx.param("1st sub-rectangle corner").set(host::Point{10.0, 12.0});
  fx.goTo(1);
  scene.seen = fx.param("Luminance").text(1) + savedState(fx);
}

void analyze(Scene& scene) {
  scene.fx->press("Analyze");
  scene.seen = savedState(*scene.fx);
}

void subrectangle(Scene& scene) {
  scene.makeUnanalyzed();
  scene.fx->param("Analyze within sub-rectangle").set(1.0);
}

void keyframed(Scene& scene) {
  scene.makeUnanalyzed();
  scene.fx->param("Deflicker method").set(1.0);
}

void clear(Scene& scene) {
  scene.fx->press("Clear");
  scene.seen = savedState(*scene.fx);
}

void flags(Scene& scene) {
  scene.fx->goTo(2);
  scene.seen = scene.fx->watermarked() ? "watermarked" : "final";
}

template <Depth depth, RenderPath path>
void render(Scene& scene) {
  Image out;
  scene.fx->render(1, depth, out, path);
  scene.seen = pixelsOf(out);
}

void keyframesAndGamma(Scene& scene) {
  scene.makeReady();
  scene.fx->param("Deflicker method").set(1.0);
  scene.fx->param("Correction method").set(3.0);
}

void passedOver(Scene& scene) {
  scene.makeUnanalyzed();
  scene.fx->param("Don't deflicker").set(1.0);
  scene.fx->press("Analyze");
}

// As edits leave it in the role where one copy renders: the targets are to be computed anew.
void cleared(Scene& scene) {
  scene.makeReady();
  scene.fx->press("Clear");
}

template <void (*before)(Scene&)>
void opened(Scene& scene) {
  before(scene);
  scene.panel.emplace(*scene.fx);
  scene.panel->drawUntilReady();
}

// Another frame: asked for in the first draw, there at the second.
void draw(Scene& scene) {
  scene.fx->goTo(2);
  scene.panel->draw();
  scene.seen = scene.panel->draw().describe();
}

void openAndDraw(Scene& scene) {
  scene.panel.emplace(*scene.fx);
  scene.panel->draw();
  scene.seen = scene.panel->draw().describe();
  scene.panel->close();
}

// The handle's triangle is the last shape filled; its apex is the first point.
host::Mouse onHandle(const Scene& scene) {
  const auto& marks = scene.panel->shown().primitives;
  const auto handle = std::find_if(marks.rbegin(), marks.rend(), [](const auto& mark) {
    return mark.kind == host::DrawnKind::fill;
  });
  const auto apex = handle->figures.at(0).points.at(0);
  return {static_cast<std::int32_t>(apex.x), static_cast<std::int32_t>(apex.y) + 3};
}

void click(Scene& scene) {
  scene.panel->click(onHandle(scene), true);
  scene.seen = scene.fx->param("Luminance").text();
}

void grabbed(Scene& scene) {
  opened<ready>(scene);
  scene.panel->click(onHandle(scene));
}

void drag(Scene& scene) {
  host::Mouse mouse = onHandle(scene);
  mouse.x += 40;
  scene.panel->drag(mouse);
  mouse.x += 20;
  scene.panel->release(mouse);
  scene.seen = scene.fx->param("Luminance").text();
}

void closePanel(Scene& scene) {
  scene.panel->close();
}

void save(Scene& scene) {
  scene.seen = savedState(*scene.fx);
}

void closed(Scene& scene) {
  scene.makeReady();
  scene.fx.reset();
}

void open(Scene& scene, const host::SavedInstance& saved) {
  scene.fx.emplace(Instance::open(*scene.effect, scene.footage, saved));
  scene.seen = savedState(*scene.fx);
}

void reopen(Scene& scene) {
  open(scene, scene.saved);
}

void reopen13(Scene& scene) {
  host::SavedInstance saved;
  saved.sequenceData = image13(Scene::kFrames);
  open(scene, saved);
}

void reopenDamaged(Scene& scene) {
  host::SavedInstance saved = scene.saved;
  saved.sequenceData.resize(saved.sequenceData.size() - 1);
  open(scene, saved);
}

void close(Scene& scene) {
  scene.panel.reset();
  scene.fx.reset();
  scene.effect.reset();
}

}  // namespace

const std::vector<FaultVisit>& faultVisits() {
  constexpr Role kAe = Role::afterEffects;
  constexpr Role kPremiere = Role::premiere;
  constexpr auto kSmart = RenderPath::smart;
  constexpr auto kClassic = RenderPath::classic;
  static const std::vector<FaultVisit> visits{
      {"SetUp", kAe, nothingYet, setUp},
      {"Edit", kAe, ready, edit},
      {"Analyze", kAe, unanalyzed, analyze},
      {"AnalyzeSubrectangle", kAe, subrectangle, analyze},
      {"AnalyzeForKeyframes", kAe, keyframed, analyze},
      {"Clear", kAe, ready, clear},
      {"Flags", kAe, ready, flags},
      {"Render8", kAe, ready, render<Depth::bits8, kSmart>},
      {"Render16", kAe, ready, render<Depth::bits16, kSmart>},
      {"RenderFloat", kAe, ready, render<Depth::float32, kSmart>},
      {"RenderKeyframes", kAe, keyframesAndGamma, render<Depth::bits8, kSmart>},
      {"RenderNotice8", kAe, unanalyzed, render<Depth::bits8, kSmart>},
      {"RenderNoticeFloat", kAe, unanalyzed, render<Depth::float32, kSmart>},
      {"ClassicRender8", kAe, ready, render<Depth::bits8, kClassic>},
      {"ClassicRender16", kAe, ready, render<Depth::bits16, kClassic>},
      {"ClassicPassedOver", kAe, passedOver, render<Depth::bits8, kClassic>},
      {"ClassicHalf", kAe, ready, render<Depth::bits8, kClassic>, {.downsample = {2, 2}}},
      {"ClassicNotice", kAe, cleared, render<Depth::bits8, kClassic>},
      {"Panel", kAe, ready, openAndDraw},
      {"PanelUnanalyzed", kAe, unanalyzed, openAndDraw},
      {"PanelOtherFrame", kAe, opened<ready>, draw},
      {"Click", kAe, opened<ready>, click},
      {"Drag", kAe, grabbed, drag},
      {"ClosePanel", kAe, opened<ready>, closePanel},
      {"Save", kAe, ready, save},
      {"Reopen14", kAe, closed, reopen},
      {"Reopen13", kAe, closed, reopen13},
      {"ReopenDamaged", kAe, closed, reopenDamaged},
      {"Close", kAe, opened<ready>, close},
      {"PremiereSetUp", kPremiere, nothingYet, setUp},
      {"PremiereEdit", kPremiere, ready, edit},
      {"PremiereAnalyze", kPremiere, unanalyzed, analyze},
      {"PremiereClear", kPremiere, ready, clear},
      {"PremiereRender", kPremiere, ready, render<Depth::bits8, kClassic>},
      {"PremiereRenderPassedOver", kPremiere, passedOver, render<Depth::bits8, kClassic>},
      {"PremiereRenderNotice", kPremiere, cleared, render<Depth::bits8, kClassic>},
      {"PremierePanel", kPremiere, ready, openAndDraw},
      {"PremiereClick", kPremiere, opened<ready>, click},
      {"PremiereDrag", kPremiere, grabbed, drag},
      {"PremiereSave", kPremiere, ready, save},
      {"PremiereReopen14", kPremiere, closed, reopen},
      {"PremiereReopen13", kPremiere, closed, reopen13},
      {"PremiereClose", kPremiere, opened<ready>, close},
  };
  return visits;
}

}  // namespace effect_test
