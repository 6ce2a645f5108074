// tests/effect/fault_scene.h — host, effect, layer, instance and panel that faults happen to.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "host/effect.h"
#include "host/instance.h"
#include "host/panel.h"
#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"

namespace effect_test {

// Paints each frame once: a sweep reads the same few again and again.
class StillFootage : public TestFootage {
 public:
  explicit StillFootage(TestFootage painted) : TestFootage(std::move(painted)) {}
  void read(std::int32_t frame, host::Image& image) override;

 private:
  std::mutex mutex_;
  std::map<std::pair<std::int32_t, host::Depth>, host::Image> frames_;
};

class Scene {
 public:
  static constexpr std::int32_t kWidth = 90;
  static constexpr std::int32_t kHeight = 70;
  static constexpr std::int32_t kFrames = 3;

  explicit Scene(host::Role role, const host::Stress& stress = {});

  // The effect, and an analysed instance with the controls as known. No panel.
  void makeReady();
  // The same without an analysis.
  void makeUnanalyzed();
  // The effect alone.
  void makeEffect();

  // Works on with whatever is there, and gives what is wrong with it; empty when nothing is.
  std::string tryOut();

  // Order of destruction: panel, instance, effect, host.
  RecordingListener listener;
  StillFootage footage;
  host::Host app;
  std::optional<host::Effect> effect;
  std::optional<host::Instance> fx;
  std::optional<host::Panel> panel;

  host::SavedInstance saved;  // of an analysed instance, once made ready
  std::string seen;           // what a visit ended with: pixels, marks, saved bytes

 private:
  void setControls();
  std::string picture();
  host::RenderPath path() const;

  std::string right_;  // the picture, once made ready
};

// The pixels as text.
std::string pixelsOf(const host::Image& image);
// What is saved, without what differs from one saving to the next.
std::string savedState(host::Instance& fx);

}  // namespace effect_test
