// cli/panel_picture.h — the effect's panel as a PNG file.
#pragma once

#include <filesystem>

#include "host/drawing_record.h"
#include "host/panel.h"

namespace cli {

/// What the effect's texts on the right need beside its graphs, in logical pixels.
inline constexpr int kPictureWidth = 560;

/// Paints the panel's control, its background around it, at `scale` pixels a logical pixel.
/// Throws Failure when the file cannot be written, or is there already without `force`.
void savePanel(const host::Panel& panel, const std::filesystem::path& path, double scale,
               bool force);

}  // namespace cli
