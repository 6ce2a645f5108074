// hostapi/events.h — events of custom panels.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/scalars.h"
#include "hostapi/world.h"

struct PF_FixedPoint;
struct PF_FloatMatrix;

using PF_StylusTool = std::int32_t;

struct PF_AdjustCursorEventInfo {
  PF_Point screen_point;
  std::int32_t modifiers;
  std::int32_t set_cursor;
};

// Of clicks and drags. continue_refcon is kept from the click to its drags.
struct PF_DoClickEventInfo {
  std::uint32_t when;
  PF_Point screen_point;
  std::int32_t num_clicks;
  std::int32_t modifiers;
  std::int64_t continue_refcon[4];
  char send_drag;
  char last_time;
};

struct PF_DrawEventInfo {
  PF_Rect update_rect;
  std::int32_t depth;
};

struct PF_KeyDownEvent {
  std::uint32_t when;
  PF_Point screen_point;
  std::uint32_t keycode;
  std::int32_t modifiers;
};

struct PF_KeyDownEventObsolete {
  std::uint32_t when;
  PF_Point screen_point;
  std::int32_t char_code;
  std::int32_t key_code;
  std::int32_t modifiers;
};

struct PF_StylusEventInfo {
  float stylus_tiltxF;
  float stylus_tiltyF;
  float stylus_pressureF;
  float stylus_wheelF;
};

struct PF_PointerEventInfo {
  double when_secondsF;
  PF_Point screen_point;
  std::int16_t num_clicksS;
  std::int32_t mod_keysL;
  PF_StylusTool stylus_tool;
  char stylus_extra_dataB;
  PF_StylusEventInfo stylus_extra_data;
};

union PF_EventUnion {
  PF_DoClickEventInfo do_click;
  PF_DrawEventInfo draw;
  PF_KeyDownEvent key_down;
  PF_AdjustCursorEventInfo adjust_cursor;
};

// One open panel; the same record from NEW_CONTEXT to CLOSE_CONTEXT.
struct PF_Context {
  std::uint32_t magic;
  std::int32_t w_type;
  PF_ContextRefcon reserved_flt;
  std::int64_t plugin_state[4];
  DRAWBOT_DrawRef reserved_drawref;
  void* reserved_paneP;
  void* reserved_job_manageP;
};

struct PF_EventCallbacks {
  void* refcon;
  std::int32_t (*layer_to_comp)(void*, PF_Context**, std::int32_t, std::int32_t, PF_FixedPoint*);
  std::int32_t (*comp_to_layer)(void*, PF_Context**, std::int32_t, std::int32_t, PF_FixedPoint*);
  std::int32_t (*get_comp2layer_xform)(void*, PF_Context**, std::int32_t, std::int32_t,
                                       std::int32_t*, PF_FloatMatrix*);
  std::int32_t (*get_layer2comp_xform)(void*, PF_Context**, std::int32_t, std::int32_t,
                                       PF_FloatMatrix*);
  std::int32_t (*source_to_frame)(void*, PF_Context**, PF_FixedPoint*);
  std::int32_t (*frame_to_source)(void*, PF_Context**, PF_FixedPoint*);
  std::int32_t (*info_draw_color)(void*, PF_Pixel);
  std::int32_t (*info_draw_text)(void*, const char*, const char*);
};

struct PF_EffectWindowInfo {
  std::int32_t index;
  std::int32_t area;
  PF_Rect current_frame;
  PF_Rect param_title_frame;
  std::int32_t horiz_offset;
};

struct PF_ItemWindowInfo {
  PF_Rect port_rect;
};

union PF_WindowUnion {
  PF_EffectWindowInfo effect_win;
  PF_ItemWindowInfo item_win;
};

// [UI thread] u holds do_click for clicks and drags, draw, key_down, adjust_cursor for theirs.
struct PF_EventExtra {
  PF_Context** contextH;
  std::int32_t e_type;
  PF_EventUnion u;
  PF_EffectWindowInfo effect_win;
  PF_EventCallbacks cbs;
  std::int32_t evt_in_flags;
  std::int32_t evt_out_flags;
};

inline constexpr std::int32_t PF_Event_NONE = -1;
inline constexpr std::int32_t PF_Event_NEW_CONTEXT = 0;
inline constexpr std::int32_t PF_Event_ACTIVATE = 1;
inline constexpr std::int32_t PF_Event_DO_CLICK = 2;
inline constexpr std::int32_t PF_Event_DRAG = 3;
inline constexpr std::int32_t PF_Event_DRAW = 4;
inline constexpr std::int32_t PF_Event_DEACTIVATE = 5;
inline constexpr std::int32_t PF_Event_CLOSE_CONTEXT = 6;
inline constexpr std::int32_t PF_Event_IDLE = 7;
inline constexpr std::int32_t PF_Event_KEYDOWN_OBSOLETE = 8;
inline constexpr std::int32_t PF_Event_ADJUST_CURSOR = 9;
inline constexpr std::int32_t PF_Event_KEYDOWN = 10;
inline constexpr std::int32_t PF_Event_MOUSE_EXITED = 11;
inline constexpr std::int32_t PF_Event_NUM_EVENTS = 12;

inline constexpr std::int32_t PF_EI_NONE = 0;
inline constexpr std::int32_t PF_EI_DONT_DRAW = 0x00000001;

inline constexpr std::int32_t PF_EO_NONE = 0;
inline constexpr std::int32_t PF_EO_HANDLED_EVENT = 0x00000001;
inline constexpr std::int32_t PF_EO_ALWAYS_UPDATE = 0x00000002;
inline constexpr std::int32_t PF_EO_NEVER_UPDATE = 0x00000004;
inline constexpr std::int32_t PF_EO_UPDATE_NOW = 0x00000008;

inline constexpr std::int32_t PF_Window_NONE = -1;
inline constexpr std::int32_t PF_Window_COMP = 0;
inline constexpr std::int32_t PF_Window_LAYER = 1;
inline constexpr std::int32_t PF_Window_EFFECT = 2;
inline constexpr std::int32_t PF_Window_PREVIEW = 3;

inline constexpr std::int32_t PF_EA_NONE = 0;
inline constexpr std::int32_t PF_EA_PARAM_TITLE = 1;
inline constexpr std::int32_t PF_EA_CONTROL = 2;

inline constexpr std::int32_t PF_Mod_NONE = 0;
inline constexpr std::int32_t PF_Mod_CMD_CTRL_KEY = 256;
inline constexpr std::int32_t PF_Mod_SHIFT_KEY = 512;
inline constexpr std::int32_t PF_Mod_CAPS_LOCK_KEY = 1024;
inline constexpr std::int32_t PF_Mod_OPT_ALT_KEY = 2048;
inline constexpr std::int32_t PF_Mod_MAC_CONTROL_KEY = 4096;

inline constexpr std::int32_t PF_Cursor_NONE = 0;
inline constexpr std::int32_t PF_Cursor_CUSTOM = 1;
inline constexpr std::int32_t PF_Cursor_ARROW = 2;

inline constexpr std::int32_t PF_CONTEXT_MAGIC = 99251998;
