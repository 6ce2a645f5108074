// hostapi/layout/parameters.cpp — sizes and offsets of hostapi/parameters.h, held at compile time.
#include "hostapi/parameters.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(PF_SliderDef, 88);
ASSERT_ALIGN(PF_SliderDef, 4);
ASSERT_FIELD(PF_SliderDef, value, 0, 4);
ASSERT_FIELD(PF_SliderDef, value_str, 4, 32);
ASSERT_FIELD(PF_SliderDef, value_desc, 36, 32);
ASSERT_FIELD(PF_SliderDef, valid_min, 68, 4);
ASSERT_FIELD(PF_SliderDef, valid_max, 72, 4);
ASSERT_FIELD(PF_SliderDef, slider_min, 76, 4);
ASSERT_FIELD(PF_SliderDef, slider_max, 80, 4);
ASSERT_FIELD(PF_SliderDef, dephault, 84, 4);

ASSERT_SIZE(PF_FixedSliderDef, 92);
ASSERT_ALIGN(PF_FixedSliderDef, 4);
ASSERT_FIELD(PF_FixedSliderDef, value, 0, 4);
ASSERT_FIELD(PF_FixedSliderDef, value_str, 4, 32);
ASSERT_FIELD(PF_FixedSliderDef, value_desc, 36, 32);
ASSERT_FIELD(PF_FixedSliderDef, valid_min, 68, 4);
ASSERT_FIELD(PF_FixedSliderDef, valid_max, 72, 4);
ASSERT_FIELD(PF_FixedSliderDef, slider_min, 76, 4);
ASSERT_FIELD(PF_FixedSliderDef, slider_max, 80, 4);
ASSERT_FIELD(PF_FixedSliderDef, dephault, 84, 4);
ASSERT_FIELD(PF_FixedSliderDef, precision, 88, 2);
ASSERT_FIELD(PF_FixedSliderDef, display_flags, 90, 2);

ASSERT_SIZE(PF_FloatSliderDef, 88);
ASSERT_ALIGN(PF_FloatSliderDef, 8);
ASSERT_FIELD(PF_FloatSliderDef, value, 0, 8);
ASSERT_FIELD(PF_FloatSliderDef, phase, 8, 8);
ASSERT_FIELD(PF_FloatSliderDef, value_desc, 16, 32);
ASSERT_FIELD(PF_FloatSliderDef, valid_min, 48, 4);
ASSERT_FIELD(PF_FloatSliderDef, valid_max, 52, 4);
ASSERT_FIELD(PF_FloatSliderDef, slider_min, 56, 4);
ASSERT_FIELD(PF_FloatSliderDef, slider_max, 60, 4);
ASSERT_FIELD(PF_FloatSliderDef, dephault, 64, 4);
ASSERT_FIELD(PF_FloatSliderDef, precision, 68, 2);
ASSERT_FIELD(PF_FloatSliderDef, display_flags, 70, 2);
ASSERT_FIELD(PF_FloatSliderDef, fs_flags, 72, 4);
ASSERT_FIELD(PF_FloatSliderDef, curve_tolerance, 76, 4);
ASSERT_FIELD(PF_FloatSliderDef, useExponent, 80, 1);
ASSERT_FIELD(PF_FloatSliderDef, exponent, 84, 4);

ASSERT_SIZE(PF_AngleDef, 16);
ASSERT_ALIGN(PF_AngleDef, 4);
ASSERT_FIELD(PF_AngleDef, value, 0, 4);
ASSERT_FIELD(PF_AngleDef, dephault, 4, 4);
ASSERT_FIELD(PF_AngleDef, valid_min, 8, 4);
ASSERT_FIELD(PF_AngleDef, valid_max, 12, 4);

ASSERT_SIZE(PF_CheckBoxDef, 16);
ASSERT_ALIGN(PF_CheckBoxDef, 8);
ASSERT_FIELD(PF_CheckBoxDef, value, 0, 4);
ASSERT_FIELD(PF_CheckBoxDef, dephault, 4, 1);
ASSERT_FIELD(PF_CheckBoxDef, reserved, 5, 1);
ASSERT_FIELD(PF_CheckBoxDef, reserved1, 6, 2);
ASSERT_FIELD(PF_CheckBoxDef, u, 8, 8);
ASSERT_FIELD(PF_CheckBoxDef, u.nameptr, 8, 8);

ASSERT_SIZE(PF_ColorDef, 8);
ASSERT_ALIGN(PF_ColorDef, 1);
ASSERT_FIELD(PF_ColorDef, value, 0, 4);
ASSERT_FIELD(PF_ColorDef, dephault, 4, 4);

ASSERT_SIZE(PF_PointDef, 20);
ASSERT_ALIGN(PF_PointDef, 4);
ASSERT_FIELD(PF_PointDef, x_value, 0, 4);
ASSERT_FIELD(PF_PointDef, y_value, 4, 4);
ASSERT_FIELD(PF_PointDef, reserved, 8, 3);
ASSERT_FIELD(PF_PointDef, restrict_bounds, 11, 1);
ASSERT_FIELD(PF_PointDef, x_dephault, 12, 4);
ASSERT_FIELD(PF_PointDef, y_dephault, 16, 4);

ASSERT_SIZE(PF_Point3DDef, 64);
ASSERT_ALIGN(PF_Point3DDef, 8);
ASSERT_FIELD(PF_Point3DDef, x_value, 0, 8);
ASSERT_FIELD(PF_Point3DDef, y_value, 8, 8);
ASSERT_FIELD(PF_Point3DDef, z_value, 16, 8);
ASSERT_FIELD(PF_Point3DDef, x_dephault, 24, 8);
ASSERT_FIELD(PF_Point3DDef, y_dephault, 32, 8);
ASSERT_FIELD(PF_Point3DDef, z_dephault, 40, 8);
ASSERT_FIELD(PF_Point3DDef, reserved, 48, 16);

ASSERT_SIZE(PF_PopupDef, 16);
ASSERT_ALIGN(PF_PopupDef, 8);
ASSERT_FIELD(PF_PopupDef, value, 0, 4);
ASSERT_FIELD(PF_PopupDef, num_choices, 4, 2);
ASSERT_FIELD(PF_PopupDef, dephault, 6, 2);
ASSERT_FIELD(PF_PopupDef, u, 8, 8);
ASSERT_FIELD(PF_PopupDef, u.namesptr, 8, 8);

ASSERT_SIZE(PF_ButtonDef, 16);
ASSERT_ALIGN(PF_ButtonDef, 8);
ASSERT_FIELD(PF_ButtonDef, value, 0, 4);
ASSERT_FIELD(PF_ButtonDef, u, 8, 8);
ASSERT_FIELD(PF_ButtonDef, u.namesptr, 8, 8);

ASSERT_SIZE(PF_PathDef, 12);
ASSERT_ALIGN(PF_PathDef, 4);
ASSERT_FIELD(PF_PathDef, path_id, 0, 4);
ASSERT_FIELD(PF_PathDef, reserved0, 4, 4);
ASSERT_FIELD(PF_PathDef, dephault, 8, 4);

ASSERT_SIZE(PF_ArbitraryDef, 32);
ASSERT_ALIGN(PF_ArbitraryDef, 8);
ASSERT_FIELD(PF_ArbitraryDef, id, 0, 2);
ASSERT_FIELD(PF_ArbitraryDef, pad, 2, 2);
ASSERT_FIELD(PF_ArbitraryDef, dephault, 8, 8);
ASSERT_FIELD(PF_ArbitraryDef, value, 16, 8);
ASSERT_FIELD(PF_ArbitraryDef, refconPV, 24, 8);

ASSERT_SIZE(PF_ParamDefUnion, 120);
ASSERT_ALIGN(PF_ParamDefUnion, 8);
ASSERT_FIELD(PF_ParamDefUnion, ld, 0, 120);
ASSERT_FIELD(PF_ParamDefUnion, sd, 0, 88);
ASSERT_FIELD(PF_ParamDefUnion, fd, 0, 92);
ASSERT_FIELD(PF_ParamDefUnion, ad, 0, 16);
ASSERT_FIELD(PF_ParamDefUnion, bd, 0, 16);
ASSERT_FIELD(PF_ParamDefUnion, cd, 0, 8);
ASSERT_FIELD(PF_ParamDefUnion, td, 0, 20);
ASSERT_FIELD(PF_ParamDefUnion, pd, 0, 16);
ASSERT_FIELD(PF_ParamDefUnion, fs_d, 0, 88);
ASSERT_FIELD(PF_ParamDefUnion, arb_d, 0, 32);
ASSERT_FIELD(PF_ParamDefUnion, path_d, 0, 12);
ASSERT_FIELD(PF_ParamDefUnion, button_d, 0, 16);
ASSERT_FIELD(PF_ParamDefUnion, point3d_d, 0, 64);

ASSERT_SIZE(PF_ParamDef, 176);
ASSERT_ALIGN(PF_ParamDef, 8);
ASSERT_FIELD(PF_ParamDef, uu, 0, 4);
ASSERT_FIELD(PF_ParamDef, uu.id, 0, 4);
ASSERT_FIELD(PF_ParamDef, uu.change_flags, 0, 4);
ASSERT_FIELD(PF_ParamDef, ui_flags, 4, 4);
ASSERT_FIELD(PF_ParamDef, ui_width, 8, 2);
ASSERT_FIELD(PF_ParamDef, ui_height, 10, 2);
ASSERT_FIELD(PF_ParamDef, param_type, 12, 4);
ASSERT_FIELD(PF_ParamDef, name, 16, 32);
ASSERT_FIELD(PF_ParamDef, flags, 48, 4);
ASSERT_FIELD(PF_ParamDef, unused, 52, 4);
ASSERT_FIELD(PF_ParamDef, u, 56, 120);

ASSERT_SIZE(PF_CustomUIInfo, 44);
ASSERT_ALIGN(PF_CustomUIInfo, 4);
ASSERT_FIELD(PF_CustomUIInfo, reserved, 0, 4);
ASSERT_FIELD(PF_CustomUIInfo, events, 4, 4);
ASSERT_FIELD(PF_CustomUIInfo, comp_ui_width, 8, 4);
ASSERT_FIELD(PF_CustomUIInfo, comp_ui_height, 12, 4);
ASSERT_FIELD(PF_CustomUIInfo, comp_ui_alignment, 16, 4);
ASSERT_FIELD(PF_CustomUIInfo, layer_ui_width, 20, 4);
ASSERT_FIELD(PF_CustomUIInfo, layer_ui_height, 24, 4);
ASSERT_FIELD(PF_CustomUIInfo, layer_ui_alignment, 28, 4);
ASSERT_FIELD(PF_CustomUIInfo, preview_ui_width, 32, 4);
ASSERT_FIELD(PF_CustomUIInfo, preview_ui_height, 36, 4);
ASSERT_FIELD(PF_CustomUIInfo, preview_ui_alignment, 40, 4);

ASSERT_SIZE(PF_UserChangedParamExtra, 4);
ASSERT_ALIGN(PF_UserChangedParamExtra, 4);
ASSERT_FIELD(PF_UserChangedParamExtra, param_index, 0, 4);

ASSERT_SIZE(PF_State, 16);
ASSERT_ALIGN(PF_State, 4);
ASSERT_FIELD(PF_State, reservedAL, 0, 16);
