// tests/ui/recording_host.cpp — a host for one panel: it records, counts, and refuses on demand.
#include "tests/ui/recording_host.h"

#include <gtest/gtest.h>

#include <cstdio>
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
#include "stats/lifecycle.h"
#include "ui/events.h"

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

std::string print(const char* format, auto... values) {
  char text[200];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

}  // namespace

std::string Primitive::describe() const {
  const std::string tone = print("(%.4g %.4g %.4g)", color.red, color.green, color.blue);
  std::string path;
  if (points.size() > 4) {
    path = print("%d points", static_cast<int>(points.size()));
  } else {
    for (const DRAWBOT_PointF32& point : points) {
      path += print(path.empty() ? "%g,%g" : " %g,%g", point.x, point.y);
    }
  }
  switch (kind) {
    case Kind::rect:
      return "rect " + tone + print(" %g,%g %gx%g", rect.left, rect.top, rect.width, rect.height);
    case Kind::stroke:
      return "stroke " + tone + print(" %g ", size) + path;
    case Kind::fill:
      return "fill " + tone + print(" rule %d ", rule) + path;
    case Kind::text:
      return "text " + tone + " " + path + " '" + text + "'";
  }
  return {};
}

std::int32_t RecordingHost::called(const std::string& function) {
  const int call = ++calls[function];
  if (function != refusedFunction_ || call != refusedCall_) return 0;
  refused = true;
  return refusal_;
}

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

RecordingHost::RecordingHost(std::int32_t frames, std::int32_t frame) {
  current = this;
  basic_.AcquireSuite = Callbacks::acquire;
  basic_.ReleaseSuite =
      static_cast<std::int32_t (*)(const char*, std::int32_t)>(Callbacks::release);
  in.utils = memory.utils();
  in.pica_basicP = &basic_;
  in.inter.checkout_param = Callbacks::checkout;
  in.inter.checkin_param = Callbacks::checkin;
  in.time_step = 10;
  in.total_time = frames * 10;
  in.current_time = frame * 10;
  in.time_scale = 250;
  in.width = 200;
  in.height = 100;
  in.downsample_x = {1, 1};
  in.downsample_y = {1, 1};

  for (std::size_t i = 0; i < values_.size(); ++i) pointers_[i] = &values_[i];
  param(PARAM_SPEED).u.fd.value = 1 << 16;
  param(PARAM_SMOOTHING_FRAMES).u.fd.value = 2 << 16;
  param(PARAM_DEFLICKER_METHOD).u.pd.value = 2;
  param(PARAM_CORRECTION_METHOD).u.pd.value = 1;
  param(PARAM_LUMINANCE).u.arb_d.value = memory.create(sizeof(double));
  setLuminance(128.0);

  global.isAfterEffects = 1;
  global.aegpPluginId = 77;
  EXPECT_EQ(setupSequence(in, out), 0);
  in.sequence_data = out.sequence_data;
  state_ = static_cast<SequenceState*>(memory.lock(out.sequence_data));

  context.w_type = PF_Window_EFFECT;
  event.contextH = &contextPointer_;
  event.effect_win.index = PARAM_LUMINANCE;
  event.effect_win.area = PF_EA_CONTROL;
  event.effect_win.current_frame = {10, 20, 410, 352};
  setPicture(200, 100, 90);
}

RecordingHost::~RecordingHost() {
  EXPECT_EQ(outstanding(), 0);
  EXPECT_EQ(violations, 0);
  memory.unlock(out.sequence_data);
  setdownSequence(in, out);
  memory.dispose(param(PARAM_LUMINANCE).u.arb_d.value);
  EXPECT_EQ(memory.live(), 0U);
  EXPECT_EQ(memory.violations(), 0);
  current = nullptr;
}

double RecordingHost::luminance() const {
  double level;
  std::memcpy(&level, *values_[PARAM_LUMINANCE].u.arb_d.value, sizeof level);
  return level;
}

void RecordingHost::setLuminance(double level) {
  std::memcpy(*param(PARAM_LUMINANCE).u.arb_d.value, &level, sizeof level);
}

void RecordingHost::analyze() {
  const LevelLocks locks = levels();
  for (std::size_t i = 0; i < locks.inputLuminance().size(); ++i) {
    locks.inputLuminance()[i] = 100.0 + 10.0 * static_cast<double>(i);
    locks.inputSpread()[i] = 12.5;
    locks.desiredLuminance()[i] = 125.0;
    locks.desiredSpread()[i] = 11.25;
  }
  const std::int32_t frame = in.current_time / in.time_step;
  FrameStats& stats = state_->currentStats;
  resetFrameStats(stats);
  stats.frame = frame;
  stats.analyzed = 1;
  stats.pixelCount = 1000;
  stats.belowTopCount = 905;
  stats.peak = 100;
  stats.totalPixels = 2000;
  FrameHistogram& histogram = state_->currentHistogram;
  resetFrameHistogram(histogram);
  histogram.luminance[100] = 100;
  histogram.luminance[101] = 50;
  storeFrameStats(in, *state_, frame, stats, histogram);
}

std::pair<FrameStats, FrameHistogram> RecordingHost::stored(std::int32_t frame) {
  std::pair<FrameStats, FrameHistogram> result;
  fetchFrameStats(in, *state_, frame, result.first, result.second);
  return result;
}

std::int32_t RecordingHost::send(std::int32_t type) {
  event.e_type = type;
  const EventResult result = handleEvent(&global, in, out, params(), nullptr, event);
  changedTargets = result.changedTargets;
  return result.error;
}

void RecordingHost::setPicture(std::int32_t width, std::int32_t height, std::uint8_t level) {
  picture_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                  {255, level, level, level});
  world = {};
  world.data = picture_.data();
  world.width = width;
  world.height = height;
  world.rowbytes = width * 4;
}

std::vector<std::string> RecordingHost::described() const {
  std::vector<std::string> result;
  for (const Primitive& primitive : drawn) result.push_back(primitive.describe());
  return result;
}

std::vector<std::string> RecordingHost::texts() const {
  std::vector<std::string> result;
  for (const Primitive& primitive : drawn) {
    if (primitive.kind == Primitive::Kind::text) result.push_back(primitive.text);
  }
  return result;
}

std::vector<Primitive> RecordingHost::marks(Primitive::Kind kind,
                                            const DRAWBOT_ColorRGBA& color) const {
  std::vector<Primitive> result;
  for (const Primitive& primitive : drawn) {
    if (primitive.kind == kind && primitive.color.red == color.red &&
        primitive.color.green == color.green && primitive.color.blue == color.blue) {
      result.push_back(primitive);
    }
  }
  return result;
}

void RecordingHost::refuse(const std::string& function, int n, std::int32_t error) {
  refusedFunction_ = function;
  refusedCall_ = calls[function] + n;
  refusal_ = error;
}

int RecordingHost::outstanding() const {
  int held = static_cast<int>(objects_.size()) + heldParams_ + memory.locks() - 1;
  for (const auto& [name, count] : suites_) held += count;
  return held;
}

}  // namespace varilum::test
