// hostapi/callbacks.h — what the host offers beside its suites.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"
#include "hostapi/world.h"

struct PF_CompositeMode;
struct PF_CustomUIInfo;
struct PF_FloatMatrix;
struct PF_InData;
struct PF_MaskWorld;
struct PF_ParamDef;
struct PF_Pixel;
struct PF_Pixel16;
struct PF_Point;

struct PF_SampPB {
  std::int32_t x_radius;
  std::int32_t y_radius;
  std::int32_t area;
  PF_EffectWorld* src;
  std::uint32_t samp_behave;
  std::int32_t allow_asynch;
  std::int32_t motion_blur;
  PF_CompositeMode comp_mode;
  PF_Pixel* mask0;
  std::uint8_t* fcm_table;
  std::uint8_t* fcd_table;
  std::int32_t reserved[8];
};

struct PF_InteractCallbacks {
  // effect_ref; index (0 = input layer); time; step; scale; definition to fill, the caller's own
  std::int32_t (*checkout_param)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                 std::uint32_t, PF_ParamDef*);
  // effect_ref; the definition filled by checkout_param
  std::int32_t (*checkin_param)(PF_ProgPtr, PF_ParamDef*);
  // effect_ref; -1 = append; definition. PARAMS_SETUP only
  std::int32_t (*add_param)(PF_ProgPtr, std::int32_t, PF_ParamDef*);
  // non-zero = stop; return the value unchanged
  std::int32_t (*abort)(PF_ProgPtr);
  // effect_ref; current; total; non-zero = stop
  std::int32_t (*progress)(PF_ProgPtr, std::int32_t, std::int32_t);
  // PARAMS_SETUP only
  std::int32_t (*register_ui)(PF_ProgPtr, PF_CustomUIInfo*);
  std::int32_t (*checkout_layer_audio)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                       std::uint32_t, std::uint32_t, std::int32_t, std::int32_t,
                                       std::int32_t, PF_LayerAudio*);
  std::int32_t (*checkin_layer_audio)(PF_ProgPtr, PF_LayerAudio);
  std::int32_t (*get_audio_data)(PF_ProgPtr, PF_LayerAudio, void**, std::int32_t*, std::uint32_t*,
                                 std::int32_t*, std::int32_t*, std::int32_t*);
  void* reserved_str[3];
  void* reserved[10];
};

struct PF_ANSICallbacks {
  double (*atan)(double);
  double (*atan2)(double, double);
  double (*ceil)(double);
  double (*cos)(double);
  double (*exp)(double);
  double (*fabs)(double);
  double (*floor)(double);
  double (*fmod)(double, double);
  double (*hypot)(double, double);
  double (*log)(double);
  double (*log10)(double);
  double (*pow)(double, double);
  double (*sin)(double);
  double (*sqrt)(double);
  double (*tan)(double);
  std::int32_t (*sprintf)(char*, const char*, ...);
  char* (*strcpy)(char*, const char*);
  double (*asin)(double);
  double (*acos)(double);
  std::int32_t ansi_procs[1];
};

struct PF_ColorCallbacks {
  std::int32_t (*RGBtoHLS)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
  std::int32_t (*HLStoRGB)(PF_ProgPtr, std::int32_t*, PF_Pixel*);
  std::int32_t (*RGBtoYIQ)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
  std::int32_t (*YIQtoRGB)(PF_ProgPtr, std::int32_t*, PF_Pixel*);
  std::int32_t (*Luminance)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
  std::int32_t (*Hue)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
  std::int32_t (*Lightness)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
  std::int32_t (*Saturation)(PF_ProgPtr, PF_Pixel*, std::int32_t*);
};

// Services that need no suite. Handles and mathematics may be called on any thread.
struct PF_UtilCallbacks {
  std::int32_t (*begin_sampling)(PF_ProgPtr, std::int32_t, std::int32_t, PF_SampPB*);
  std::int32_t (*subpixel_sample)(PF_ProgPtr, std::int32_t, std::int32_t, const PF_SampPB*,
                                  PF_Pixel*);
  std::int32_t (*area_sample)(PF_ProgPtr, std::int32_t, std::int32_t, const PF_SampPB*, PF_Pixel*);
  void* get_batch_func_is_deprecated;
  std::int32_t (*end_sampling)(PF_ProgPtr, std::int32_t, std::int32_t, PF_SampPB*);
  std::int32_t (*composite_rect)(PF_ProgPtr, PF_Rect*, std::int32_t, PF_EffectWorld*, std::int32_t,
                                 std::int32_t, std::int32_t, std::int32_t, PF_EffectWorld*);
  std::int32_t (*blend)(PF_ProgPtr, const PF_EffectWorld*, const PF_EffectWorld*, std::int32_t,
                        PF_EffectWorld*);
  std::int32_t (*convolve)(PF_ProgPtr, PF_EffectWorld*, const PF_Rect*, std::uint32_t, std::int32_t,
                           void*, void*, void*, void*, PF_EffectWorld*);
  // effect_ref; source; destination; source area or null; destination area or null
  std::int32_t (*copy)(PF_ProgPtr, PF_EffectWorld*, PF_EffectWorld*, PF_Rect*, PF_Rect*);
  // effect_ref; colour or null for all channels 0; area or null for all; world
  std::int32_t (*fill)(PF_ProgPtr, const PF_Pixel*, const PF_Rect*, PF_EffectWorld*);
  std::int32_t (*gaussian_kernel)(PF_ProgPtr, double, std::uint32_t, double, std::int32_t*, void*);
  // in_data; progress start, end (0 = none); source or null; area; context; function; destination
  std::int32_t (*iterate)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                          void*, PF_IteratePixel8Func, PF_EffectWorld*);
  std::int32_t (*premultiply)(PF_ProgPtr, std::int32_t, PF_EffectWorld*);
  std::int32_t (*premultiply_color)(PF_ProgPtr, PF_EffectWorld*, const PF_Pixel*, std::int32_t,
                                    PF_EffectWorld*);
  std::int32_t (*new_world)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t, PF_EffectWorld*);
  std::int32_t (*dispose_world)(PF_ProgPtr, PF_EffectWorld*);
  std::int32_t (*iterate_origin)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                                 const PF_Rect*, const PF_Point*, void*, PF_IteratePixel8Func,
                                 PF_EffectWorld*);
  std::int32_t (*iterate_lut)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                              const PF_Rect*, std::uint8_t*, std::uint8_t*, std::uint8_t*,
                              std::uint8_t*, PF_EffectWorld*);
  std::int32_t (*transfer_rect)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                const PF_Rect*, const PF_EffectWorld*, const PF_CompositeMode*,
                                const PF_MaskWorld*, std::int32_t, std::int32_t, PF_EffectWorld*);
  std::int32_t (*transform_world)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                  const PF_EffectWorld*, const PF_CompositeMode*,
                                  const PF_MaskWorld*, const PF_FloatMatrix*, std::int32_t, char,
                                  const PF_Rect*, PF_EffectWorld*);
  // byte count; null when out of memory
  void** (*host_new_handle)(std::uint64_t);
  // address of the block or null; locks nest
  void* (*host_lock_handle)(void**);
  void (*host_unlock_handle)(void**);
  void (*host_dispose_handle)(void**);
  std::int32_t (*get_callback_addr)(PF_ProgPtr, std::int32_t, std::int32_t, std::int32_t,
                                    PF_CallbackFunc*);
  std::int32_t (*app)(PF_ProgPtr, std::int32_t, ...);
  PF_ANSICallbacks ansi;
  PF_ColorCallbacks colorCB;
  // effect_ref; which; buffer to fill
  std::int32_t (*get_platform_data)(PF_ProgPtr, std::int32_t, void*);
  std::uint64_t (*host_get_handle_size)(void**);
  std::int32_t (*iterate_origin_non_clip_src)(PF_InData*, std::int32_t, std::int32_t,
                                              PF_EffectWorld*, const PF_Rect*, const PF_Point*,
                                              void*, PF_IteratePixel8Func, PF_EffectWorld*);
  std::int32_t (*iterate_generic)(std::int32_t, void*,
                                  std::int32_t (*)(void*, std::int32_t, std::int32_t,
                                                   std::int32_t));
  std::int32_t (*host_resize_handle)(std::uint64_t, void***);
  std::int32_t (*subpixel_sample16)(PF_ProgPtr, std::int32_t, std::int32_t, const PF_SampPB*,
                                    PF_Pixel16*);
  std::int32_t (*area_sample16)(PF_ProgPtr, std::int32_t, std::int32_t, const PF_SampPB*,
                                PF_Pixel16*);
  std::int32_t (*fill16)(PF_ProgPtr, const PF_Pixel16*, const PF_Rect*, PF_EffectWorld*);
  std::int32_t (*premultiply_color16)(PF_ProgPtr, PF_EffectWorld*, const PF_Pixel16*, std::int32_t,
                                      PF_EffectWorld*);
  // as iterate
  std::int32_t (*iterate16)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*, const PF_Rect*,
                            void*, PF_IteratePixel16Func, PF_EffectWorld*);
  std::int32_t (*iterate_origin16)(PF_InData*, std::int32_t, std::int32_t, PF_EffectWorld*,
                                   const PF_Rect*, const PF_Point*, void*, PF_IteratePixel16Func,
                                   PF_EffectWorld*);
  std::int32_t (*iterate_origin_non_clip_src16)(PF_InData*, std::int32_t, std::int32_t,
                                                PF_EffectWorld*, const PF_Rect*, const PF_Point*,
                                                void*, PF_IteratePixel16Func, PF_EffectWorld*);
  std::int32_t (*get_pixel_data8)(PF_EffectWorld*, PF_Pixel*, PF_Pixel**);
  std::int32_t (*get_pixel_data16)(PF_EffectWorld*, PF_Pixel*, PF_Pixel16**);
  std::int32_t reserved[1];
};

inline constexpr std::int32_t PF_PlatData_MAIN_WND = 0;
inline constexpr std::int32_t PF_PlatData_RES_DLLINSTANCE = 4;
inline constexpr std::int32_t PF_PlatData_EXE_FILE_PATH_W = 7;
inline constexpr std::int32_t PF_PlatData_RES_FILE_PATH_W = 8;
