// ui/painter.h — drawing on the host's surface; the first failure ends it.
//
// A Painter remembers the first error of any call and makes no further ones, so a drawing is
// written down without looking at results and asked for its error in the end. Objects are given
// back whatever happens.
#pragma once

#include <cstdint>
#include <span>

#include "ui/drawbot_suites.h"

namespace varilum {

class Font;
class Path;

class Painter {
 public:
  // The supplier and the surface of a drawing reference, which stay the host's.
  Painter(const DrawbotSuites& suites, DRAWBOT_DrawRef reference) noexcept;
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  std::int32_t error() const noexcept { return error_; }
  bool failed() const noexcept { return error_ != 0; }
  // Takes an error of something else that the drawing depends on.
  void note(std::int32_t error) noexcept {
    if (error_ == 0) error_ = error;
  }

  float defaultFontSize() noexcept;

  void paintRect(const DRAWBOT_ColorRGBA& color, const DRAWBOT_RectF32& rect) noexcept;
  // An open line through all points.
  void strokeLine(const DRAWBOT_ColorRGBA& color,
                  std::span<const DRAWBOT_PointF32> points) noexcept;
  // Strokes and then fills.
  void paintShape(const DRAWBOT_ColorRGBA& outline, const DRAWBOT_ColorRGBA& fill,
                  std::span<const DRAWBOT_PointF32> points) noexcept;
  // Draws one line of at most 100 characters with its baseline at origin, which then moves down,
  // drawn or not.
  void drawText(const Font& font, const DRAWBOT_ColorRGBA& color, DRAWBOT_PointF32& origin,
                const char* text, float lineHeight) noexcept;

 private:
  friend class Pen;
  friend class Path;
  template <class Ref>
  friend class DrawObject;

  DrawbotSuites suites_;
  DRAWBOT_SupplierRef supplier_ = nullptr;
  DRAWBOT_SurfaceRef surface_ = nullptr;
  std::int32_t error_ = 0;
};

// What the supplier made; null when it, or anything before, failed.
template <class Ref>
class DrawObject {
 public:
  DrawObject(const DrawObject&) = delete;
  DrawObject& operator=(const DrawObject&) = delete;

  Ref ref() const noexcept { return ref_; }

 protected:
  // make(supplier suite, supplier, out ref) gives the host's result.
  template <class Make>
  DrawObject(Painter& painter, Make make) noexcept : painter_(painter) {
    if (painter.failed()) return;
    painter.note(make(*painter.suites_.supplier, painter.supplier_, &ref_));
    if (ref_ == nullptr) painter.note(kNotMade);
  }
  ~DrawObject() {
    if (ref_ == nullptr) return;
    painter_.note(
        painter_.suites_.supplier->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(ref_)));
  }

  Painter& painter_;

 private:
  static constexpr std::int32_t kNotMade = 516;  // nothing given, and no reason

  Ref ref_ = nullptr;
};

// Draws lines one pixel wide.
class Pen : public DrawObject<DRAWBOT_PenRef> {
 public:
  Pen(Painter& painter, const DRAWBOT_ColorRGBA& color) noexcept
      : DrawObject(painter, [&](const auto& suite, auto supplier, auto* ref) {
          return suite.NewPen(supplier, &color, 1.0F, ref);
        }) {}

  // An open line through all points, as a path of its own.
  void stroke(std::span<const DRAWBOT_PointF32> points) noexcept;
  void stroke(const Path& path) noexcept;
};

class Brush : public DrawObject<DRAWBOT_BrushRef> {
 public:
  Brush(Painter& painter, const DRAWBOT_ColorRGBA& color) noexcept
      : DrawObject(painter, [&](const auto& suite, auto supplier, auto* ref) {
          return suite.NewBrush(supplier, &color, ref);
        }) {}
};

class Font : public DrawObject<DRAWBOT_FontRef> {
 public:
  Font(Painter& painter, float size) noexcept
      : DrawObject(painter, [&](const auto& suite, auto supplier, auto* ref) {
          return suite.NewDefaultFont(supplier, size, ref);
        }) {}
};

// A line through all points.
class Path : public DrawObject<DRAWBOT_PathRef> {
 public:
  Path(Painter& painter, std::span<const DRAWBOT_PointF32> points) noexcept;
};

// Lines of text, one below the other.
class TextColumn {
 public:
  TextColumn(Painter& painter, const Font& font, DRAWBOT_PointF32 origin, float lineHeight) noexcept
      : painter_(painter), font_(font), origin_(origin), lineHeight_(lineHeight) {}

  // The next line's place.
  DRAWBOT_PointF32& origin() noexcept { return origin_; }
  void line(const DRAWBOT_ColorRGBA& color, const char* text) noexcept {
    painter_.drawText(font_, color, origin_, text, lineHeight_);
  }

 private:
  Painter& painter_;
  const Font& font_;
  DRAWBOT_PointF32 origin_;
  float lineHeight_;
};

}  // namespace varilum
