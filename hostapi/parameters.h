// hostapi/parameters.h — parameter declarations and values.
#pragma once

#include <cstdint>

#include "hostapi/world.h"

struct PF_SliderDef {
  std::int32_t value;
  char value_str[32];
  char value_desc[32];
  std::int32_t valid_min;
  std::int32_t valid_max;
  std::int32_t slider_min;
  std::int32_t slider_max;
  std::int32_t dephault;
};

struct PF_FixedSliderDef {
  std::int32_t value;
  char value_str[32];
  char value_desc[32];
  std::int32_t valid_min;
  std::int32_t valid_max;
  std::int32_t slider_min;
  std::int32_t slider_max;
  std::int32_t dephault;
  std::int16_t precision;
  std::int16_t display_flags;
};

struct PF_FloatSliderDef {
  double value;
  double phase;
  char value_desc[32];
  float valid_min;
  float valid_max;
  float slider_min;
  float slider_max;
  float dephault;
  std::int16_t precision;
  std::int16_t display_flags;
  std::uint32_t fs_flags;
  float curve_tolerance;
  char useExponent;
  float exponent;
};

struct PF_AngleDef {
  std::int32_t value;
  std::int32_t dephault;
  std::int32_t valid_min;
  std::int32_t valid_max;
};

struct PF_CheckBoxDef {
  std::int32_t value;
  char dephault;
  char reserved;
  std::int16_t reserved1;
  union {
    const char* nameptr;
  } u;
};

struct PF_ColorDef {
  PF_Pixel value;
  PF_Pixel dephault;
};

struct PF_PointDef {
  std::int32_t x_value;
  std::int32_t y_value;
  char reserved[3];
  char restrict_bounds;
  std::int32_t x_dephault;
  std::int32_t y_dephault;
};

struct PF_Point3DDef {
  double x_value;
  double y_value;
  double z_value;
  double x_dephault;
  double y_dephault;
  double z_dephault;
  char reserved[16];
};

struct PF_PopupDef {
  std::int32_t value;
  std::int16_t num_choices;
  std::int16_t dephault;
  union {
    const char* namesptr;
  } u;
};

struct PF_ButtonDef {
  std::int32_t value;
  union {
    const char* namesptr;
  } u;
};

struct PF_PathDef {
  std::uint32_t path_id;
  std::int32_t reserved0;
  std::int32_t dephault;
};

struct PF_ArbitraryDef {
  std::int16_t id;
  std::int16_t pad;
  void** dephault;
  void** value;
  void* refconPV;
};

union PF_ParamDefUnion {
  PF_LayerDef ld;
  PF_SliderDef sd;
  PF_FixedSliderDef fd;
  PF_AngleDef ad;
  PF_CheckBoxDef bd;
  PF_ColorDef cd;
  PF_PointDef td;
  PF_PopupDef pd;
  PF_FloatSliderDef fs_d;
  PF_ArbitraryDef arb_d;
  PF_PathDef path_d;
  PF_ButtonDef button_d;
  PF_Point3DDef point3d_d;
};

// A parameter: its declaration, and its value at the time of the command.
struct PF_ParamDef {
  union {
    // when declared
    std::int32_t id;
    // afterwards: PF_ChangeFlag_*
    std::int32_t change_flags;
  } uu;
  std::int32_t ui_flags;
  std::int16_t ui_width;
  std::int16_t ui_height;
  std::int32_t param_type;
  char name[32];
  std::int32_t flags;
  std::int32_t unused;
  PF_ParamDefUnion u;
};

struct PF_CustomUIInfo {
  std::int32_t reserved;
  std::int32_t events;
  std::int32_t comp_ui_width;
  std::int32_t comp_ui_height;
  std::int32_t comp_ui_alignment;
  std::int32_t layer_ui_width;
  std::int32_t layer_ui_height;
  std::int32_t layer_ui_alignment;
  std::int32_t preview_ui_width;
  std::int32_t preview_ui_height;
  std::int32_t preview_ui_alignment;
};

struct PF_UserChangedParamExtra {
  std::int32_t param_index;
};

struct PF_State {
  std::int32_t reservedAL[4];
};

inline constexpr std::int32_t PF_Param_RESERVED = -1;
inline constexpr std::int32_t PF_Param_LAYER = 0;
inline constexpr std::int32_t PF_Param_SLIDER = 1;
inline constexpr std::int32_t PF_Param_FIX_SLIDER = 2;
inline constexpr std::int32_t PF_Param_ANGLE = 3;
inline constexpr std::int32_t PF_Param_CHECKBOX = 4;
inline constexpr std::int32_t PF_Param_COLOR = 5;
inline constexpr std::int32_t PF_Param_POINT = 6;
inline constexpr std::int32_t PF_Param_POPUP = 7;
inline constexpr std::int32_t PF_Param_CUSTOM = 8;
inline constexpr std::int32_t PF_Param_NO_DATA = 9;
inline constexpr std::int32_t PF_Param_FLOAT_SLIDER = 10;
inline constexpr std::int32_t PF_Param_ARBITRARY_DATA = 11;
inline constexpr std::int32_t PF_Param_PATH = 12;
inline constexpr std::int32_t PF_Param_GROUP_START = 13;
inline constexpr std::int32_t PF_Param_GROUP_END = 14;
inline constexpr std::int32_t PF_Param_BUTTON = 15;
inline constexpr std::int32_t PF_Param_RESERVED2 = 16;
inline constexpr std::int32_t PF_Param_RESERVED3 = 17;
inline constexpr std::int32_t PF_Param_POINT_3D = 18;

inline constexpr std::int32_t PF_ParamFlag_RESERVED1 = 0x00000001;
inline constexpr std::int32_t PF_ParamFlag_CANNOT_TIME_VARY = 0x00000002;
inline constexpr std::int32_t PF_ParamFlag_CANNOT_INTERP = 0x00000004;
inline constexpr std::int32_t PF_ParamFlag_RESERVED2 = 0x00000008;
inline constexpr std::int32_t PF_ParamFlag_RESERVED3 = 0x00000010;
inline constexpr std::int32_t PF_ParamFlag_COLLAPSE_TWIRLY = 0x00000020;
inline constexpr std::int32_t PF_ParamFlag_SUPERVISE = 0x00000040;
inline constexpr std::int32_t PF_ParamFlag_START_COLLAPSED = 0x00000020;
inline constexpr std::int32_t PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS = 0x00000080;
inline constexpr std::int32_t PF_ParamFlag_LAYER_PARAM_IS_TRACKMATTE = 0x00000080;
inline constexpr std::int32_t PF_ParamFlag_EXCLUDE_FROM_HAVE_INPUTS_CHANGED = 0x00000100;
inline constexpr std::int32_t PF_ParamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 0x00000200;

inline constexpr std::int32_t PF_PUI_NONE = 0;
inline constexpr std::int32_t PF_PUI_TOPIC = 0x00000001;
inline constexpr std::int32_t PF_PUI_CONTROL = 0x00000002;
inline constexpr std::int32_t PF_PUI_STD_CONTROL_ONLY = 0x00000004;
inline constexpr std::int32_t PF_PUI_NO_ECW_UI = 0x00000008;
inline constexpr std::int32_t PF_PUI_ECW_SEPARATOR = 0x00000010;
inline constexpr std::int32_t PF_PUI_DISABLED = 0x00000020;
inline constexpr std::int32_t PF_PUI_DONT_ERASE_TOPIC = 0x00000040;
inline constexpr std::int32_t PF_PUI_DONT_ERASE_CONTROL = 0x00000080;
inline constexpr std::int32_t PF_PUI_RADIO_BUTTON = 0x00000100;
inline constexpr std::int32_t PF_PUI_INVISIBLE = 0x00000200;

// Set by the effect in uu.change_flags when it wrote a value.
inline constexpr std::int32_t PF_ChangeFlag_NONE = 0;
inline constexpr std::int32_t PF_ChangeFlag_CHANGED_VALUE = 0x00000001;

inline constexpr std::int16_t PF_ValueDisplayFlag_NONE = 0;
inline constexpr std::int16_t PF_ValueDisplayFlag_PERCENT = 0x00000001;
inline constexpr std::int16_t PF_ValueDisplayFlag_PIXEL = 0x00000002;
inline constexpr std::int16_t PF_ValueDisplayFlag_RESERVED1 = 0x00000004;
inline constexpr std::int16_t PF_ValueDisplayFlag_REVERSE = 0x00000008;

inline constexpr std::int32_t PF_CustomEFlag_NONE = 0;
inline constexpr std::int32_t PF_CustomEFlag_COMP = 0x00000001;
inline constexpr std::int32_t PF_CustomEFlag_LAYER = 0x00000002;
inline constexpr std::int32_t PF_CustomEFlag_EFFECT = 0x00000004;
inline constexpr std::int32_t PF_CustomEFlag_PREVIEW = 0x00000008;

inline constexpr std::int32_t PF_MAX_EFFECT_PARAM_NAME_LEN = 31;
