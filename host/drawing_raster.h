// host/drawing_raster.h — drawings as pictures, with real fonts.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "host/drawing_record.h"

namespace host {

struct RasterOptions {
  DrawnRect area;            // the part to paint, logical pixels; the drawing is cut off there
  DrawnColour background;    // where nothing is drawn
  double scale = 1.0;        // picture pixels a logical pixel, above 0
  bool smoothLines = false;  // anti-aliased strokes and fills; hosts leave them hard-edged
};

// Strokes lie centred on their paths, texts stand on their baselines. Throws std::runtime_error
// when the picture is too large, or memory runs out.
class Raster {
 public:
  Raster(const DrawingRecord& drawing, const RasterOptions& options);
  ~Raster();
  Raster(Raster&&) noexcept;
  Raster& operator=(Raster&&) noexcept;

  int width() const noexcept;
  int height() const noexcept;
  // Red, green, blue of a pixel.
  std::array<std::uint8_t, 3> pixel(int x, int y) const noexcept;

  // Throws std::runtime_error with a sentence for the user.
  void savePng(const std::filesystem::path& path) const;

 private:
  class Surface;
  std::unique_ptr<Surface> surface_;
};

}  // namespace host
