// host/world_format.h — world records whose pixel format can be told from the record alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "host/image.h"
#include "hostapi/world.h"

namespace host {

// A world over pixels that begin at data. Its format is kept in the record's reserved fields.
PF_EffectWorld describeWorld(std::byte* data, std::ptrdiff_t rowBytes, std::int32_t width,
                             std::int32_t height, Depth depth, bool writable) noexcept;

// The depth of a world that describeWorld made, or a copy of one; nothing for any other record.
std::optional<Depth> worldDepth(const PF_EffectWorld& world) noexcept;

constexpr std::int32_t pixelFormat(Depth depth) noexcept {
  switch (depth) {
    case Depth::bits8:
      return PF_PixelFormat_ARGB32;
    case Depth::bits16:
      return PF_PixelFormat_ARGB64;
    case Depth::float32:
      break;
  }
  return PF_PixelFormat_ARGB128;
}

}  // namespace host
