// media/plain/plain_format.cpp — the pixel formats that the plain formats of footage have.
#include "media/plain/plain_format.h"

#include <cstddef>

namespace media {
namespace {

using Family = PixelLayout::Family;

constexpr PlainFormat kFormats[] = {
    {"gray", "mono", Family::grey, 8},
    {"gray9le", "mono9", Family::grey, 9},
    {"gray10le", "mono10", Family::grey, 10},
    {"gray12le", "mono12", Family::grey, 12},
    {"gray16le", "mono16", Family::grey, 16},
    {"yuv420p", "420jpeg", Family::yuv, 8, 1, 1},
    {"yuv420p9le", "420p9", Family::yuv, 9, 1, 1},
    {"yuv420p10le", "420p10", Family::yuv, 10, 1, 1},
    {"yuv420p12le", "420p12", Family::yuv, 12, 1, 1},
    {"yuv420p14le", "420p14", Family::yuv, 14, 1, 1},
    {"yuv420p16le", "420p16", Family::yuv, 16, 1, 1},
    {"yuv411p", "411", Family::yuv, 8, 2, 0},
    {"yuv422p", "422", Family::yuv, 8, 1, 0},
    {"yuv422p9le", "422p9", Family::yuv, 9, 1, 0},
    {"yuv422p10le", "422p10", Family::yuv, 10, 1, 0},
    {"yuv422p12le", "422p12", Family::yuv, 12, 1, 0},
    {"yuv422p14le", "422p14", Family::yuv, 14, 1, 0},
    {"yuv422p16le", "422p16", Family::yuv, 16, 1, 0},
    {"yuv444p", "444", Family::yuv, 8},
    {"yuv444p9le", "444p9", Family::yuv, 9},
    {"yuv444p10le", "444p10", Family::yuv, 10},
    {"yuv444p12le", "444p12", Family::yuv, 12},
    {"yuv444p14le", "444p14", Family::yuv, 14},
    {"yuv444p16le", "444p16", Family::yuv, 16},
    {"yuva444p", "444alpha", Family::yuv, 8, 0, 0, true},
    {"rgb24", nullptr, Family::rgb, 8, 0, 0, false, true},
    {"rgb48be", nullptr, Family::rgb, 16, 0, 0, false, true, true},
    {"gray16be", nullptr, Family::grey, 16, 0, 0, false, false, true},
};

bool isChroma(const PlainFormat& format, int component) noexcept {
  return format.family == Family::yuv && (component == 1 || component == 2);
}

}  // namespace

std::size_t PlainFormat::rowBytes(int plane, int width) const noexcept {
  const int across = isChroma(*this, plane) ? ceilShift(width, chromaWidthShift) : width;
  return static_cast<std::size_t>(across) *
         static_cast<std::size_t>(componentBytes() * (packed ? components() : 1));
}

int PlainFormat::rows(int plane, int height) const noexcept {
  return isChroma(*this, plane) ? ceilShift(height, chromaHeightShift) : height;
}

std::size_t PlainFormat::frameBytes(int width, int height) const noexcept {
  std::size_t bytes = 0;
  for (int plane = 0; plane < planes(); ++plane) {
    bytes += rowBytes(plane, width) * static_cast<std::size_t>(rows(plane, height));
  }
  return bytes;
}

PixelLayout PlainFormat::layout() const noexcept {
  PixelLayout layout;
  layout.family = family;
  layout.colours = family == Family::grey ? 1 : 3;
  layout.hasAlpha = alpha;
  layout.depth = depth;
  layout.chromaWidthShift = chromaWidthShift;
  layout.chromaHeightShift = chromaHeightShift;
  for (int i = 0; i < components(); ++i) {
    ComponentLayout& c = layout.components[i < layout.colours ? static_cast<std::size_t>(i) : 3];
    c.plane = packed ? 0 : i;
    c.step = componentBytes() * (packed ? components() : 1);
    c.offset = packed ? i * componentBytes() : 0;
    c.depth = depth;
    c.bytes = componentBytes();
    c.swapped = bigEndian;
  }
  return layout;
}

const PlainFormat* plainFormatNamed(std::string_view name) noexcept {
  for (const PlainFormat& format : kFormats) {
    if (name == format.name) return &format;
  }
  return nullptr;
}

const PlainFormat* plainFormatOfTag(std::string_view tag) noexcept {
  // Where chroma is sited between the luma samples is of no account here.
  if (tag.empty() || tag == "420" || tag == "420mpeg2" || tag == "420paldv") tag = "420jpeg";
  for (const PlainFormat& format : kFormats) {
    if (format.y4mTag != nullptr && tag == format.y4mTag) return &format;
  }
  return nullptr;
}

}  // namespace media
