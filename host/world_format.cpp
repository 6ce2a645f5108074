// host/world_format.cpp — world records whose pixel format can be told from the record alone.
#include "host/world_format.h"

namespace host {
namespace {

// Addresses of these mark our records and their depths: no effect can come by them by chance.
char mark8, mark16, mark32;

void* markOf(Depth depth) noexcept {
  switch (depth) {
    case Depth::bits8:
      return &mark8;
    case Depth::bits16:
      return &mark16;
    case Depth::float32:
      break;
  }
  return &mark32;
}

}  // namespace

PF_EffectWorld describeWorld(std::byte* data, std::ptrdiff_t rowBytes, std::int32_t width,
                             std::int32_t height, Depth depth, bool writable) noexcept {
  PF_EffectWorld world{};
  world.reserved0 = markOf(depth);
  world.world_flags =
      (depth == Depth::bits16 ? PF_WorldFlag_DEEP : 0) | (writable ? PF_WorldFlag_WRITEABLE : 0);
  world.data = reinterpret_cast<PF_Pixel*>(data);
  world.rowbytes = static_cast<std::int32_t>(rowBytes);
  world.width = width;
  world.height = height;
  world.extent_hint = {0, 0, width, height};
  world.pix_aspect_ratio = {1, 1};
  return world;
}

std::optional<Depth> worldDepth(const PF_EffectWorld& world) noexcept {
  for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
    if (world.reserved0 == markOf(depth)) return depth;
  }
  return std::nullopt;
}

}  // namespace host
