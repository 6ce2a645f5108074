// resources/effect_identity.h — who the effect says it is: in its property list and at set-up.
//
// The host compares the two; both are made from these constants.
#pragma once

#include <cstdint>

#include "hostapi/commands.h"

namespace varilum {

inline constexpr const char* kEffectName = "Varilum4";
inline constexpr const char* kEffectCategory = "Tovan";
inline constexpr const char* kEffectMatchName = "Tovan Varilum4";  // identity in saved projects
inline constexpr const char* kEntryPointName = "EntryPointFunc";

inline constexpr std::int32_t kEffectMajor = 4;
inline constexpr std::int32_t kEffectMinor = 2;
inline constexpr std::int32_t kEffectBug = 0;
inline constexpr std::int32_t kEffectStage = 0;  // develop
inline constexpr std::int32_t kEffectBuild = 1;
inline constexpr std::uint32_t kEffectVersion = static_cast<std::uint32_t>(
    kEffectMajor << PF_Vers_VERS_SHIFT | kEffectMinor << PF_Vers_SUBVERS_SHIFT |
    kEffectBug << PF_Vers_BUGFIX_SHIFT | kEffectStage << PF_Vers_STAGE_SHIFT |
    kEffectBuild << PF_Vers_BUILD_SHIFT);

// Of the host interface that the effect was built for.
inline constexpr std::uint16_t kSpecMajor = 13;
inline constexpr std::uint16_t kSpecMinor = 14;
inline constexpr std::uint16_t kPropertyListMajor = 2;
inline constexpr std::uint16_t kPropertyListMinor = 0;

inline constexpr std::uint16_t kInfoFlags = 3;

inline constexpr std::int32_t kOutFlags =
    PF_OutFlag_NON_PARAM_VARY | PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING |
    PF_OutFlag_USE_OUTPUT_EXTENT | PF_OutFlag_DISPLAY_ERROR_MESSAGE | PF_OutFlag_PIX_INDEPENDENT |
    PF_OutFlag_CUSTOM_UI | PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_SEND_UPDATE_PARAMS_UI;

inline constexpr std::int32_t kOutFlags2 =
    PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS | PF_OutFlag2_SUPPORTS_SMART_RENDER |
    PF_OutFlag2_FLOAT_COLOR_AWARE | PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER |
    PF_OutFlag2_OUTPUT_IS_WATERMARKED | PF_OutFlag2_I_MIX_GUID_DEPENDENCIES |
    PF_OutFlag2_AE13_5_THREADSAFE | PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA |
    PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER;

}  // namespace varilum
