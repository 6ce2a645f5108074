// host/pixel_callbacks.cpp — filling and copying worlds for effects.
#include "host/pixel_callbacks.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "host/command.h"
#include "host/effect_state.h"
#include "host/world_format.h"

namespace host {
namespace {

using Colour = std::array<double, 4>;  // alpha, red, green, blue; 1.0 = white

// A record of unknown origin tells 16 from 8 bit by its flag; nobody but a host makes float ones.
Depth depthOf(const PF_EffectWorld& world) noexcept {
  if (const auto depth = worldDepth(world)) return *depth;
  return (world.world_flags & PF_WorldFlag_DEEP) != 0 ? Depth::bits16 : Depth::bits8;
}

std::byte* pixelAt(const PF_EffectWorld& world, std::int32_t x, std::int32_t y,
                   std::size_t bytes) noexcept {
  return reinterpret_cast<std::byte*>(world.data) +
         static_cast<std::ptrdiff_t>(y) * world.rowbytes +
         static_cast<std::ptrdiff_t>(x) * static_cast<std::ptrdiff_t>(bytes);
}

// The colour's bytes at a depth; gives their number.
std::size_t encode(const Colour& colour, Depth depth, std::array<std::byte, 16>& bytes) noexcept {
  for (std::size_t i = 0; i < 4; ++i) {
    const double v = colour[i];
    if (depth == Depth::bits8) {
      bytes[i] = static_cast<std::byte>(static_cast<std::uint8_t>(v * PF_MAX_CHAN8 + 0.5));
    } else if (depth == Depth::bits16) {
      const auto value = static_cast<std::uint16_t>(v * PF_MAX_CHAN16 + 0.5);
      std::memcpy(&bytes[i * 2], &value, sizeof value);
    } else {
      const auto value = static_cast<float>(v);
      std::memcpy(&bytes[i * 4], &value, sizeof value);
    }
  }
  return static_cast<std::size_t>(pixelBytes(depth));
}

std::int32_t fill(PF_ProgPtr ref, const Colour& colour, const PF_Rect* area,
                  PF_EffectWorld* world) {
  Command* command = commandOf(ref, "fill");
  if (command == nullptr || world == nullptr || world->data == nullptr) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (const std::int32_t error = command->effect.state.faults.check(CallKind::fill)) return error;
  const PF_Rect whole{0, 0, world->width, world->height};
  const PF_Rect wanted = area != nullptr ? *area : whole;
  const std::int32_t left = std::max(wanted.left, 0);
  const std::int32_t right = std::min(wanted.right, world->width);
  std::array<std::byte, 16> pixel{};
  const std::size_t bytes = encode(colour, depthOf(*world), pixel);
  for (std::int32_t y = std::max(wanted.top, 0); y < std::min(wanted.bottom, world->height); ++y) {
    for (std::int32_t x = left; x < right; ++x) {
      std::memcpy(pixelAt(*world, x, y, bytes), pixel.data(), bytes);
    }
  }
  return PF_Err_NONE;
}

// One row, each of the source's pixels as often or as rarely as the widths ask for.
void copyStretched(const PF_EffectWorld& source, const PF_Rect& from, std::int32_t fromY,
                   const PF_EffectWorld& destination, const PF_Rect& to, std::int32_t toY,
                   std::size_t bytes) {
  const std::int64_t fromWidth = from.right - from.left;
  const std::int64_t toWidth = to.right - to.left;
  const std::int64_t whole = fromWidth / toWidth;
  const std::int64_t part = fromWidth % toWidth;
  const std::int32_t left = std::max(to.left, 0);
  // from.left + (at - to.left) * fromWidth / toWidth, without a division for each pixel.
  const std::int64_t before = (std::int64_t{left} - to.left) * fromWidth;
  std::int64_t x = from.left + before / toWidth;
  std::int64_t rest = before % toWidth;
  for (std::int32_t at = left; at < std::min(to.right, destination.width); ++at) {
    if (x >= 0 && x < source.width) {
      std::memcpy(pixelAt(destination, at, toY, bytes),
                  pixelAt(source, static_cast<std::int32_t>(x), fromY, bytes), bytes);
    }
    x += whole;
    rest += part;
    if (rest >= toWidth) {
      rest -= toWidth;
      ++x;
    }
  }
}

}  // namespace

std::int32_t fillWorld(PF_ProgPtr ref, const PF_Pixel* colour, const PF_Rect* area,
                       PF_EffectWorld* world) {
  Colour values{};
  if (colour != nullptr) {
    values = {colour->alpha / 255.0, colour->red / 255.0, colour->green / 255.0,
              colour->blue / 255.0};
  }
  return fill(ref, values, area, world);
}

std::int32_t fillWorld16(PF_ProgPtr ref, const PF_Pixel16* colour, const PF_Rect* area,
                         PF_EffectWorld* world) {
  Colour values{};
  if (colour != nullptr) {
    values = {colour->alpha / 32768.0, colour->red / 32768.0, colour->green / 32768.0,
              colour->blue / 32768.0};
  }
  return fill(ref, values, area, world);
}

std::int32_t copyWorld(PF_ProgPtr ref, PF_EffectWorld* source, PF_EffectWorld* destination,
                       PF_Rect* sourceArea, PF_Rect* destinationArea) {
  Command* command = commandOf(ref, "copy");
  if (command == nullptr || source == nullptr || destination == nullptr ||
      source->data == nullptr || destination->data == nullptr) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::copy)) return error;
  if (depthOf(*source) != depthOf(*destination)) {
    state.report("copy: the worlds have different depths");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  const PF_Rect from =
      sourceArea != nullptr ? *sourceArea : PF_Rect{0, 0, source->width, source->height};
  const PF_Rect to = destinationArea != nullptr
                         ? *destinationArea
                         : PF_Rect{0, 0, destination->width, destination->height};
  const std::int64_t fromWidth = from.right - from.left;
  const std::int64_t fromHeight = from.bottom - from.top;
  const std::int64_t toWidth = to.right - to.left;
  const std::int64_t toHeight = to.bottom - to.top;
  if (fromWidth <= 0 || fromHeight <= 0 || toWidth <= 0 || toHeight <= 0) return PF_Err_NONE;
  const auto bytes = static_cast<std::size_t>(pixelBytes(depthOf(*source)));
  const bool stretched = fromWidth != toWidth;
  // Without stretching: the columns that both worlds have.
  const std::int64_t shift = std::int64_t{from.left} - to.left;
  const std::int64_t left = std::max<std::int64_t>({to.left, 0, -shift});
  const std::int64_t right =
      std::min<std::int64_t>({to.right, destination->width, source->width - shift});
  for (std::int32_t y = std::max(to.top, 0); y < std::min(to.bottom, destination->height); ++y) {
    const auto sy = static_cast<std::int32_t>(from.top + (y - to.top) * fromHeight / toHeight);
    if (sy < 0 || sy >= source->height) continue;
    if (stretched) {
      copyStretched(*source, from, sy, *destination, to, y, bytes);
    } else if (right > left) {
      const auto at = static_cast<std::int32_t>(left);
      std::memmove(pixelAt(*destination, at, y, bytes),
                   pixelAt(*source, static_cast<std::int32_t>(left + shift), sy, bytes),
                   static_cast<std::size_t>(right - left) * bytes);
    }
  }
  return PF_Err_NONE;
}

std::int32_t pixelData8(PF_EffectWorld* world, PF_Pixel* pixels, PF_Pixel** address) {
  if (world == nullptr || address == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *address = depthOf(*world) == Depth::bits8 ? (pixels != nullptr ? pixels : world->data) : nullptr;
  return PF_Err_NONE;
}

std::int32_t pixelData16(PF_EffectWorld* world, PF_Pixel* pixels, PF_Pixel16** address) {
  if (world == nullptr || address == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  PF_Pixel* const first = pixels != nullptr ? pixels : world->data;
  *address = depthOf(*world) == Depth::bits16 ? static_cast<PF_Pixel16*>(static_cast<void*>(first))
                                              : nullptr;
  return PF_Err_NONE;
}

std::int32_t formatOfWorld(const PF_EffectWorld* world, std::int32_t* format) {
  if (world == nullptr || format == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (HostState* host = currentHost()) {
    if (const std::int32_t error = host->faults.check(CallKind::getPixelFormat)) {
      *format = PF_PixelFormat_INVALID;
      return refusal(error);
    }
  }
  *format = pixelFormat(depthOf(*world));
  return PF_Err_NONE;
}

}  // namespace host
