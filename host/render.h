// host/render.h — rendering one frame with one copy of an instance.
#pragma once

#include <cstdint>
#include <string>

#include "host/image.h"
#include "host/instance.h"
#include "host/sequence_copy.h"

namespace host {

// Fills output, made anew when its shape or depth is another. Gives the frame's cache key. Throws
// CommandError, Cancelled, or what the frame source threw.
std::string renderFrame(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output,
                        RenderPath path);

std::string renderSmart(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output);
std::string renderClassic(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output);

// What identifies a frame besides the bytes that the effect mixes in.
std::string baseCacheKey(SequenceCopy& copy, std::int32_t time, Depth depth, RenderPath path);

}  // namespace host
