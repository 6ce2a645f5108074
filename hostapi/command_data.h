// hostapi/command_data.h — the two records that go with every command.
#pragma once

#include <cstdint>

#include "hostapi/callbacks.h"
#include "hostapi/geometry.h"
#include "hostapi/scalars.h"

struct PF_UtilCallbacks;
struct SPBasicSuite;

struct PF_SoundFormatInfo {
  double rateF;
  std::int16_t num_channels;
  std::int16_t format;
  std::int16_t sample_size;
};

struct PF_SoundWorld {
  PF_SoundFormatInfo fi;
  std::int32_t num_samples;
  void* dataP;
};

struct PF_SpecVersion {
  std::int16_t major;
  std::int16_t minor;
};

// What the host tells with each command. Which fields are valid depends on the command.
struct PF_InData {
  PF_InteractCallbacks inter;
  PF_UtilCallbacks* utils;
  PF_ProgPtr effect_ref;
  std::int32_t quality;
  // of the interface that the host speaks
  PF_SpecVersion version;
  std::int32_t serial_num;
  std::int32_t appl_id;
  std::int32_t num_params;
  std::int32_t reserved;
  std::int32_t what_cpu;
  std::int32_t what_fpu;
  std::int32_t current_time;
  // duration of this frame; may be 0 or negative
  std::int32_t time_step;
  // duration of the layer
  std::int32_t total_time;
  std::int32_t local_time_step;
  // units of time in a second
  std::uint32_t time_scale;
  std::int32_t field;
  std::int32_t shutter_angle;
  std::int32_t width;
  std::int32_t height;
  PF_Rect extent_hint;
  std::int32_t output_origin_x;
  std::int32_t output_origin_y;
  PF_RationalScale downsample_x;
  PF_RationalScale downsample_y;
  PF_RationalScale pixel_aspect_ratio;
  // PF_InFlag_*; meaningful in SEQUENCE_RESETUP
  std::int32_t in_flags;
  void** global_data;
  void** sequence_data;
  void** frame_data;
  std::int32_t start_sampL;
  std::int32_t dur_sampL;
  std::int32_t total_sampL;
  PF_SoundWorld src_snd;
  SPBasicSuite* pica_basicP;
  std::int32_t pre_effect_source_origin_x;
  std::int32_t pre_effect_source_origin_y;
  std::int32_t shutter_phase;
};

// What the effect answers. The handles are filled in with the current ones before each command.
struct PF_OutData {
  std::uint32_t my_version;
  char name[32];
  void** global_data;
  std::int32_t num_params;
  void** sequence_data;
  std::int32_t flat_sdata_size;
  void** frame_data;
  std::int32_t width;
  std::int32_t height;
  PF_Point origin;
  std::int32_t out_flags;
  // shown to the user when not empty
  char return_msg[256];
  std::int32_t start_sampL;
  std::int32_t dur_sampL;
  PF_SoundWorld dest_snd;
  std::int32_t out_flags2;
};

inline constexpr std::int32_t PF_InFlag_NONE = 0;
inline constexpr std::int32_t PF_InFlag_PROJECT_IS_RENDER_ONLY = 0x00000001;

inline constexpr std::int32_t PF_Quality_DRAWING_AUDIO = -1;
inline constexpr std::int32_t PF_Quality_LO = 0;
inline constexpr std::int32_t PF_Quality_HI = 1;

inline constexpr std::int32_t PF_Field_FRAME = 0;
inline constexpr std::int32_t PF_Field_UPPER = 1;
inline constexpr std::int32_t PF_Field_LOWER = 2;

inline constexpr std::int32_t PF_MAX_EFFECT_MSG_LEN = 255;

// in_data.appl_id, first letter in the highest byte.
inline constexpr std::int32_t kAfterEffectsApplication = 0x46585443;  // 'FXTC'
inline constexpr std::int32_t kPremiereApplication = 0x50724D72;      // 'PrMr'
