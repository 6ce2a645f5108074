// resources/make_banner.cpp — draws the notice's lettering and writes its run lengths.
//
// Built on demand only, since its result is kept beside it:
//   cmake --build <build folder> --target make_banner
//   <build folder>/make_banner > resources/banner_runs.inc
// Needs Pango, Cairo and the font DejaVu Sans Bold. To look at the result as viewers see it, give
// it a frame width: `make_banner --preview 1920 notice.png`.
#include <cairo.h>
#include <pango/pangocairo.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "resources/banner_mask.h"

namespace {

constexpr const char* kText = "Varilum4: please press Analyze first";
constexpr const char* kFont = "DejaVu Sans Bold";
constexpr int kSideMargin = 50;

struct Free {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using Surface = std::unique_ptr<cairo_surface_t, Free>;
using Context = std::unique_ptr<cairo_t, Free>;

// One byte a pixel, 1 = ink.
std::vector<std::uint8_t> drawLettering() {
  const int width = varilum::kBannerWidth;
  const int height = varilum::kBannerHeight;
  const Surface surface{cairo_image_surface_create(CAIRO_FORMAT_A8, width, height)};
  const Context context{cairo_create(surface.get())};
  const std::unique_ptr<PangoLayout, Free> layout{pango_cairo_create_layout(context.get())};
  const std::unique_ptr<PangoFontDescription, Free> font{pango_font_description_from_string(kFont)};
  pango_layout_set_text(layout.get(), kText, -1);

  // The largest size whose ink fits between the margins.
  PangoRectangle ink{};
  for (int size = height; size > 1; --size) {
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font.get());
    pango_layout_get_pixel_extents(layout.get(), &ink, nullptr);
    if (ink.width <= width - 2 * kSideMargin && ink.height <= height) break;
  }
  cairo_move_to(context.get(), (width - ink.width) / 2.0 - ink.x,
                (height - ink.height) / 2.0 - ink.y);
  pango_cairo_show_layout(context.get(), layout.get());
  cairo_surface_flush(surface.get());

  std::vector<std::uint8_t> pixels;
  const unsigned char* data = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) pixels.push_back(data[y * stride + x] >= 128 ? 1 : 0);
  }
  return pixels;
}

void writeRuns(const std::vector<std::uint8_t>& pixels) {
  std::printf(
      "// Written by resources/make_banner.cpp: lengths of background and ink runs in turn.\n");
  std::uint8_t colour = 0;
  long run = 0;
  int column = 0;
  const auto flush = [&] {
    column += std::printf("%ld,", run);
    if (column > 92) {
      std::printf("\n");
      column = 0;
    }
  };
  for (const std::uint8_t pixel : pixels) {
    if (pixel != colour) {
      flush();
      colour = pixel;
      run = 0;
    }
    ++run;
  }
  flush();
  if (column != 0) std::printf("\n");
}

// The band over mid-grey, sized for a frame of this width, with the effect's own scaling.
void writePreview(const std::vector<std::uint8_t>& pixels, int frameWidth, const char* path) {
  const int bandHeight = frameWidth / 8;
  const Surface surface{cairo_image_surface_create(CAIRO_FORMAT_RGB24, frameWidth, bandHeight)};
  unsigned char* data = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < bandHeight; ++y) {
    for (int x = 0; x < frameWidth; ++x) {
      const int row = varilum::kBannerHeight * y / bandHeight;
      const int column = varilum::kBannerWidth * x / frameWidth;
      const auto at = static_cast<std::size_t>(row * varilum::kBannerWidth + column);
      const std::uint32_t grey = 128 / 2;
      const std::uint32_t colour =
          pixels[at] != 0 ? 0xFFFFFFu : ((grey + 15) << 16) | ((grey + 57) << 8) | (grey + 115);
      std::memcpy(data + y * stride + x * 4, &colour, 4);
    }
  }
  cairo_surface_mark_dirty(surface.get());
  if (cairo_surface_write_to_png(surface.get(), path) != CAIRO_STATUS_SUCCESS) {
    std::fprintf(stderr, "make_banner: cannot write %s\n", path);
    std::exit(1);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::uint8_t> pixels = drawLettering();
  if (argc == 4 && std::strcmp(argv[1], "--preview") == 0) {
    const int frameWidth = std::atoi(argv[2]);
    if (frameWidth < 8) {
      std::fprintf(stderr, "make_banner: the frame width must be at least 8\n");
      return 2;
    }
    writePreview(pixels, frameWidth, argv[3]);
    return 0;
  }
  if (argc != 1) {
    std::fprintf(stderr, "usage: make_banner [--preview FRAME_WIDTH FILE.png]\n");
    return 2;
  }
  writeRuns(pixels);
  return 0;
}
