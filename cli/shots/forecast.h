// cli/shots/forecast.h — how a shot would come out, known before any of it is rendered.
#pragma once

#include <vector>

#include "cli/shots/shot.h"
#include "host/effect.h"
#include "host/image.h"
#include "host/instance.h"

namespace cli {

/// Levels of each picture of a shot by how its light is spread, 0..255.
struct Forecast {
  std::vector<double> input;
  std::vector<double> output;
};

/// The effect is asked what it makes of every level of grey at every picture, with the shot's data
/// and settings, on a layer of 16 x 16 pixels; what happens to the picture follows from how
/// its light is spread. Empty for a shot whose light is not known. Throws what rendering throws.
Forecast forecast(host::Effect& effect, Shot& shot, host::Depth depth, host::RenderPath path,
                  bool favorBrighter);

}  // namespace cli
