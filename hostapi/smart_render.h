// hostapi/smart_render.h — the two-step render commands.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"
#include "hostapi/world.h"

// The area asked for, in layer coordinates at the current resolution.
struct PF_RenderRequest {
  PF_LRect rect;
  std::int32_t field;
  std::int32_t channel_mask;
  char preserve_rgb_of_zero_alpha;
  char unused[3];
  std::int32_t reserved[4];
};

struct PF_PreRenderInput {
  PF_RenderRequest output_request;
  std::int16_t bitdepth;
  // this field and those below: from version 13.16 on
  const void* gpu_data;
  std::int32_t what_gpu;
  std::uint32_t device_index;
};

struct PF_PreRenderOutput {
  PF_LRect result_rect;
  PF_LRect max_result_rect;
  char solid;
  char reserved;
  std::int16_t flags;
  // the host's from the return on
  void* pre_render_data;
  // null: the host disposes the data as a handle
  PF_DeletePreRenderDataFunc delete_pre_render_data_func;
};

struct PF_CheckoutResult {
  PF_LRect result_rect;
  PF_LRect max_result_rect;
  PF_RationalScale par;
  char solid;
  char reservedB[3];
  std::int32_t ref_width;
  std::int32_t ref_height;
  std::int32_t reserved[6];
};

struct PF_PreRenderCallbacks {
  // effect_ref; index; check-out id; request; time; step; scale; result to fill
  std::int32_t (*checkout_layer)(PF_ProgPtr, std::int32_t, std::int32_t, const PF_RenderRequest*,
                                 std::int32_t, std::int32_t, std::uint32_t, PF_CheckoutResult*);
  // effect_ref; byte count; bytes. Null before version 13.9
  std::int32_t (*GuidMixInPtr)(PF_ProgPtr, std::uint32_t, const void*);
};

struct PF_PreRenderExtra {
  PF_PreRenderInput* input;
  PF_PreRenderOutput* output;
  PF_PreRenderCallbacks* cb;
};

struct PF_SmartRenderInput {
  PF_RenderRequest output_request;
  std::int16_t bitdepth;
  void* pre_render_data;
  // this field and those below: from version 13.16 on
  const void* gpu_data;
  std::int32_t what_gpu;
  std::uint32_t device_index;
};

struct PF_SmartRenderCallbacks {
  // effect_ref; check-out id; out world
  std::int32_t (*checkout_layer_pixels)(PF_ProgPtr, std::int32_t, PF_EffectWorld**);
  // effect_ref; check-out id
  std::int32_t (*checkin_layer_pixels)(PF_ProgPtr, std::int32_t);
  // effect_ref; out world; only after an input
  std::int32_t (*checkout_output)(PF_ProgPtr, PF_EffectWorld**);
};

struct PF_SmartRenderExtra {
  PF_SmartRenderInput* input;
  PF_SmartRenderCallbacks* cb;
};

inline constexpr std::int32_t PF_ChannelMask_ALPHA = 1;
inline constexpr std::int32_t PF_ChannelMask_RED = 2;
inline constexpr std::int32_t PF_ChannelMask_GREEN = 4;
inline constexpr std::int32_t PF_ChannelMask_BLUE = 8;
inline constexpr std::int32_t PF_ChannelMask_ARGB = 15;

inline constexpr std::int16_t PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS = 0x00000001;
inline constexpr std::int16_t PF_RenderOutputFlag_GPU_RENDER_POSSIBLE = 0x00000002;
inline constexpr std::int16_t PF_RenderOutputFlag_RESERVED1 = 0x00000004;
