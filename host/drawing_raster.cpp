// host/drawing_raster.cpp — drawings as pictures, with real fonts.
#include "host/drawing_raster.h"

#include <cairo/cairo.h>
#include <pango/pangocairo.h>

#include <cmath>
#include <stdexcept>
#include <string>

namespace host {
namespace {

constexpr double kLargest = 32000.0;  // pixels a side

// Narrow, as the fonts of panels are: the first of these that is installed.
constexpr const char* kFontFamilies = "Liberation Sans,DejaVu Sans Condensed,sans-serif";

// Lines of text follow each other at the font's size, so its letters are somewhat smaller.
constexpr double kEmOfSize = 0.92;

struct Release {
  void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
  void operator()(PangoLayout* layout) const noexcept { g_object_unref(layout); }
  void operator()(PangoFontDescription* font) const noexcept { pango_font_description_free(font); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

void use(cairo_t* context, const DrawnColour& colour) {
  cairo_set_source_rgba(context, static_cast<double>(colour.red), static_cast<double>(colour.green),
                        static_cast<double>(colour.blue), static_cast<double>(colour.alpha));
}

void trace(cairo_t* context, const std::vector<DrawnFigure>& figures) {
  cairo_new_path(context);
  for (const DrawnFigure& figure : figures) {
    bool begun = false;
    for (const DrawnPoint& point : figure.points) {
      const double x = static_cast<double>(point.x);
      const double y = static_cast<double>(point.y);
      begun ? cairo_line_to(context, x, y) : cairo_move_to(context, x, y);
      begun = true;
    }
    if (figure.closed) cairo_close_path(context);
  }
}

void write(cairo_t* context, const DrawnPrimitive& primitive) {
  const Owned<PangoLayout> layout{pango_cairo_create_layout(context)};
  const Owned<PangoFontDescription> font{pango_font_description_new()};
  pango_font_description_set_family_static(font.get(), kFontFamilies);
  pango_font_description_set_absolute_size(
      font.get(), static_cast<double>(primitive.fontSize) * kEmOfSize * PANGO_SCALE);
  pango_layout_set_font_description(layout.get(), font.get());
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  pango_layout_set_text(layout.get(), primitive.text.data(),
                        static_cast<int>(primitive.text.size()));
  PangoLayoutLine* const line = pango_layout_get_line_readonly(layout.get(), 0);
  PangoRectangle box{};
  pango_layout_line_get_extents(line, nullptr, &box);
  const double width = static_cast<double>(box.width) / PANGO_SCALE;
  double x = static_cast<double>(primitive.origin.x);
  if (primitive.align == TextAlign::centre) x -= width / 2;
  if (primitive.align == TextAlign::right) x -= width;
  cairo_move_to(context, x, static_cast<double>(primitive.origin.y));
  pango_cairo_show_layout_line(context, line);
}

void paint(cairo_t* context, const DrawnPrimitive& primitive) {
  use(context, primitive.colour);
  switch (primitive.kind) {
    case DrawnKind::rect:
      cairo_rectangle(context, static_cast<double>(primitive.rect.left),
                      static_cast<double>(primitive.rect.top),
                      static_cast<double>(primitive.rect.width),
                      static_cast<double>(primitive.rect.height));
      cairo_fill(context);
      return;
    case DrawnKind::stroke:
      trace(context, primitive.figures);
      cairo_set_line_width(context, static_cast<double>(primitive.penWidth));
      cairo_stroke(context);
      return;
    case DrawnKind::fill:
      trace(context, primitive.figures);
      cairo_set_fill_rule(context, primitive.rule == FillRule::winding ? CAIRO_FILL_RULE_WINDING
                                                                       : CAIRO_FILL_RULE_EVEN_ODD);
      cairo_fill(context);
      return;
    case DrawnKind::text:
      write(context, primitive);
      return;
  }
}

int pixels(float length, double scale) {
  const double wanted = std::ceil(static_cast<double>(length) * scale);
  if (!(wanted >= 1.0) || wanted > kLargest) {
    throw std::runtime_error("A picture of a panel cannot be that large, or that small.");
  }
  return static_cast<int>(wanted);
}

void require(cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error(std::string("The panel cannot be painted: ") +
                           cairo_status_to_string(status) + ".");
}

}  // namespace

class Raster::Surface {
 public:
  Surface(int width, int height)
      : image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)) {
    require(cairo_surface_status(image.get()));
  }
  Owned<cairo_surface_t> image;
};

Raster::Raster(const DrawingRecord& drawing, const RasterOptions& options)
    : surface_(std::make_unique<Surface>(pixels(options.area.width, options.scale),
                                         pixels(options.area.height, options.scale))) {
  const Owned<cairo_t> context{cairo_create(surface_->image.get())};
  use(context.get(), options.background);
  cairo_paint(context.get());
  cairo_scale(context.get(), options.scale, options.scale);
  cairo_translate(context.get(), -static_cast<double>(options.area.left),
                  -static_cast<double>(options.area.top));
  cairo_set_antialias(context.get(),
                      options.smoothLines ? CAIRO_ANTIALIAS_GOOD : CAIRO_ANTIALIAS_NONE);
  cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(context.get(), CAIRO_LINE_CAP_BUTT);
  // Grey, not coloured, edges of letters: the same on every screen.
  const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> fonts{
      cairo_font_options_create(), cairo_font_options_destroy};
  cairo_font_options_set_antialias(fonts.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(fonts.get(), CAIRO_HINT_STYLE_SLIGHT);
  cairo_set_font_options(context.get(), fonts.get());
  for (const DrawnPrimitive& primitive : drawing.primitives) paint(context.get(), primitive);
  require(cairo_status(context.get()));
  cairo_surface_flush(surface_->image.get());
}

Raster::~Raster() = default;
Raster::Raster(Raster&&) noexcept = default;
Raster& Raster::operator=(Raster&&) noexcept = default;

int Raster::width() const noexcept {
  return cairo_image_surface_get_width(surface_->image.get());
}
int Raster::height() const noexcept {
  return cairo_image_surface_get_height(surface_->image.get());
}

std::array<std::uint8_t, 3> Raster::pixel(int x, int y) const noexcept {
  const unsigned char* data = cairo_image_surface_get_data(surface_->image.get());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_->image.get());
  // The format keeps 0x00RRGGBB in words of the machine's own byte order.
  const auto* row = reinterpret_cast<const std::uint32_t*>(data + y * stride);
  const std::uint32_t word = row[x];
  return {static_cast<std::uint8_t>(word >> 16), static_cast<std::uint8_t>(word >> 8),
          static_cast<std::uint8_t>(word)};
}

void Raster::savePng(const std::filesystem::path& path) const {
  require(cairo_surface_write_to_png(surface_->image.get(), path.c_str()));
}

}  // namespace host
