// cli/panel_picture.cpp — the effect's panel as a PNG file.
#include "cli/panel_picture.h"

#include <fmt/format.h>

#include "cli/error.h"
#include "cli/output_file.h"
#include "host/drawing_raster.h"

namespace cli {
namespace {

constexpr float kMargin = 6.0F;      // around the control, so that texts do not touch the edge
constexpr double kSmoothFrom = 1.5;  // scales; below, lines of one pixel are crisper hard-edged

host::RasterOptions rasterOf(const host::Panel& panel, double scale) {
  const host::PanelRect control = panel.control();
  const auto& background = panel.options().background;
  const auto channel = [&](int i) { return static_cast<float>(background[i]) / 65535.0F; };
  host::RasterOptions options;
  options.area = {static_cast<float>(control.left) - kMargin,
                  static_cast<float>(control.top) - kMargin,
                  static_cast<float>(control.right - control.left) + 2 * kMargin,
                  static_cast<float>(control.bottom - control.top) + 2 * kMargin};
  options.background = {channel(0), channel(1), channel(2), 1.0F};
  options.scale = scale;
  options.smoothLines = scale >= kSmoothFrom;
  return options;
}

}  // namespace

void savePanel(const host::Panel& panel, const std::filesystem::path& path, double scale,
               bool force) {
  OutputFile file(path, force);
  try {
    const host::Raster raster(panel.shown(), rasterOf(panel, scale));
    raster.savePng(file.temporary());
  } catch (const std::runtime_error& error) {
    throw Failure(fmt::format("{} cannot be written: {}", path.string(), error.what()));
  }
  file.commit();
}

}  // namespace cli
