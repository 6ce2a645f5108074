// hostapi/world.h — pixels and images.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"

struct PF_Pixel;
struct PF_Pixel16;
struct PF_PixelFloat;

using PF_IteratePixel8Func = std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel*,
                                              PF_Pixel*);
using PF_IteratePixel16Func = std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel16*,
                                               PF_Pixel16*);
using PF_IteratePixelFloatFunc = std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_PixelFloat*,
                                                  PF_PixelFloat*);

// Channels in memory order, 0..255.
struct PF_Pixel {
  std::uint8_t alpha;
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

// Channels in memory order, 0..32768.
struct PF_Pixel16 {
  std::uint16_t alpha;
  std::uint16_t red;
  std::uint16_t green;
  std::uint16_t blue;
};

// Channels in memory order, 1.0 = white.
struct PF_PixelFloat {
  float alpha;
  float red;
  float green;
  float blue;
};

struct PF_CompositeMode {
  std::int32_t xfer;
  std::int32_t rand_seed;
  std::uint8_t opacity;
  char rgb_only;
  std::uint16_t opacitySu;
};

// An image. Its depth is in world_flags (8 or 16 bits) or known to the world suite (also float).
struct PF_LayerDef {
  void* reserved0;
  void* reserved1;
  // PF_WorldFlag_*
  std::int32_t world_flags;
  PF_Pixel* data;
  // may exceed width x pixel size, and be negative
  std::int32_t rowbytes;
  std::int32_t width;
  std::int32_t height;
  PF_Rect extent_hint;
  void* platform_ref;
  std::int32_t reserved_long1;
  void* reserved_long4;
  PF_RationalScale pix_aspect_ratio;
  void* reserved_long2;
  std::int32_t origin_x;
  std::int32_t origin_y;
  std::int32_t reserved_long3;
  std::int32_t dephault;
};
using PF_EffectWorld = PF_LayerDef;

struct PF_MaskWorld {
  PF_EffectWorld mask;
  PF_Point offset;
  std::int32_t what_is_mask;
};

inline constexpr std::int32_t PF_WorldFlag_DEEP = 0x00000001;
inline constexpr std::int32_t PF_WorldFlag_WRITEABLE = 0x00000002;

// First letter in the lowest byte.
inline constexpr std::int32_t PF_PixelFormat_ARGB32 = 0x62677261;
inline constexpr std::int32_t PF_PixelFormat_ARGB64 = 0x36316561;
inline constexpr std::int32_t PF_PixelFormat_ARGB128 = 0x32336561;
inline constexpr std::int32_t PF_PixelFormat_BGRA32 = 0x61726762;
inline constexpr std::int32_t PF_PixelFormat_INVALID = 0x66646162;

// White and middle grey at the two integer depths.
inline constexpr std::int32_t PF_MAX_CHAN8 = 255;
inline constexpr std::int32_t PF_HALF_CHAN8 = 128;
inline constexpr std::int32_t PF_MAX_CHAN16 = 32768;
inline constexpr std::int32_t PF_HALF_CHAN16 = 16384;

inline constexpr std::int32_t PF_MAX_WORLD_WIDTH = 30000;
inline constexpr std::int32_t PF_MAX_WORLD_HEIGHT = 30000;

// PF_LayerDef::dephault of a declared layer parameter.
inline constexpr std::int32_t PF_LayerDefault_MYSELF = -1;
inline constexpr std::int32_t PF_LayerDefault_NONE = 0;

inline constexpr std::int32_t PF_NewWorldFlag_NONE = 0;
inline constexpr std::int32_t PF_NewWorldFlag_CLEAR_PIXELS = 0x00000001;
inline constexpr std::int32_t PF_NewWorldFlag_DEEP_PIXELS = 0x00000002;
inline constexpr std::int32_t PF_NewWorldFlag_RESERVED0 = 0x00000004;
inline constexpr std::int32_t PF_NewWorldFlag_RESERVED1 = 0x00000008;
