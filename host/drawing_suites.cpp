// host/drawing_suites.cpp — the drawing suites: every mark goes into the panel's record.
#include <string>

#include "host/command.h"
#include "host/drawing_text.h"
#include "host/effect_state.h"
#include "host/panel_state.h"
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/drawbot.h"

namespace host {
namespace {

constexpr std::size_t kLongestText = 4096;  // units; texts without an end stop here

template <class Ref>
DrawingName nameOf(Ref ref) noexcept {
  return reinterpret_cast<DrawingName>(ref);
}

std::int32_t broken(const char* rule) noexcept {
  if (HostState* host = currentHost()) host->report(rule);
  return kSPBadParameterError;
}

std::int32_t planned(CallKind kind) noexcept {
  HostState* host = currentHost();
  return host != nullptr ? host->faults.check(kind) : 0;
}

// The panel that is being drawn, if this is its drawing, supplier or surface.
PanelState* panelOf(DrawingName name, DrawingName PanelState::*part) noexcept {
  PanelState* panel = currentPanel();
  return panel != nullptr && name != 0 && panel->*part == name ? panel : nullptr;
}

DrawnColour colourOf(const DRAWBOT_ColorRGBA& colour) noexcept {
  return {colour.red, colour.green, colour.blue, colour.alpha};
}

DrawnPoint pointOf(float x, float y) noexcept {
  return {x, y};
}

// Runs what may be short of memory.
template <class Action>
std::int32_t attempt(Action action) noexcept {
  try {
    action();
    return kSPNoError;
  } catch (...) {
    if (Command* command = currentCommand()) command->keepFailure();
    return kSPOutOfMemoryError;
  }
}

// Draw suite

template <class Ref>
std::int32_t partOfDrawing(DRAWBOT_DrawRef drawing, Ref* part, DrawingName PanelState::*which) {
  if (part == nullptr) return kSPBadParameterError;
  *part = nullptr;
  if (const std::int32_t error = planned(CallKind::drawingReference)) return refusal(error);
  const PanelState* panel = panelOf(nameOf(drawing), &PanelState::drawing);
  if (panel == nullptr) return broken("this is no drawing reference of the event under way");
  *part = reinterpret_cast<Ref>(panel->*which);
  return kSPNoError;
}

std::int32_t getSupplier(DRAWBOT_DrawRef drawing, DRAWBOT_SupplierRef* supplier) {
  return partOfDrawing(drawing, supplier, &PanelState::supplier);
}

std::int32_t getSurface(DRAWBOT_DrawRef drawing, DRAWBOT_SurfaceRef* surface) {
  return partOfDrawing(drawing, surface, &PanelState::surface);
}

// Supplier suite

template <class Ref>
std::int32_t makeObject(DRAWBOT_SupplierRef supplier, Ref* ref, const DrawingObject& object) {
  if (ref == nullptr) return kSPBadParameterError;
  *ref = nullptr;
  if (const std::int32_t error = planned(CallKind::newDrawingObject)) return error;
  PanelState* panel = panelOf(nameOf(supplier), &PanelState::supplier);
  if (panel == nullptr) return broken("this is no supplier of the event under way");
  return attempt([&] {
    *ref = reinterpret_cast<Ref>(keepDrawingObject(panel->instance.effect.state, object));
  });
}

std::int32_t newPen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* colour, float width,
                    DRAWBOT_PenRef* pen) {
  if (colour == nullptr) return kSPBadParameterError;
  DrawingObject object;
  object.kind = DrawingObjectKind::pen;
  object.colour = colourOf(*colour);
  object.size = width;
  return makeObject(supplier, pen, object);
}

std::int32_t newBrush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* colour,
                      DRAWBOT_BrushRef* brush) {
  if (colour == nullptr) return kSPBadParameterError;
  DrawingObject object;
  object.kind = DrawingObjectKind::brush;
  object.colour = colourOf(*colour);
  return makeObject(supplier, brush, object);
}

std::int32_t newDefaultFont(DRAWBOT_SupplierRef supplier, float size, DRAWBOT_FontRef* font) {
  DrawingObject object;
  object.kind = DrawingObjectKind::font;
  object.size = size;
  return makeObject(supplier, font, object);
}

std::int32_t newPath(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* path) {
  DrawingObject object;
  object.kind = DrawingObjectKind::path;
  return makeObject(supplier, path, object);
}

std::int32_t supportsText(DRAWBOT_SupplierRef supplier, std::uint8_t* answer) {
  if (answer == nullptr || panelOf(nameOf(supplier), &PanelState::supplier) == nullptr) {
    return kSPBadParameterError;
  }
  *answer = 1;
  return kSPNoError;
}

std::int32_t defaultFontSize(DRAWBOT_SupplierRef supplier, float* size) {
  if (size == nullptr) return kSPBadParameterError;
  if (const std::int32_t error = planned(CallKind::fontSize)) return error;
  const PanelState* panel = panelOf(nameOf(supplier), &PanelState::supplier);
  if (panel == nullptr) return broken("this is no supplier of the event under way");
  *size = panel->options.fontSize;
  return kSPNoError;
}

std::int32_t retainObject(DRAWBOT_ObjectRef object) {
  return retainDrawingObject(nameOf(object)) ? kSPNoError
                                             : broken("RetainObject: this is no drawing object");
}

std::int32_t releaseObject(DRAWBOT_ObjectRef object) {
  return releaseDrawingObject(nameOf(object))
             ? kSPNoError
             : broken("ReleaseObject: this is no drawing object, or was released already");
}

// Surface suite

// Adds a mark to the record of the surface's drawing.
template <class Fill>
std::int32_t mark(DRAWBOT_SurfaceRef surface, DrawnKind kind, Fill fill) {
  if (const std::int32_t error = planned(CallKind::drawCall)) return error;
  PanelState* panel = panelOf(nameOf(surface), &PanelState::surface);
  if (panel == nullptr) return broken("this is no surface of the event under way");
  return attempt([&] {
    DrawnPrimitive primitive;
    primitive.kind = kind;
    fill(primitive);
    panel->record.primitives.push_back(std::move(primitive));
  });
}

std::int32_t paintRect(DRAWBOT_SurfaceRef surface, const DRAWBOT_ColorRGBA* colour,
                       const DRAWBOT_RectF32* rect) {
  if (colour == nullptr || rect == nullptr) return broken("PaintRect: something is missing");
  return mark(surface, DrawnKind::rect, [&](DrawnPrimitive& primitive) {
    primitive.colour = colourOf(*colour);
    primitive.rect = {rect->left, rect->top, rect->width, rect->height};
  });
}

std::int32_t fillPath(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path,
                      std::int32_t rule) {
  const auto* ink = findDrawingObject(nameOf(brush), DrawingObjectKind::brush);
  const auto* shape = findDrawingObject(nameOf(path), DrawingObjectKind::path);
  if (ink == nullptr || shape == nullptr) return broken("FillPath: no live brush or path");
  if (rule != kDRAWBOT_FillType_EvenOdd && rule != kDRAWBOT_FillType_Winding) {
    return broken("FillPath: there is no such rule");
  }
  return mark(surface, DrawnKind::fill, [&](DrawnPrimitive& primitive) {
    primitive.colour = ink->colour;
    primitive.figures = shape->figures;
    primitive.rule = rule == kDRAWBOT_FillType_EvenOdd ? FillRule::evenOdd : FillRule::winding;
  });
}

std::int32_t strokePath(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen, DRAWBOT_PathRef path) {
  const auto* ink = findDrawingObject(nameOf(pen), DrawingObjectKind::pen);
  const auto* shape = findDrawingObject(nameOf(path), DrawingObjectKind::path);
  if (ink == nullptr || shape == nullptr) return broken("StrokePath: no live pen or path");
  return mark(surface, DrawnKind::stroke, [&](DrawnPrimitive& primitive) {
    primitive.colour = ink->colour;
    primitive.penWidth = ink->size;
    primitive.figures = shape->figures;
  });
}

std::int32_t drawString(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_FontRef font,
                        const std::uint16_t* text, const DRAWBOT_PointF32* origin,
                        std::int32_t alignment, std::int32_t truncation, float) {
  const auto* ink = findDrawingObject(nameOf(brush), DrawingObjectKind::brush);
  const auto* face = findDrawingObject(nameOf(font), DrawingObjectKind::font);
  if (ink == nullptr || face == nullptr || text == nullptr || origin == nullptr) {
    return broken("DrawString: no live brush or font, no text or no origin");
  }
  if (alignment < kDRAWBOT_TextAlignment_Left || alignment > kDRAWBOT_TextAlignment_Right) {
    return broken("DrawString: there is no such alignment");
  }
  if (truncation != kDRAWBOT_TextTruncation_None) {
    return broken("DrawString: this host does not cut texts");
  }
  return mark(surface, DrawnKind::text, [&](DrawnPrimitive& primitive) {
    primitive.colour = ink->colour;
    primitive.text = fromUtf16(text, kLongestText);
    primitive.origin = {origin->x, origin->y};
    primitive.fontSize = face->size;
    primitive.align = static_cast<TextAlign>(alignment);
  });
}

// Path suite

template <class Change>
std::int32_t extend(DRAWBOT_PathRef path, Change change) {
  if (const std::int32_t error = planned(CallKind::pathCall)) return error;
  DrawingObject* object = findDrawingObject(nameOf(path), DrawingObjectKind::path);
  if (object == nullptr) return broken("this is no live path");
  return attempt([&] { change(object->figures); });
}

std::int32_t moveTo(DRAWBOT_PathRef path, float x, float y) {
  return extend(path, [&](auto& figures) { figures.push_back({{pointOf(x, y)}, false}); });
}

std::int32_t lineTo(DRAWBOT_PathRef path, float x, float y) {
  const auto* object = findDrawingObject(nameOf(path), DrawingObjectKind::path);
  if (object != nullptr && (object->figures.empty() || object->figures.back().closed)) {
    return broken("LineTo: the path has no beginning");
  }
  return extend(path, [&](auto& figures) { figures.back().points.push_back(pointOf(x, y)); });
}

std::int32_t addRect(DRAWBOT_PathRef path, const DRAWBOT_RectF32* rect) {
  if (rect == nullptr) return broken("AddRect: the rectangle is missing");
  const float right = rect->left + rect->width;
  const float bottom = rect->top + rect->height;
  return extend(path, [&](auto& figures) {
    figures.push_back({{pointOf(rect->left, rect->top), pointOf(right, rect->top),
                        pointOf(right, bottom), pointOf(rect->left, bottom)},
                       true});
  });
}

std::int32_t closePath(DRAWBOT_PathRef path) {
  return extend(path, [](auto& figures) {
    if (!figures.empty()) figures.back().closed = true;
  });
}

}  // namespace

const void* drawbotDrawSuite() {
  static const DRAWBOT_DrawbotSuite1 table{getSupplier, getSurface};
  return &table;
}

const void* drawbotSupplierSuite() {
  static const DRAWBOT_SupplierSuite1 table = [] {
    DRAWBOT_SupplierSuite1 t{};
    t.NewPen = newPen;
    t.NewBrush = newBrush;
    t.SupportsText = supportsText;
    t.GetDefaultFontSize = defaultFontSize;
    t.NewDefaultFont = newDefaultFont;
    HOST_UNUSED(t, NewImageFromBuffer);
    t.NewPath = newPath;
    HOST_UNUSED(t, SupportsPixelLayoutBGRA);
    HOST_UNUSED(t, PrefersPixelLayoutBGRA);
    HOST_UNUSED(t, SupportsPixelLayoutARGB);
    HOST_UNUSED(t, PrefersPixelLayoutARGB);
    t.RetainObject = retainObject;
    t.ReleaseObject = releaseObject;
    return t;
  }();
  return &table;
}

// Version 1 is the beginning of version 2.
const void* drawbotSurfaceSuite() {
  static const DRAWBOT_SurfaceSuite2 table = [] {
    DRAWBOT_SurfaceSuite2 t{};
    HOST_UNUSED(t, PushStateStack);
    HOST_UNUSED(t, PopStateStack);
    t.PaintRect = paintRect;
    t.FillPath = fillPath;
    t.StrokePath = strokePath;
    HOST_UNUSED(t, Clip);
    HOST_UNUSED(t, GetClipBounds);
    HOST_UNUSED(t, IsWithinClipBounds);
    HOST_UNUSED(t, Transform);
    t.DrawString = drawString;
    HOST_UNUSED(t, DrawImage);
    HOST_UNUSED(t, SetInterpolationPolicy);
    HOST_UNUSED(t, GetInterpolationPolicy);
    HOST_UNUSED(t, SetAntiAliasPolicy);
    HOST_UNUSED(t, GetAntiAliasPolicy);
    HOST_UNUSED(t, Flush);
    HOST_UNUSED(t, GetTransformToScreenScale);
    return t;
  }();
  return &table;
}

const void* drawbotPathSuite() {
  static const DRAWBOT_PathSuite1 table = [] {
    DRAWBOT_PathSuite1 t{};
    t.MoveTo = moveTo;
    t.LineTo = lineTo;
    HOST_UNUSED(t, BezierTo);
    t.AddRect = addRect;
    HOST_UNUSED(t, AddArc);
    t.Close = closePath;
    return t;
  }();
  return &table;
}

}  // namespace host
