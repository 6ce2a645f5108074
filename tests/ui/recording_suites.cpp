// tests/ui/recording_suites.cpp — the suites and callbacks of the recording host.
#include <cstring>
#include <type_traits>

#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_world.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/custom_ui.h"
#include "hostapi/suites/param_utils.h"
#include "hostapi/suites/world.h"
#include "tests/ui/recording_host.h"

namespace varilum::test {
namespace {

RecordingHost* current = nullptr;

// Objects of the host's own, which nobody may give back.
constexpr std::uintptr_t kDrawing = 1, kSupplier = 2, kSurface = 3, kManager = 4, kWorld = 5;

template <class Ref>
Ref refOf(std::uintptr_t id) {
  return reinterpret_cast<Ref>(id * 16);
}
template <class Ref>
std::uintptr_t idOf(Ref ref) {
  return reinterpret_cast<std::uintptr_t>(ref) / 16;
}

std::string suiteKey(const char* name, std::int32_t version) {
  std::string key = name;
  key += ' ';
  key += std::to_string(version);
  return key;
}

}  // namespace

template <class Ref>
void RecordingHost::make(Object object, Ref* ref) {
  objects_[nextObject_] = std::move(object);
  *ref = refOf<Ref>(nextObject_++);
}

template <class Ref>
RecordingHost::Object* RecordingHost::find(Ref ref, const char* kind) {
  const auto at = objects_.find(idOf(ref));
  if (at != objects_.end() && at->second.kind == kind) return &at->second;
  ++violations;
  return nullptr;
}

void RecordingHost::drop(std::uintptr_t id, const char* kind) {
  const auto at = objects_.find(id);
  if (at == objects_.end() || (kind != nullptr && at->second.kind != kind)) {
    ++violations;
  } else {
    objects_.erase(at);
  }
}

// The functions of all tables.
struct Callbacks {
  static RecordingHost& host() { return *current; }

  static std::int32_t supplier(DRAWBOT_DrawRef reference, DRAWBOT_SupplierRef* ref) {
    if (const auto error = host().called("GetSupplier")) return error;
    if (idOf(reference) != kDrawing) ++host().violations;
    *ref = refOf<DRAWBOT_SupplierRef>(kSupplier);
    return 0;
  }
  static std::int32_t surface(DRAWBOT_DrawRef, DRAWBOT_SurfaceRef* ref) {
    if (const auto error = host().called("GetSurface")) return error;
    *ref = refOf<DRAWBOT_SurfaceRef>(kSurface);
    return 0;
  }
  static std::int32_t newPen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color,
                             float width, DRAWBOT_PenRef* ref) {
    if (const auto error = host().called("NewPen")) return error;
    if (idOf(supplier) != kSupplier) ++host().violations;
    host().make({"pen", *color, width}, ref);
    return 0;
  }
  static std::int32_t newBrush(DRAWBOT_SupplierRef, const DRAWBOT_ColorRGBA* color,
                               DRAWBOT_BrushRef* ref) {
    if (const auto error = host().called("NewBrush")) return error;
    host().make({"brush", *color}, ref);
    return 0;
  }
  static std::int32_t fontSize(DRAWBOT_SupplierRef, float* size) {
    if (const auto error = host().called("GetDefaultFontSize")) return error;
    *size = 10.0F;
    return 0;
  }
  static std::int32_t newFont(DRAWBOT_SupplierRef, float size, DRAWBOT_FontRef* ref) {
    if (const auto error = host().called("NewDefaultFont")) return error;
    host().make({"font", {}, size}, ref);
    return 0;
  }
  static std::int32_t newPath(DRAWBOT_SupplierRef, DRAWBOT_PathRef* ref) {
    if (const auto error = host().called("NewPath")) return error;
    host().make({"path"}, ref);
    return 0;
  }
  // Refusing to release does so all the same: the caller could not do anything about it.
  static std::int32_t release(DRAWBOT_ObjectRef ref) {
    const std::int32_t error = host().called("ReleaseObject");
    host().drop(idOf(ref), nullptr);
    return error;
  }
  static std::int32_t paintRect(DRAWBOT_SurfaceRef surface, const DRAWBOT_ColorRGBA* color,
                                const DRAWBOT_RectF32* rect) {
    if (const auto error = host().called("PaintRect")) return error;
    if (idOf(surface) != kSurface) ++host().violations;
    host().drawn.push_back({Primitive::Kind::rect, *color, *rect});
    return 0;
  }
  static std::int32_t fillPath(DRAWBOT_SurfaceRef, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path,
                               std::int32_t rule) {
    if (const auto error = host().called("FillPath")) return error;
    const auto* with = host().find(brush, "brush");
    const auto* along = host().find(path, "path");
    if (with == nullptr || along == nullptr) return 0;
    host().drawn.push_back({Primitive::Kind::fill, with->color, {}, along->points, {}, 0.0F, rule});
    return 0;
  }
  static std::int32_t strokePath(DRAWBOT_SurfaceRef, DRAWBOT_PenRef pen, DRAWBOT_PathRef path) {
    if (const auto error = host().called("StrokePath")) return error;
    const auto* with = host().find(pen, "pen");
    const auto* along = host().find(path, "path");
    if (with == nullptr || along == nullptr) return 0;
    host().drawn.push_back(
        {Primitive::Kind::stroke, with->color, {}, along->points, {}, with->size});
    return 0;
  }
  static std::int32_t drawString(DRAWBOT_SurfaceRef, DRAWBOT_BrushRef brush, DRAWBOT_FontRef font,
                                 const std::uint16_t* units, const DRAWBOT_PointF32* origin,
                                 std::int32_t alignment, std::int32_t truncation, float) {
    if (const auto error = host().called("DrawString")) return error;
    const auto* with = host().find(brush, "brush");
    const auto* in = host().find(font, "font");
    if (alignment != 0 || truncation != 0) ++host().violations;
    if (with == nullptr || in == nullptr) return 0;
    std::string text;
    for (; *units != 0; ++units) text += static_cast<char>(*units);
    host().drawn.push_back({Primitive::Kind::text, with->color, {}, {*origin}, text, in->size});
    return 0;
  }
  static std::int32_t moveTo(DRAWBOT_PathRef path, float x, float y) {
    if (const auto error = host().called("MoveTo")) return error;
    auto* object = host().find(path, "path");
    if (object == nullptr) return 0;
    if (!object->points.empty()) ++host().violations;
    object->points.push_back({x, y});
    return 0;
  }
  static std::int32_t lineTo(DRAWBOT_PathRef path, float x, float y) {
    if (const auto error = host().called("LineTo")) return error;
    auto* object = host().find(path, "path");
    if (object == nullptr) return 0;
    if (object->points.empty()) ++host().violations;
    object->points.push_back({x, y});
    return 0;
  }

  static std::int32_t drawingReference(PF_Context** context, DRAWBOT_DrawRef* ref) {
    if (const auto error = host().called("PF_GetDrawingReference")) return error;
    if (*context != &host().context) ++host().violations;
    *ref = refOf<DRAWBOT_DrawRef>(kDrawing);
    return 0;
  }
  static std::int32_t asyncManager(PF_InData* in, PF_EventExtra* extra, PF_AsyncManagerP* ref) {
    if (const auto error = host().called("PF_GetContextAsyncManager")) return error;
    if (in != &host().in || extra != &host().event) ++host().violations;
    *ref = refOf<PF_AsyncManagerP>(kManager);
    return 0;
  }
  static std::int32_t background(PF_App_Color* color) {
    if (const auto error = host().called("PF_AppGetBgColor")) return error;
    *color = {65535, 0, 13107};
    return 0;
  }

  static std::int32_t updateUi(PF_ProgPtr, std::int32_t index, const PF_ParamDef* definition) {
    if (const auto error = host().called("PF_UpdateParamUI")) return error;
    host().labels.emplace_back(index, definition->name);
    return 0;
  }

  static std::int32_t newEffect(std::int32_t id, PF_ProgPtr, AEGP_EffectRefH* ref) {
    if (const auto error = host().called("AEGP_GetNewEffectForEffect")) return error;
    if (id != host().global.aegpPluginId) ++host().violations;
    host().make({"effect"}, ref);
    return 0;
  }
  static std::int32_t disposeEffect(AEGP_EffectRefH ref) {
    host().drop(idOf(ref), "effect");
    return host().called("AEGP_DisposeEffect");
  }
  static std::int32_t upstreamOptions(std::int32_t, AEGP_EffectRefH effect,
                                      AEGP_LayerRenderOptionsH* ref) {
    if (const auto error = host().called("AEGP_NewFromUpstreamOfEffect")) return error;
    host().find(effect, "effect");
    host().make({"options"}, ref);
    return 0;
  }
  static std::int32_t disposeOptions(AEGP_LayerRenderOptionsH ref) {
    host().drop(idOf(ref), "options");
    return host().called("AEGP_Dispose");
  }
  static std::int32_t render(PF_AsyncManagerP manager, std::uint32_t,
                             AEGP_LayerRenderOptionsH options, AEGP_FrameReceiptH* ref) {
    if (const auto error = host().called("AEGP_CheckoutOrRender")) return error;
    if (idOf(manager) != kManager) ++host().violations;
    host().find(options, "options");
    if (host().ready != RecordingHost::Ready::noReceipt) host().make({"receipt"}, ref);
    return 0;
  }
  static std::int32_t checkinFrame(AEGP_FrameReceiptH ref) {
    host().drop(idOf(ref), "receipt");
    return host().called("AEGP_CheckinFrame");
  }
  static std::int32_t receiptWorld(AEGP_FrameReceiptH receipt, AEGP_WorldH* ref) {
    if (const auto error = host().called("AEGP_GetReceiptWorld")) return error;
    host().find(receipt, "receipt");
    const bool has = host().ready == RecordingHost::Ready::yes;
    *ref = has ? refOf<AEGP_WorldH>(kWorld) : nullptr;
    return 0;
  }
  static std::int32_t fillOut(AEGP_WorldH world, PF_EffectWorld* out) {
    if (const auto error = host().called("AEGP_FillOutPFEffectWorld")) return error;
    if (idOf(world) != kWorld) ++host().violations;
    *out = host().world;
    return 0;
  }
  static std::int32_t pixelFormat(const PF_EffectWorld*, std::int32_t* format) {
    if (const auto error = host().called("PF_GetPixelFormat")) return error;
    *format = host().worldFormat;
    return 0;
  }

  static std::int32_t checkout(PF_ProgPtr, std::int32_t index, std::int32_t time, std::int32_t,
                               std::uint32_t, PF_ParamDef* value) {
    if (const auto error = host().called("checkout_param")) return error;
    host().checkouts.emplace_back(index, time);
    *value = host().param(index);
    if (index == PARAM_INPUT) value->u.ld = host().world;
    ++host().heldParams_;
    return 0;
  }
  static std::int32_t checkin(PF_ProgPtr, PF_ParamDef*) {
    --host().heldParams_;
    return host().called("checkin_param");
  }

  static std::int32_t acquire(const char* name, std::int32_t version, const void** table);
  static std::int32_t release(const char* name, std::int32_t version) {
    auto& count = host().suites_[suiteKey(name, version)];
    if (count == 0) ++host().violations;
    --count;
    return host().called("ReleaseSuite");
  }
};

std::int32_t Callbacks::acquire(const char* name, std::int32_t version, const void** table) {
  static const DRAWBOT_DrawbotSuite1 draw{supplier, surface};
  static const auto supplierSuite = [] {
    DRAWBOT_SupplierSuite1 suite{};
    suite.NewPen = newPen;
    suite.NewBrush = newBrush;
    suite.GetDefaultFontSize = fontSize;
    suite.NewDefaultFont = newFont;
    suite.NewPath = newPath;
    suite.ReleaseObject = release;
    return suite;
  }();
  static const auto surfaceSuite = [] {
    DRAWBOT_SurfaceSuite2 suite{};
    suite.PaintRect = paintRect;
    suite.FillPath = fillPath;
    suite.StrokePath = strokePath;
    suite.DrawString = drawString;
    return suite;
  }();
  static const auto path = [] {
    DRAWBOT_PathSuite1 suite{};
    suite.MoveTo = moveTo;
    suite.LineTo = lineTo;
    return suite;
  }();
  static const PF_EffectCustomUISuite1 customUi1{drawingReference};
  static const PF_EffectCustomUISuite2 customUi2{drawingReference, asyncManager};
  static const auto app = [] {
    PFAppSuite4 suite{};
    suite.PF_AppGetBgColor = background;
    return suite;
  }();
  static const auto paramUtils = [] {
    PF_ParamUtilsSuite3 suite{};
    suite.PF_UpdateParamUI = updateUi;
    return suite;
  }();
  static const auto interface = [] {
    AEGP_PFInterfaceSuite1 suite{};
    suite.AEGP_GetNewEffectForEffect = newEffect;
    return suite;
  }();
  static const auto effect = [] {
    AEGP_EffectSuite4 suite{};
    suite.AEGP_DisposeEffect = disposeEffect;
    return suite;
  }();
  static const auto options = [] {
    AEGP_LayerRenderOptionsSuite2 suite{};
    suite.AEGP_NewFromUpstreamOfEffect = upstreamOptions;
    suite.AEGP_Dispose = disposeOptions;
    return suite;
  }();
  static const auto manager = [] {
    AEGP_RenderAsyncManagerSuite1 suite{};
    suite.AEGP_CheckoutOrRender_LayerFrame_AsyncManager = render;
    return suite;
  }();
  static const auto renders = [] {
    AEGP_RenderSuite5 suite{};
    suite.AEGP_CheckinFrame = checkinFrame;
    suite.AEGP_GetReceiptWorld = receiptWorld;
    return suite;
  }();
  static const auto worlds = [] {
    AEGP_WorldSuite3 suite{};
    suite.AEGP_FillOutPFEffectWorld = fillOut;
    return suite;
  }();
  static const auto formats = [] {
    PF_WorldSuite2 suite{};
    suite.PF_GetPixelFormat = pixelFormat;
    return suite;
  }();
  static const std::map<std::string, const void*> kTables = {
      {"DRAWBOT Draw Suite 1", &draw},
      {"DRAWBOT Supplier Suite 1", &supplierSuite},
      {"DRAWBOT Surface Suite 2", &surfaceSuite},
      {"DRAWBOT Path Suite 1", &path},
      {"PF Effect Custom UI Suite 1", &customUi1},
      {"PF Effect Custom UI Suite 2", &customUi2},
      {"PF AE App Suite 6", &app},
      {"PF Param Utils Suite 3", &paramUtils},
      {"AEGP PF Interface Suite 1", &interface},
      {"AEGP Effect Suite 4", &effect},
      {"AEGP Layer Render Options Suite 2", &options},
      {"AEGP Render Asyc Manager Suite 1", &manager},
      {"AEGP Render Suite 8", &renders},
      {"AEGP World Suite 3", &worlds},
      {"PF World Suite 2", &formats},
  };
  if (const auto error = host().called("AcquireSuite")) return error;
  const std::string key = suiteKey(name, version);
  const auto at = kTables.find(key);
  if (host().hideSuites || at == kTables.end()) return kSPSuiteNotFoundError;
  ++host().suites_[key];
  *table = at->second;
  return 0;
}

void RecordingHost::connect() {
  current = this;
  basic_.AcquireSuite = Callbacks::acquire;
  basic_.ReleaseSuite =
      static_cast<std::int32_t (*)(const char*, std::int32_t)>(Callbacks::release);
  in.pica_basicP = &basic_;
  in.inter.checkout_param = Callbacks::checkout;
  in.inter.checkin_param = Callbacks::checkin;
}

void RecordingHost::disconnect() {
  current = nullptr;
}

}  // namespace varilum::test
