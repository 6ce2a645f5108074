// tests/effect/fault_scene.cpp — host, effect, layer, instance and panel that faults happen to.
#include "tests/effect/fault_scene.h"

#include <cstring>

#include "host/instance_state.h"

namespace effect_test {
namespace {

using host::Depth;
using host::Image;

// One thread, so that calls come in the same order every time; somebody at the screen, so that
// messages are shown.
host::HostOptions steadyHost(const host::Stress& stress) {
  host::HostOptions options;
  options.stress = stress;
  options.threads = 1;
  options.renderEngine = false;
  return options;
}

constexpr const char* kNumbers[] = {"Number of smoothing frames", "Deflicker method",
                                    "Correction method", "Don't deflicker",
                                    "Analyze within sub-rectangle"};
constexpr double kKnown[] = {2.0, 2.0, 1.0, 0.0, 0.0};

}  // namespace

void StillFootage::read(std::int32_t frame, Image& image) {
  const std::lock_guard guard(mutex_);
  Image& painted = frames_[{frame, image.depth()}];
  if (painted.empty()) {
    painted = Image(image.width(), image.height(), image.depth());
    TestFootage::read(frame, painted);
  }
  for (std::int32_t y = 0; y < image.height(); ++y) {
    std::memcpy(image.row(y), painted.row(y),
                static_cast<std::size_t>(image.width() * host::pixelBytes(image.depth())));
  }
}

std::string pixelsOf(const Image& image) {
  std::string bytes;
  for (std::int32_t y = 0; y < image.height(); ++y) {
    bytes.append(reinterpret_cast<const char*>(image.row(y)),
                 static_cast<std::size_t>(image.width() * host::pixelBytes(image.depth())));
  }
  return bytes;
}

std::string savedState(host::Instance& fx) {
  const SavedData data = savedData(fx);
  const char* bytes = reinterpret_cast<const char*>(data.bytes.data());
  // Layer, flags and status text, then levels, records and histograms. Between them: handles, which
  // mean nothing in a file, and the frame that was rendered last.
  std::string state(bytes + 8, 16);
  state.append(bytes + 97, 4).append(bytes + 357, 256);
  return state.append(bytes + 5196, data.bytes.size() - 5196);
}

Scene::Scene(host::Role role, const host::Stress& stress)
    : footage(flickeringFootage(kWidth, kHeight, kFrames, Depth::bits8)),
      app(role, role == host::Role::premiere ? host::ApiVersion{13, 4} : host::ApiVersion{13, 14},
          steadyHost(stress)) {
  app.setListener(&listener);
}

host::RenderPath Scene::path() const {
  return app.role() == host::Role::premiere ? host::RenderPath::classic : host::RenderPath::smart;
}

void Scene::makeEffect() {
  panel.reset();
  fx.reset();
  if (!effect) effect.emplace(app, effectModule());
}

void Scene::setControls() {
  for (std::size_t i = 0; i < std::size(kNumbers); ++i) {
    host::Parameter control = fx->param(kNumbers[i]);
    if (control.keyframeCount() > 0) control.removeKeyframes();
    if (control.value() != kKnown[i]) control.set(kKnown[i]);
  }
  host::Parameter luminance = fx->param("Luminance");
  if (luminance.keyframeCount() > 0) luminance.removeKeyframes();
  luminance.setText("128");
}

void Scene::makeUnanalyzed() {
  panel.reset();
  if (!effect) effect.emplace(app, effectModule());
  if (!fx || fx->state().ui.sequenceData == nullptr) {
    fx.reset();
    fx.emplace(*effect, footage);
  }
  setControls();
  fx->press("Clear");
}

void Scene::makeReady() {
  makeUnanalyzed();
  fx->press("Analyze");
  if (!right_.empty()) return;
  right_ = picture();
  saved = fx->save();
}

std::string Scene::tryOut() {
  panel.reset();
  if (!effect || !fx || fx->state().ui.sequenceData == nullptr) return {};
  // A render comes first, as it does in a host that shows pictures: it puts right what a refused
  // opening left without arrays.
  picture();
  setControls();
  fx->press("Analyze");
  return picture() == right_ ? "" : "the picture is wrong afterwards";
}

std::string Scene::picture() {
  Image here;
  fx->render(1, Depth::bits8, here, path());
  return pixelsOf(here);
}

}  // namespace effect_test
