// plugin/global_state.h — what the effect keeps for as long as the host has it loaded.
#pragma once

#include <cstdint>

#include "stats/luminance.h"

namespace varilum {

// In the handle of global_data, made at GLOBAL_SETUP; never saved. Written on the UI thread only.
struct GlobalState {
  LuminanceWeights weights;
  std::uint32_t reserved;
  std::uint8_t isAfterEffects;
  std::uint8_t isPremiere;
  std::uint8_t isSpec13_2;  // exactly 13.2
  std::uint8_t isSpec13_4;  // 13.4 or a later 13
  std::uint8_t isSpec13_7;
  std::uint8_t hostSupported;       // recent enough
  std::int32_t aegpPluginId;        // After Effects only
  std::uint8_t renderEngine;        // nobody at the screen: no message boxes
  std::uint8_t showUsageNotes;      // at the next new instance
  std::uint8_t versionTextPending;  // hostVersionText is still to be asked for
  char hostTag[5];                  // "FXTC", "PrMr" or "????"
  char hostVersionText[32];
};

}  // namespace varilum
