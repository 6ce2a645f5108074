// hostapi/layout/events.cpp — sizes and offsets of hostapi/events.h, held at compile time.
#include "hostapi/events.h"
#include "hostapi/layout/assert_layout.h"

ASSERT_SIZE(PF_AdjustCursorEventInfo, 16);
ASSERT_ALIGN(PF_AdjustCursorEventInfo, 4);
ASSERT_FIELD(PF_AdjustCursorEventInfo, screen_point, 0, 8);
ASSERT_FIELD(PF_AdjustCursorEventInfo, modifiers, 8, 4);
ASSERT_FIELD(PF_AdjustCursorEventInfo, set_cursor, 12, 4);

ASSERT_SIZE(PF_DoClickEventInfo, 64);
ASSERT_ALIGN(PF_DoClickEventInfo, 8);
ASSERT_FIELD(PF_DoClickEventInfo, when, 0, 4);
ASSERT_FIELD(PF_DoClickEventInfo, screen_point, 4, 8);
ASSERT_FIELD(PF_DoClickEventInfo, num_clicks, 12, 4);
ASSERT_FIELD(PF_DoClickEventInfo, modifiers, 16, 4);
ASSERT_FIELD(PF_DoClickEventInfo, continue_refcon, 24, 32);
ASSERT_FIELD(PF_DoClickEventInfo, send_drag, 56, 1);
ASSERT_FIELD(PF_DoClickEventInfo, last_time, 57, 1);

ASSERT_SIZE(PF_DrawEventInfo, 20);
ASSERT_ALIGN(PF_DrawEventInfo, 4);
ASSERT_FIELD(PF_DrawEventInfo, update_rect, 0, 16);
ASSERT_FIELD(PF_DrawEventInfo, depth, 16, 4);

ASSERT_SIZE(PF_KeyDownEvent, 20);
ASSERT_ALIGN(PF_KeyDownEvent, 4);
ASSERT_FIELD(PF_KeyDownEvent, when, 0, 4);
ASSERT_FIELD(PF_KeyDownEvent, screen_point, 4, 8);
ASSERT_FIELD(PF_KeyDownEvent, keycode, 12, 4);
ASSERT_FIELD(PF_KeyDownEvent, modifiers, 16, 4);

ASSERT_SIZE(PF_KeyDownEventObsolete, 24);
ASSERT_ALIGN(PF_KeyDownEventObsolete, 4);
ASSERT_FIELD(PF_KeyDownEventObsolete, when, 0, 4);
ASSERT_FIELD(PF_KeyDownEventObsolete, screen_point, 4, 8);
ASSERT_FIELD(PF_KeyDownEventObsolete, char_code, 12, 4);
ASSERT_FIELD(PF_KeyDownEventObsolete, key_code, 16, 4);
ASSERT_FIELD(PF_KeyDownEventObsolete, modifiers, 20, 4);

ASSERT_SIZE(PF_StylusEventInfo, 16);
ASSERT_ALIGN(PF_StylusEventInfo, 4);
ASSERT_FIELD(PF_StylusEventInfo, stylus_tiltxF, 0, 4);
ASSERT_FIELD(PF_StylusEventInfo, stylus_tiltyF, 4, 4);
ASSERT_FIELD(PF_StylusEventInfo, stylus_pressureF, 8, 4);
ASSERT_FIELD(PF_StylusEventInfo, stylus_wheelF, 12, 4);

ASSERT_SIZE(PF_PointerEventInfo, 48);
ASSERT_ALIGN(PF_PointerEventInfo, 8);
ASSERT_FIELD(PF_PointerEventInfo, when_secondsF, 0, 8);
ASSERT_FIELD(PF_PointerEventInfo, screen_point, 8, 8);
ASSERT_FIELD(PF_PointerEventInfo, num_clicksS, 16, 2);
ASSERT_FIELD(PF_PointerEventInfo, mod_keysL, 20, 4);
ASSERT_FIELD(PF_PointerEventInfo, stylus_tool, 24, 4);
ASSERT_FIELD(PF_PointerEventInfo, stylus_extra_dataB, 28, 1);
ASSERT_FIELD(PF_PointerEventInfo, stylus_extra_data, 32, 16);

ASSERT_SIZE(PF_EventUnion, 64);
ASSERT_ALIGN(PF_EventUnion, 8);
ASSERT_FIELD(PF_EventUnion, do_click, 0, 64);
ASSERT_FIELD(PF_EventUnion, draw, 0, 20);
ASSERT_FIELD(PF_EventUnion, key_down, 0, 20);
ASSERT_FIELD(PF_EventUnion, adjust_cursor, 0, 16);

ASSERT_SIZE(PF_Context, 72);
ASSERT_ALIGN(PF_Context, 8);
ASSERT_FIELD(PF_Context, magic, 0, 4);
ASSERT_FIELD(PF_Context, w_type, 4, 4);
ASSERT_FIELD(PF_Context, reserved_flt, 8, 8);
ASSERT_FIELD(PF_Context, plugin_state, 16, 32);
ASSERT_FIELD(PF_Context, reserved_drawref, 48, 8);
ASSERT_FIELD(PF_Context, reserved_paneP, 56, 8);
ASSERT_FIELD(PF_Context, reserved_job_manageP, 64, 8);

ASSERT_SIZE(PF_EventCallbacks, 72);
ASSERT_ALIGN(PF_EventCallbacks, 8);
ASSERT_FIELD(PF_EventCallbacks, refcon, 0, 8);
ASSERT_FIELD(PF_EventCallbacks, layer_to_comp, 8, 8);
ASSERT_FIELD(PF_EventCallbacks, comp_to_layer, 16, 8);
ASSERT_FIELD(PF_EventCallbacks, get_comp2layer_xform, 24, 8);
ASSERT_FIELD(PF_EventCallbacks, get_layer2comp_xform, 32, 8);
ASSERT_FIELD(PF_EventCallbacks, source_to_frame, 40, 8);
ASSERT_FIELD(PF_EventCallbacks, frame_to_source, 48, 8);
ASSERT_FIELD(PF_EventCallbacks, info_draw_color, 56, 8);
ASSERT_FIELD(PF_EventCallbacks, info_draw_text, 64, 8);

ASSERT_SIZE(PF_EffectWindowInfo, 44);
ASSERT_ALIGN(PF_EffectWindowInfo, 4);
ASSERT_FIELD(PF_EffectWindowInfo, index, 0, 4);
ASSERT_FIELD(PF_EffectWindowInfo, area, 4, 4);
ASSERT_FIELD(PF_EffectWindowInfo, current_frame, 8, 16);
ASSERT_FIELD(PF_EffectWindowInfo, param_title_frame, 24, 16);
ASSERT_FIELD(PF_EffectWindowInfo, horiz_offset, 40, 4);

ASSERT_SIZE(PF_ItemWindowInfo, 16);
ASSERT_ALIGN(PF_ItemWindowInfo, 4);
ASSERT_FIELD(PF_ItemWindowInfo, port_rect, 0, 16);

ASSERT_SIZE(PF_WindowUnion, 44);
ASSERT_ALIGN(PF_WindowUnion, 4);
ASSERT_FIELD(PF_WindowUnion, effect_win, 0, 44);
ASSERT_FIELD(PF_WindowUnion, item_win, 0, 16);

ASSERT_SIZE(PF_EventExtra, 208);
ASSERT_ALIGN(PF_EventExtra, 8);
ASSERT_FIELD(PF_EventExtra, contextH, 0, 8);
ASSERT_FIELD(PF_EventExtra, e_type, 8, 4);
ASSERT_FIELD(PF_EventExtra, u, 16, 64);
ASSERT_FIELD(PF_EventExtra, effect_win, 80, 44);
ASSERT_FIELD(PF_EventExtra, cbs, 128, 72);
ASSERT_FIELD(PF_EventExtra, evt_in_flags, 200, 4);
ASSERT_FIELD(PF_EventExtra, evt_out_flags, 204, 4);
