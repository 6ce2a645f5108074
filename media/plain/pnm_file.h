// media/plain/pnm_file.h — one binary portable pixmap or greymap.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "media/plain/plain_frame.h"

namespace media {

/// Reads a P5 or P6 file of 8 or 16 bits. Throws Error: missing, notVideo, unsupported (another
/// white than 255 or 65535), damaged (cut off).
std::shared_ptr<PlainFrame> readPnm(const std::filesystem::path& path);

/// The file of a frame in gray, gray16be, rgb24 or rgb48be.
std::vector<std::uint8_t> pnmBytes(const PlainFrame& frame);

}  // namespace media
