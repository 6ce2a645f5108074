// media/stored_level.cpp — how bright a picture is by the numbers that its file keeps.
#include "media/stored_level.h"

#include <cstddef>
#include <numeric>
#include <vector>

#include "media/component_rows.h"
#include "media/frame_pixels.h"

namespace media {

double storedLevel(const Picture& picture) {
  const FramePixels pixels = pixelsOf(picture);
  const ComponentLayout& component = pixels.layout.components[0];
  std::vector<float> row(static_cast<std::size_t>(pixels.width));
  double sum = 0;
  for (int y = 0; y < pixels.height; ++y) {
    loadRow(pixels.row(component.plane, y), component, pixels.width, row.data());
    sum += std::accumulate(row.begin(), row.end(), 0.0);
  }
  const double white = component.depth == 32 ? 1.0 : static_cast<double>(component.maximum());
  return sum * 255.0 / white / (static_cast<double>(pixels.width) * pixels.height);
}

}  // namespace media
