// cli/plot/plot_canvas.cpp — a picture to draw on: lines, areas and text, saved as PNG.
#include "cli/plot/plot_canvas.h"

#include <fmt/format.h>
#include <pango/pangocairo.h>

#include <cerrno>
#include <numbers>
#include <stdexcept>
#include <system_error>

#include "cli/output_file.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

struct ReleaseGObject {
  void operator()(PangoLayout* layout) const noexcept { g_object_unref(layout); }
};
using Layout = std::unique_ptr<PangoLayout, ReleaseGObject>;

struct ReleaseFont {
  void operator()(PangoFontDescription* font) const noexcept { pango_font_description_free(font); }
};

Layout makeLayout(cairo_t* context, const std::string& text, const TextStyle& style) {
  Layout layout{pango_cairo_create_layout(context)};
  std::unique_ptr<PangoFontDescription, ReleaseFont> font{pango_font_description_new()};
  pango_font_description_set_family(font.get(), "sans-serif");
  pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
  if (style.bold) pango_font_description_set_weight(font.get(), PANGO_WEIGHT_BOLD);
  pango_layout_set_font_description(layout.get(), font.get());
  if (style.maxWidth > 0.0) {
    pango_layout_set_width(layout.get(), static_cast<int>(style.maxWidth * PANGO_SCALE));
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_MIDDLE);
  }
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  return layout;
}

}  // namespace

PlotCanvas::PlotCanvas(int width, int height, Colour background)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)),
      context_(cairo_create(surface_.get())) {
  if (cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error(
        fmt::format("Not enough memory to draw a plot of {} x {} pixels.", width, height));
  }
  use(background);
  cairo_paint(context_.get());
  cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
}

void PlotCanvas::use(Colour colour) {
  const auto part = [&](int shift) { return ((colour.rgb >> shift) & 0xFFU) / 255.0; };
  cairo_set_source_rgba(context_.get(), part(16), part(8), part(0), colour.alpha);
}

void PlotCanvas::fill(const Box& box, Colour colour) {
  use(colour);
  cairo_rectangle(context_.get(), box.left, box.top, box.width(), box.height());
  cairo_fill(context_.get());
}

void PlotCanvas::line(Pixel from, Pixel to, Colour colour, double width, double dash) {
  use(colour);
  cairo_set_line_width(context_.get(), width);
  cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_BUTT);
  if (dash > 0.0) cairo_set_dash(context_.get(), &dash, 1, 0.0);
  cairo_move_to(context_.get(), from.x, from.y);
  cairo_line_to(context_.get(), to.x, to.y);
  cairo_stroke(context_.get());
  cairo_set_dash(context_.get(), nullptr, 0, 0.0);
}

void PlotCanvas::polyline(std::span<const Pixel> points, Colour colour, double width) {
  if (points.empty()) return;
  use(colour);
  if (points.size() == 1) {
    cairo_arc(context_.get(), points[0].x, points[0].y, width * 1.5, 0.0, 2.0 * std::numbers::pi);
    cairo_fill(context_.get());
    return;
  }
  cairo_set_line_width(context_.get(), width);
  cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_ROUND);
  for (const Pixel& p : points) cairo_line_to(context_.get(), p.x, p.y);
  cairo_stroke(context_.get());
}

void PlotCanvas::area(std::span<const Pixel> points, double base, Colour colour) {
  if (points.size() < 2) return;
  use(colour);
  cairo_move_to(context_.get(), points.front().x, base);
  for (const Pixel& p : points) cairo_line_to(context_.get(), p.x, p.y);
  cairo_line_to(context_.get(), points.back().x, base);
  cairo_fill(context_.get());
}

double PlotCanvas::textWidth(const std::string& text, const TextStyle& style) {
  const Layout layout = makeLayout(context_.get(), text, style);
  int width = 0;
  pango_layout_get_pixel_size(layout.get(), &width, nullptr);
  return width;
}

double PlotCanvas::text(Pixel anchor, const std::string& text, const TextStyle& style) {
  const Layout layout = makeLayout(context_.get(), text, style);
  int width = 0;
  int height = 0;
  pango_layout_get_pixel_size(layout.get(), &width, &height);
  const double share = style.align == Align::left ? 0.0 : style.align == Align::centre ? 0.5 : 1.0;
  use(style.colour);
  cairo_save(context_.get());
  cairo_translate(context_.get(), anchor.x, anchor.y);
  cairo_rotate(context_.get(), style.turn * std::numbers::pi / 180.0);
  cairo_move_to(context_.get(), -share * width, -height / 2.0);
  pango_cairo_show_layout(context_.get(), layout.get());
  cairo_new_path(context_.get());  // showing text leaves a current point behind
  cairo_restore(context_.get());
  return width;
}

void PlotCanvas::clip(const Box& box) {
  cairo_reset_clip(context_.get());
  cairo_rectangle(context_.get(), box.left, box.top, box.width(), box.height());
  cairo_clip(context_.get());
}

void PlotCanvas::unclip() {
  cairo_reset_clip(context_.get());
}

void PlotCanvas::save(const fs::path& path) {
  const auto complain = [&](const std::string& why) {
    throw std::runtime_error(
        fmt::format("Cannot write the plot \"{}\": {}. Choose another place or free some room.",
                    path.string(), why));
  };
  OutputFile file(path, true);
  errno = 0;
  const cairo_status_t status =
      cairo_surface_write_to_png(surface_.get(), file.temporary().c_str());
  if (status != CAIRO_STATUS_SUCCESS) {
    const bool fromSystem = status == CAIRO_STATUS_WRITE_ERROR && errno != 0;
    complain(fromSystem ? std::generic_category().message(errno) : cairo_status_to_string(status));
  }
  file.commit();
}

}  // namespace cli
