// hostapi/suites/iterate.h — running a function over the pixels of an image.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/world.h"

struct PF_InData;
struct PF_Pixel;
struct PF_Pixel16;
struct PF_Point;

struct PF_Iterate8Suite1 {
  // in_data; progress start; progress end (0 = no progress); source world or null; area or null for
  // all; context; pixel function; destination world
  std::int32_t (*iterate)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                          void*,
                          std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel*, PF_Pixel*),
                          PF_EffectWorld*);
  std::int32_t (*iterate_origin)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                                 const PF_Rect*, const PF_Point*, void*,
                                 std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel*,
                                                  PF_Pixel*),
                                 PF_EffectWorld*);
  std::int32_t (*iterate_lut)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                              const PF_Rect*, std::uint8_t*, std::uint8_t*, std::uint8_t*,
                              std::uint8_t*, PF_EffectWorld*);
  std::int32_t (*iterate_origin_non_clip_src)(
      PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*, const PF_Point*,
      void*, std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel*, PF_Pixel*),
      PF_EffectWorld*);
  std::int32_t (*iterate_generic)(std::int32_t, void*,
                                  std::int32_t (*)(void*, std::int32_t, std::int32_t,
                                                   std::int32_t));
};

struct PF_Iterate16Suite1 {
  // in_data; progress start; progress end (0 = no progress); source world or null; area or null for
  // all; context; pixel function; destination world
  std::int32_t (*iterate)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                          void*,
                          std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel16*,
                                           PF_Pixel16*),
                          PF_EffectWorld*);
  std::int32_t (*iterate_origin)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                                 const PF_Rect*, const PF_Point*, void*,
                                 std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel16*,
                                                  PF_Pixel16*),
                                 PF_EffectWorld*);
  std::int32_t (*iterate_origin_non_clip_src)(
      PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*, const PF_Point*,
      void*, std::int32_t (*)(void*, std::int32_t, std::int32_t, PF_Pixel16*, PF_Pixel16*),
      PF_EffectWorld*);
};

struct PF_IterateFloatSuite1 {
  // in_data; progress start; progress end (0 = no progress); source world or null; area or null for
  // all; context; pixel function; destination world
  std::int32_t (*iterate)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                          void*, PF_IteratePixelFloatFunc, PF_EffectWorld*);
  std::int32_t (*iterate_origin)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                                 const PF_Rect*, const PF_Point*, void*, PF_IteratePixelFloatFunc,
                                 PF_EffectWorld*);
  std::int32_t (*iterate_origin_non_clip_src)(PF_InData*, std::int32_t, std::int32_t,
                                              PF_EffectWorld*, const PF_Rect*, const PF_Point*,
                                              void*, PF_IteratePixelFloatFunc, PF_EffectWorld*);
};

inline constexpr const char* kPFIterate8Suite = "PF Iterate8 Suite";
inline constexpr const char* kPFIterate16Suite = "PF iterate16 Suite";
inline constexpr const char* kPFIterateFloatSuite = "PF iterateFloat Suite";

inline constexpr std::int32_t kPFIterate8SuiteVersion1 = 1;
inline constexpr std::int32_t kPFIterate8SuiteVersion2 = 2;
inline constexpr std::int32_t kPFIterate16SuiteVersion1 = 1;
inline constexpr std::int32_t kPFIterate16SuiteVersion2 = 2;
inline constexpr std::int32_t kPFIterateFloatSuiteVersion1 = 1;
inline constexpr std::int32_t kPFIterateFloatSuiteVersion2 = 2;
