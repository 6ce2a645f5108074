// cli/plot/plot_canvas.h — a picture to draw on: lines, areas and text, saved as PNG.
#pragma once

#include <cairo/cairo.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace cli {

struct Colour {
  std::uint32_t rgb = 0;  // 0xRRGGBB
  double alpha = 1.0;
};

struct Pixel {
  double x = 0.0;
  double y = 0.0;
};

struct Box {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;

  double width() const noexcept { return right - left; }
  double height() const noexcept { return bottom - top; }
};

enum class Align { left, centre, right };

struct TextStyle {
  double size = 18.0;  // pixels
  Colour colour{};
  Align align = Align::left;
  bool bold = false;
  double turn = 0.0;      // degrees, clockwise, about the anchor
  double maxWidth = 0.0;  // longer text ends in dots; 0: as long as it is
};

/// Units are pixels from the top left. Throws std::runtime_error when memory runs out.
class PlotCanvas {
 public:
  PlotCanvas(int width, int height, Colour background);

  void fill(const Box& box, Colour colour);
  void line(Pixel from, Pixel to, Colour colour, double width, double dash = 0.0);
  /// A single point becomes a dot.
  void polyline(std::span<const Pixel> points, Colour colour, double width);
  /// The area between the polyline and the height `base`.
  void area(std::span<const Pixel> points, double base, Colour colour);

  /// The anchor is at the text's vertical middle. Returns the text's width.
  double text(Pixel anchor, const std::string& text, const TextStyle& style);
  double textWidth(const std::string& text, const TextStyle& style);

  /// Until the next clip() or unclip(), nothing outside `box` is touched.
  void clip(const Box& box);
  void unclip();

  /// Replaces `path` when the picture is whole. Throws std::runtime_error with a sentence for the
  /// user; then nothing is left behind.
  void save(const std::filesystem::path& path);

 private:
  struct Release {
    void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
  };
  void use(Colour colour);

  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> context_;
};

}  // namespace cli
