// tests/host/test_effect.h — a small effect whose every command a test can take over.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "hostapi/command_data.h"
#include "hostapi/commands.h"
#include "hostapi/parameters.h"

// Parameters of the effect, by index.
enum TestParam : std::int32_t {
  kAmount = 1,  // fixed slider 0..100, default 10
  kSwitch,      // checkbox, supervised, off
  kSpot,        // point at 25 %, 75 %
  kMode,        // popup of three, default 2
  kGo,          // button "Go"
  kCurve,       // arbitrary: one double, default 128
  kHidden,      // float slider 0..64000
  kTestParams
};

// What the effect asks for under "Curve".
inline constexpr std::int16_t kPanelWidth = 120;
inline constexpr std::int16_t kPanelHeight = 80;

struct TestCall {
  std::int32_t command;
  PF_InData* in;
  PF_OutData* out;
  PF_ParamDef** params;
  PF_LayerDef* output;
  void* extra;
};

// Runs inside the effect before it does anything; a value given ends the command with it.
using TestHook = std::function<std::optional<std::int32_t>(const TestCall&)>;
