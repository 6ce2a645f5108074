// ui/painter.cpp — drawing on the host's surface; the first failure ends it.
#include "ui/painter.h"

#include "hostapi/commands.h"
#include "ui/panel_text.h"

namespace varilum {

Painter::Painter(const DrawbotSuites& suites, DRAWBOT_DrawRef reference) noexcept
    : suites_(suites) {
  note(suites_.draw->GetSupplier(reference, &supplier_));
  if (!failed()) note(suites_.draw->GetSurface(reference, &surface_));
  // Success without a place to draw on is none.
  if (!failed() && (supplier_ == nullptr || surface_ == nullptr)) note(PF_Err_BAD_CALLBACK_PARAM);
}

float Painter::defaultFontSize() noexcept {
  float size = 0.0F;
  if (!failed()) note(suites_.supplier->GetDefaultFontSize(supplier_, &size));
  return size;
}

void Painter::paintRect(const DRAWBOT_ColorRGBA& color, const DRAWBOT_RectF32& rect) noexcept {
  if (!failed()) note(suites_.surface->PaintRect(surface_, &color, &rect));
}

void Painter::strokeLine(const DRAWBOT_ColorRGBA& color,
                         std::span<const DRAWBOT_PointF32> points) noexcept {
  Pen pen{*this, color};
  pen.stroke(points);
}

void Painter::paintShape(const DRAWBOT_ColorRGBA& outline, const DRAWBOT_ColorRGBA& fill,
                         std::span<const DRAWBOT_PointF32> points) noexcept {
  const Path path{*this, points};
  Pen{*this, outline}.stroke(path);
  const Brush brush{*this, fill};
  if (failed()) return;
  note(suites_.surface->FillPath(surface_, brush.ref(), path.ref(), kDRAWBOT_FillType_EvenOdd));
}

void Painter::drawText(const Font& font, const DRAWBOT_ColorRGBA& color, DRAWBOT_PointF32& origin,
                       const char* text, float lineHeight) noexcept {
  const WideLine line{text};
  if (line.valid()) {
    const Brush brush{*this, color};
    if (!failed()) {
      note(suites_.surface->DrawString(surface_, brush.ref(), font.ref(), line.units(), &origin,
                                       kDRAWBOT_TextAlignment_Left, kDRAWBOT_TextTruncation_None,
                                       0.0F));
    }
  }
  origin.y += lineHeight;
}

void Pen::stroke(std::span<const DRAWBOT_PointF32> points) noexcept {
  stroke(Path{painter_, points});
}

void Pen::stroke(const Path& path) noexcept {
  if (painter_.failed()) return;
  painter_.note(painter_.suites_.surface->StrokePath(painter_.surface_, ref(), path.ref()));
}

Path::Path(Painter& painter, std::span<const DRAWBOT_PointF32> points) noexcept
    : DrawObject(painter, [](const auto& suite, auto supplier, auto* ref) {
        return suite.NewPath(supplier, ref);
      }) {
  const DRAWBOT_PathSuite1& suite = *painter.suites_.path;
  auto add = suite.MoveTo;
  for (const DRAWBOT_PointF32& point : points) {
    if (painter.failed()) return;
    painter.note(add(this->ref(), point.x, point.y));
    add = suite.LineTo;
  }
}

}  // namespace varilum
