// tests/effect/scene.h — flickering footage and the effect applied to it, in a host that is heard.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"

namespace effect_test {

struct FootageSize {
  std::int32_t width;
  std::int32_t height;
  std::int32_t frames;
};

// Expects at its end that the host complained of nothing; what was to be expected, forget().
struct Scene {
  explicit Scene(const FootageSize& size, host::Depth depth = host::Depth::bits8,
                 host::Role role = host::Role::afterEffects, host::HostOptions options = {},
                 host::ApiVersion version = {13, 14})
      : footage(flickeringFootage(size.width, size.height, size.frames, depth)),
        visit(role, version, std::move(options)),
        fx((visit.host().setListener(&listener), visit.effect()), footage) {}
  ~Scene() { EXPECT_EQ(listener.complaints(), ""); }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // With this many frames to either side.
  void analyzeSmoothing(int frames) {
    fx.param("Number of smoothing frames").set(frames);
    fx.press("Analyze");
  }

  RecordingListener listener;
  TestFootage footage;
  Visit visit;
  host::Instance fx;
};

}  // namespace effect_test
