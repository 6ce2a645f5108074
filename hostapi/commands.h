// hostapi/commands.h — commands, their results and flags, and the entry point.
#pragma once

#include <cstdint>

struct PF_InData;
struct PF_OutData;
struct PF_ParamDef;
struct PF_LayerDef;

// The one export, "EntryPointFunc": command, in_data, out_data, params, output, extra.
// extra: PF_UserChangedParamExtra (13), PF_EventExtra (15), PF_ArbParamsExtra (22),
// PF_PreRenderExtra (23), PF_SmartRenderExtra (24). Nothing may be thrown out of it.
using EntryPoint = std::int32_t (*)(std::int32_t, PF_InData*, PF_OutData*, PF_ParamDef**,
                                    PF_LayerDef*, void*);

inline constexpr std::int32_t PF_Cmd_ABOUT = 0;
inline constexpr std::int32_t PF_Cmd_GLOBAL_SETUP = 1;
inline constexpr std::int32_t PF_Cmd_UNUSED_0 = 2;
inline constexpr std::int32_t PF_Cmd_GLOBAL_SETDOWN = 3;
inline constexpr std::int32_t PF_Cmd_PARAMS_SETUP = 4;
inline constexpr std::int32_t PF_Cmd_SEQUENCE_SETUP = 5;
inline constexpr std::int32_t PF_Cmd_SEQUENCE_RESETUP = 6;
inline constexpr std::int32_t PF_Cmd_SEQUENCE_FLATTEN = 7;
inline constexpr std::int32_t PF_Cmd_SEQUENCE_SETDOWN = 8;
inline constexpr std::int32_t PF_Cmd_DO_DIALOG = 9;
inline constexpr std::int32_t PF_Cmd_FRAME_SETUP = 10;
inline constexpr std::int32_t PF_Cmd_RENDER = 11;
inline constexpr std::int32_t PF_Cmd_FRAME_SETDOWN = 12;
inline constexpr std::int32_t PF_Cmd_USER_CHANGED_PARAM = 13;
inline constexpr std::int32_t PF_Cmd_UPDATE_PARAMS_UI = 14;
inline constexpr std::int32_t PF_Cmd_EVENT = 15;
inline constexpr std::int32_t PF_Cmd_GET_EXTERNAL_DEPENDENCIES = 16;
inline constexpr std::int32_t PF_Cmd_COMPLETELY_GENERAL = 17;
inline constexpr std::int32_t PF_Cmd_QUERY_DYNAMIC_FLAGS = 18;
inline constexpr std::int32_t PF_Cmd_AUDIO_RENDER = 19;
inline constexpr std::int32_t PF_Cmd_AUDIO_SETUP = 20;
inline constexpr std::int32_t PF_Cmd_AUDIO_SETDOWN = 21;
inline constexpr std::int32_t PF_Cmd_ARBITRARY_CALLBACK = 22;
inline constexpr std::int32_t PF_Cmd_SMART_PRE_RENDER = 23;
inline constexpr std::int32_t PF_Cmd_SMART_RENDER = 24;
inline constexpr std::int32_t PF_Cmd_RESERVED1 = 25;
inline constexpr std::int32_t PF_Cmd_RESERVED2 = 26;
inline constexpr std::int32_t PF_Cmd_RESERVED3 = 27;
inline constexpr std::int32_t PF_Cmd_GET_FLATTENED_SEQUENCE_DATA = 28;
inline constexpr std::int32_t PF_Cmd_TRANSLATE_PARAMS_TO_PREFS = 29;
inline constexpr std::int32_t PF_Cmd_RESERVED4 = 30;
inline constexpr std::int32_t PF_Cmd_SMART_RENDER_GPU = 31;
inline constexpr std::int32_t PF_Cmd_GPU_DEVICE_SETUP = 32;
inline constexpr std::int32_t PF_Cmd_GPU_DEVICE_SETDOWN = 33;
inline constexpr std::int32_t PF_Cmd_NUM_CMDS = 34;

// Results of commands and callbacks; 0 is success.
inline constexpr std::int32_t PF_Err_NONE = 0;
inline constexpr std::int32_t PF_Err_OUT_OF_MEMORY = 4;
inline constexpr std::int32_t PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr std::int32_t PF_Err_INVALID_INDEX = 513;
inline constexpr std::int32_t PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr std::int32_t PF_Err_INVALID_CALLBACK = 515;
inline constexpr std::int32_t PF_Err_BAD_CALLBACK_PARAM = 516;
inline constexpr std::int32_t PF_Interrupt_CANCEL = 517;
inline constexpr std::int32_t PF_Err_CANNOT_PARSE_KEYFRAME_TEXT = 518;

inline constexpr std::int32_t PF_OutFlag_NONE = 0;
inline constexpr std::int32_t PF_OutFlag_KEEP_RESOURCE_OPEN = 0x00000001;
inline constexpr std::int32_t PF_OutFlag_WIDE_TIME_INPUT = 0x00000002;
inline constexpr std::int32_t PF_OutFlag_NON_PARAM_VARY = 0x00000004;
inline constexpr std::int32_t PF_OutFlag_RESERVED6 = 0x00000008;
inline constexpr std::int32_t PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 0x00000010;
inline constexpr std::int32_t PF_OutFlag_I_DO_DIALOG = 0x00000020;
inline constexpr std::int32_t PF_OutFlag_USE_OUTPUT_EXTENT = 0x00000040;
inline constexpr std::int32_t PF_OutFlag_SEND_DO_DIALOG = 0x00000080;
inline constexpr std::int32_t PF_OutFlag_DISPLAY_ERROR_MESSAGE = 0x00000100;
inline constexpr std::int32_t PF_OutFlag_I_EXPAND_BUFFER = 0x00000200;
inline constexpr std::int32_t PF_OutFlag_PIX_INDEPENDENT = 0x00000400;
inline constexpr std::int32_t PF_OutFlag_I_WRITE_INPUT_BUFFER = 0x00000800;
inline constexpr std::int32_t PF_OutFlag_I_SHRINK_BUFFER = 0x00001000;
inline constexpr std::int32_t PF_OutFlag_WORKS_IN_PLACE = 0x00002000;
inline constexpr std::int32_t PF_OutFlag_RESERVED8 = 0x00004000;
inline constexpr std::int32_t PF_OutFlag_CUSTOM_UI = 0x00008000;
inline constexpr std::int32_t PF_OutFlag_RESERVED7 = 0x00010000;
inline constexpr std::int32_t PF_OutFlag_REFRESH_UI = 0x00020000;
inline constexpr std::int32_t PF_OutFlag_NOP_RENDER = 0x00040000;
inline constexpr std::int32_t PF_OutFlag_I_USE_SHUTTER_ANGLE = 0x00080000;
inline constexpr std::int32_t PF_OutFlag_I_USE_AUDIO = 0x00100000;
inline constexpr std::int32_t PF_OutFlag_I_AM_OBSOLETE = 0x00200000;
inline constexpr std::int32_t PF_OutFlag_FORCE_RERENDER = 0x00400000;
inline constexpr std::int32_t PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS = 0x00800000;
inline constexpr std::int32_t PF_OutFlag_I_HAVE_EXTERNAL_DEPENDENCIES = 0x01000000;
inline constexpr std::int32_t PF_OutFlag_DEEP_COLOR_AWARE = 0x02000000;
inline constexpr std::int32_t PF_OutFlag_SEND_UPDATE_PARAMS_UI = 0x04000000;
inline constexpr std::int32_t PF_OutFlag_AUDIO_FLOAT_ONLY = 0x08000000;
inline constexpr std::int32_t PF_OutFlag_AUDIO_IIR = 0x10000000;
inline constexpr std::int32_t PF_OutFlag_I_SYNTHESIZE_AUDIO = 0x20000000;
inline constexpr std::int32_t PF_OutFlag_AUDIO_EFFECT_TOO = 0x40000000;
inline constexpr std::int32_t PF_OutFlag_AUDIO_EFFECT_ONLY = static_cast<std::int32_t>(0x80000000u);

inline constexpr std::int32_t PF_OutFlag2_NONE = 0;
inline constexpr std::int32_t PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS = 0x00000001;
inline constexpr std::int32_t PF_OutFlag2_I_USE_3D_CAMERA = 0x00000002;
inline constexpr std::int32_t PF_OutFlag2_I_USE_3D_LIGHTS = 0x00000004;
inline constexpr std::int32_t PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 0x00000008;
inline constexpr std::int32_t PF_OutFlag2_I_AM_THREADSAFE = 0x00000010;
inline constexpr std::int32_t PF_OutFlag2_CAN_COMBINE_WITH_DESTINATION = 0x00000020;
inline constexpr std::int32_t PF_OutFlag2_DOESNT_NEED_EMPTY_PIXELS = 0x00000040;
inline constexpr std::int32_t PF_OutFlag2_REVEALS_ZERO_ALPHA = 0x00000080;
inline constexpr std::int32_t PF_OutFlag2_PRESERVES_FULLY_OPAQUE_PIXELS = 0x00000100;
inline constexpr std::int32_t PF_OutFlag2_SUPPORTS_SMART_RENDER = 0x00000400;
inline constexpr std::int32_t PF_OutFlag2_RESERVED9 = 0x00000800;
inline constexpr std::int32_t PF_OutFlag2_FLOAT_COLOR_AWARE = 0x00001000;
inline constexpr std::int32_t PF_OutFlag2_I_USE_COLORSPACE_ENUMERATION = 0x00002000;
inline constexpr std::int32_t PF_OutFlag2_I_AM_DEPRECATED = 0x00004000;
inline constexpr std::int32_t PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER = 0x00008000;
inline constexpr std::int32_t PF_OutFlag2_RESERVED10 = 0x00010000;
inline constexpr std::int32_t PF_OutFlag2_AUTOMATIC_WIDE_TIME_INPUT = 0x00020000;
inline constexpr std::int32_t PF_OutFlag2_I_USE_TIMECODE = 0x00040000;
inline constexpr std::int32_t PF_OutFlag2_DEPENDS_ON_UNREFERENCED_MASKS = 0x00080000;
inline constexpr std::int32_t PF_OutFlag2_OUTPUT_IS_WATERMARKED = 0x00100000;
inline constexpr std::int32_t PF_OutFlag2_I_MIX_GUID_DEPENDENCIES = 0x00200000;
inline constexpr std::int32_t PF_OutFlag2_AE13_5_THREADSAFE = 0x00400000;
inline constexpr std::int32_t PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA = 0x00800000;
inline constexpr std::int32_t PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER = 0x01000000;
inline constexpr std::int32_t PF_OutFlag2_SUPPORTS_GPU_RENDER_F32 = 0x02000000;
inline constexpr std::int32_t PF_OutFlag2_RESERVED12 = 0x04000000;
inline constexpr std::int32_t PF_OutFlag2_SUPPORTS_THREADED_RENDERING = 0x08000000;
inline constexpr std::int32_t PF_OutFlag2_MUTABLE_RENDER_SEQUENCE_DATA_SLOWER = 0x10000000;

// Where the parts of a packed effect version stand.
inline constexpr std::int32_t PF_Vers_BUILD_BITS = 0x000001FF;
inline constexpr std::int32_t PF_Vers_BUILD_SHIFT = 0;
inline constexpr std::int32_t PF_Vers_STAGE_BITS = 0x00000003;
inline constexpr std::int32_t PF_Vers_STAGE_SHIFT = 0x00000009;
inline constexpr std::int32_t PF_Vers_BUGFIX_BITS = 0x0000000F;
inline constexpr std::int32_t PF_Vers_BUGFIX_SHIFT = 0x0000000B;
inline constexpr std::int32_t PF_Vers_SUBVERS_BITS = 0x0000000F;
inline constexpr std::int32_t PF_Vers_SUBVERS_SHIFT = 0x0000000F;
inline constexpr std::int32_t PF_Vers_VERS_BITS = 0x00000007;
inline constexpr std::int32_t PF_Vers_VERS_SHIFT = 0x00000013;
inline constexpr std::int32_t PF_Vers_VERS_HIGH_BITS = 0x0000000F;
inline constexpr std::int32_t PF_Vers_VERS_HIGH_SHIFT = 0x0000001A;
inline constexpr std::int32_t PF_Vers_VERS_LOW_SHIFT = 0x00000003;
