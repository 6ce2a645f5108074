// stats/frame_count.h — a layer's frames from its times.
#pragma once

#include <cstdint>

namespace varilum {

// Rounded number of frames, (totalTime + timeStep / 2) / timeStep in 64 bits; never negative,
// saturated to 32 bits; 1 when timeStep is not positive. Times in the host's units.
std::int32_t layerFrameCount(std::int32_t totalTime, std::int32_t timeStep) noexcept;

// Index of the frame at a time, currentTime / timeStep clamped to 0..frameCount - 1; 0 when
// timeStep is not positive or there are no frames.
std::int32_t frameAt(std::int32_t currentTime, std::int32_t timeStep,
                     std::int32_t frameCount) noexcept;

}  // namespace varilum
