// hostapi/layout/command_data.cpp — sizes and offsets of hostapi/command_data.h, held at compile
// time.
#include "hostapi/command_data.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(PF_SoundFormatInfo, 16);
ASSERT_ALIGN(PF_SoundFormatInfo, 8);
ASSERT_FIELD(PF_SoundFormatInfo, rateF, 0, 8);
ASSERT_FIELD(PF_SoundFormatInfo, num_channels, 8, 2);
ASSERT_FIELD(PF_SoundFormatInfo, format, 10, 2);
ASSERT_FIELD(PF_SoundFormatInfo, sample_size, 12, 2);

ASSERT_SIZE(PF_SoundWorld, 32);
ASSERT_ALIGN(PF_SoundWorld, 8);
ASSERT_FIELD(PF_SoundWorld, fi, 0, 16);
ASSERT_FIELD(PF_SoundWorld, num_samples, 16, 4);
ASSERT_FIELD(PF_SoundWorld, dataP, 24, 8);

ASSERT_SIZE(PF_SpecVersion, 4);
ASSERT_ALIGN(PF_SpecVersion, 2);
ASSERT_FIELD(PF_SpecVersion, major, 0, 2);
ASSERT_FIELD(PF_SpecVersion, minor, 2, 2);

ASSERT_SIZE(PF_InData, 408);
ASSERT_ALIGN(PF_InData, 8);
ASSERT_FIELD(PF_InData, inter, 0, 176);
ASSERT_FIELD(PF_InData, utils, 176, 8);
ASSERT_FIELD(PF_InData, effect_ref, 184, 8);
ASSERT_FIELD(PF_InData, quality, 192, 4);
ASSERT_FIELD(PF_InData, version, 196, 4);
ASSERT_FIELD(PF_InData, serial_num, 200, 4);
ASSERT_FIELD(PF_InData, appl_id, 204, 4);
ASSERT_FIELD(PF_InData, num_params, 208, 4);
ASSERT_FIELD(PF_InData, reserved, 212, 4);
ASSERT_FIELD(PF_InData, what_cpu, 216, 4);
ASSERT_FIELD(PF_InData, what_fpu, 220, 4);
ASSERT_FIELD(PF_InData, current_time, 224, 4);
ASSERT_FIELD(PF_InData, time_step, 228, 4);
ASSERT_FIELD(PF_InData, total_time, 232, 4);
ASSERT_FIELD(PF_InData, local_time_step, 236, 4);
ASSERT_FIELD(PF_InData, time_scale, 240, 4);
ASSERT_FIELD(PF_InData, field, 244, 4);
ASSERT_FIELD(PF_InData, shutter_angle, 248, 4);
ASSERT_FIELD(PF_InData, width, 252, 4);
ASSERT_FIELD(PF_InData, height, 256, 4);
ASSERT_FIELD(PF_InData, extent_hint, 260, 16);
ASSERT_FIELD(PF_InData, output_origin_x, 276, 4);
ASSERT_FIELD(PF_InData, output_origin_y, 280, 4);
ASSERT_FIELD(PF_InData, downsample_x, 284, 8);
ASSERT_FIELD(PF_InData, downsample_y, 292, 8);
ASSERT_FIELD(PF_InData, pixel_aspect_ratio, 300, 8);
ASSERT_FIELD(PF_InData, in_flags, 308, 4);
ASSERT_FIELD(PF_InData, global_data, 312, 8);
ASSERT_FIELD(PF_InData, sequence_data, 320, 8);
ASSERT_FIELD(PF_InData, frame_data, 328, 8);
ASSERT_FIELD(PF_InData, start_sampL, 336, 4);
ASSERT_FIELD(PF_InData, dur_sampL, 340, 4);
ASSERT_FIELD(PF_InData, total_sampL, 344, 4);
ASSERT_FIELD(PF_InData, src_snd, 352, 32);
ASSERT_FIELD(PF_InData, pica_basicP, 384, 8);
ASSERT_FIELD(PF_InData, pre_effect_source_origin_x, 392, 4);
ASSERT_FIELD(PF_InData, pre_effect_source_origin_y, 396, 4);
ASSERT_FIELD(PF_InData, shutter_phase, 400, 4);

ASSERT_SIZE(PF_OutData, 408);
ASSERT_ALIGN(PF_OutData, 8);
ASSERT_FIELD(PF_OutData, my_version, 0, 4);
ASSERT_FIELD(PF_OutData, name, 4, 32);
ASSERT_FIELD(PF_OutData, global_data, 40, 8);
ASSERT_FIELD(PF_OutData, num_params, 48, 4);
ASSERT_FIELD(PF_OutData, sequence_data, 56, 8);
ASSERT_FIELD(PF_OutData, flat_sdata_size, 64, 4);
ASSERT_FIELD(PF_OutData, frame_data, 72, 8);
ASSERT_FIELD(PF_OutData, width, 80, 4);
ASSERT_FIELD(PF_OutData, height, 84, 4);
ASSERT_FIELD(PF_OutData, origin, 88, 8);
ASSERT_FIELD(PF_OutData, out_flags, 96, 4);
ASSERT_FIELD(PF_OutData, return_msg, 100, 256);
ASSERT_FIELD(PF_OutData, start_sampL, 356, 4);
ASSERT_FIELD(PF_OutData, dur_sampL, 360, 4);
ASSERT_FIELD(PF_OutData, dest_snd, 368, 32);
ASSERT_FIELD(PF_OutData, out_flags2, 400, 4);
