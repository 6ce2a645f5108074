// host/utility_callbacks.cpp — the table of services that need no suite.
#include "host/callback_tables.h"
#include "host/command.h"
#include "host/effect_worlds.h"
#include "host/handle_callbacks.h"
#include "host/iterate.h"
#include "host/pixel_callbacks.h"
#include "host/unused_slot.h"

namespace host {
namespace {

// No window: the main window is null, which is no error. Nothing else is known.
std::int32_t platformData(PF_ProgPtr ref, std::int32_t which, void* data) {
  if (commandOf(ref, "get_platform_data") == nullptr || data == nullptr) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (which != PF_PlatData_MAIN_WND) return PF_Err_INVALID_INDEX;
  *static_cast<void**>(data) = nullptr;
  return PF_Err_NONE;
}

std::int32_t appCall(PF_ProgPtr, std::int32_t, ...) {
  if (HostState* host = currentHost()) host->report("app: this host does not serve it");
  return PF_Err_INVALID_CALLBACK;
}

std::int32_t noBatchFunction() {
  if (HostState* host = currentHost()) {
    host->report("get_batch_func_is_deprecated: this host does not serve it");
  }
  return PF_Err_INVALID_CALLBACK;
}

void leaveSamplingUnused(PF_UtilCallbacks& table) {
  HOST_UNUSED(table, begin_sampling);
  HOST_UNUSED(table, subpixel_sample);
  HOST_UNUSED(table, area_sample);
  table.get_batch_func_is_deprecated = reinterpret_cast<void*>(noBatchFunction);
  HOST_UNUSED(table, end_sampling);
  HOST_UNUSED(table, subpixel_sample16);
  HOST_UNUSED(table, area_sample16);
}

void leaveCompositingUnused(PF_UtilCallbacks& table) {
  HOST_UNUSED(table, composite_rect);
  HOST_UNUSED(table, blend);
  HOST_UNUSED(table, convolve);
  HOST_UNUSED(table, gaussian_kernel);
  HOST_UNUSED(table, premultiply);
  HOST_UNUSED(table, premultiply_color);
  HOST_UNUSED(table, premultiply_color16);
  HOST_UNUSED(table, transfer_rect);
  HOST_UNUSED(table, transform_world);
}

void leaveIterationUnused(PF_UtilCallbacks& table) {
  HOST_UNUSED(table, iterate_origin);
  HOST_UNUSED(table, iterate_lut);
  HOST_UNUSED(table, iterate_origin_non_clip_src);
  HOST_UNUSED(table, iterate_origin16);
  HOST_UNUSED(table, iterate_origin_non_clip_src16);
}

void leaveColoursUnused(PF_ColorCallbacks& table) {
  HOST_UNUSED(table, RGBtoHLS);
  HOST_UNUSED(table, HLStoRGB);
  HOST_UNUSED(table, RGBtoYIQ);
  HOST_UNUSED(table, YIQtoRGB);
  HOST_UNUSED(table, Luminance);
  HOST_UNUSED(table, Hue);
  HOST_UNUSED(table, Lightness);
  HOST_UNUSED(table, Saturation);
}

PF_UtilCallbacks makeUtilityTable() {
  PF_UtilCallbacks table{};
  leaveSamplingUnused(table);
  leaveCompositingUnused(table);
  leaveIterationUnused(table);
  leaveColoursUnused(table.colorCB);
  HOST_UNUSED(table, get_callback_addr);
  table.app = appCall;
  table.new_world = newWorld;
  table.dispose_world = disposeWorld;
  table.copy = copyWorld;
  table.fill = fillWorld;
  table.fill16 = fillWorld16;
  table.iterate = iterate8;
  table.iterate16 = iterate16;
  table.iterate_generic = iterateGeneric;
  table.host_new_handle = effectNewHandle;
  table.host_lock_handle = effectLockHandle;
  table.host_unlock_handle = effectUnlockHandle;
  table.host_dispose_handle = effectDisposeHandle;
  table.host_get_handle_size = effectHandleSize;
  table.host_resize_handle = effectResizeHandle;
  table.ansi = mathCallbacks();
  table.get_platform_data = platformData;
  table.get_pixel_data8 = pixelData8;
  table.get_pixel_data16 = pixelData16;
  return table;
}

}  // namespace

PF_UtilCallbacks* utilCallbacks() {
  static PF_UtilCallbacks table = makeUtilityTable();
  return &table;
}

}  // namespace host
