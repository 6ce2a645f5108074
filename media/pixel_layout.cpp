// media/pixel_layout.cpp — where a pixel format keeps its components.
#include "media/pixel_layout.h"

#include <algorithm>
#include <string>

#include "media/error.h"

extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace media {
namespace {

constexpr std::uint64_t kOpaqueFlags = AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_BITSTREAM |
                                       AV_PIX_FMT_FLAG_HWACCEL | AV_PIX_FMT_FLAG_BAYER;

std::string nameOf(AVPixelFormat format) {
  const char* name = av_get_pix_fmt_name(format);
  return name == nullptr ? "unknown" : name;
}

ComponentLayout componentLayout(const AVPixFmtDescriptor& description, int index) {
  const AVComponentDescriptor& component = description.comp[index];
  ComponentLayout layout;
  layout.plane = component.plane;
  layout.step = component.step;
  layout.offset = component.offset;
  layout.shift = component.shift;
  layout.depth = component.depth;
  const bool bigEndian = (description.flags & AV_PIX_FMT_FLAG_BE) != 0;
  if (component.depth == 32) {
    layout.bytes = 4;
  } else if (component.depth + component.shift > 8) {
    layout.bytes = 2;
  } else {
    layout.bytes = 1;
    if (bigEndian) layout.offset += 1;  // the low byte of a 16-bit word
  }
  layout.swapped = bigEndian && layout.bytes > 1;
  return layout;
}

bool overlap(const ComponentLayout& a, const ComponentLayout& b) noexcept {
  return a.plane == b.plane && a.offset < b.offset + b.bytes && b.offset < a.offset + a.bytes;
}

}  // namespace

bool hasPixelLayout(AVPixelFormat format) noexcept {
  const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
  if (description == nullptr || (description->flags & kOpaqueFlags) != 0) return false;
  if (description->nb_components == 0) return false;
  const std::string_view name(description->name);
  if (name.starts_with("xyz") || name == "uyyvyy411") return false;
  const bool isFloat = (description->flags & AV_PIX_FMT_FLAG_FLOAT) != 0;
  for (int i = 0; i < description->nb_components; ++i) {
    const int depth = description->comp[i].depth;
    if (isFloat ? depth != 32 : depth > 16) return false;
  }
  return true;
}

PixelLayout pixelLayout(AVPixelFormat format) {
  if (!hasPixelLayout(format)) {
    throw Error(Problem::unsupported, "The pixel format " + nameOf(format) +
                                          " cannot be worked on; convert the clip first.");
  }
  const AVPixFmtDescriptor& description = *av_pix_fmt_desc_get(format);
  PixelLayout layout;
  layout.hasAlpha = (description.flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
  layout.isFloat = (description.flags & AV_PIX_FMT_FLAG_FLOAT) != 0;
  const int colours = description.nb_components - (layout.hasAlpha ? 1 : 0);
  layout.colours = colours >= 3 ? 3 : 1;
  layout.family = layout.colours == 1                              ? PixelLayout::Family::grey
                  : (description.flags & AV_PIX_FMT_FLAG_RGB) != 0 ? PixelLayout::Family::rgb
                                                                   : PixelLayout::Family::yuv;
  if (layout.family == PixelLayout::Family::yuv) {
    layout.chromaWidthShift = description.log2_chroma_w;
    layout.chromaHeightShift = description.log2_chroma_h;
  }
  for (int i = 0; i < layout.colours; ++i) {
    layout.components[static_cast<std::size_t>(i)] = componentLayout(description, i);
  }
  if (layout.hasAlpha) layout.components[3] = componentLayout(description, colours);
  layout.depth = 0;
  for (int i = 0; i < 4; ++i) {
    const bool used = i == 3 ? layout.hasAlpha : i < layout.colours;
    if (!used) continue;
    ComponentLayout& a = layout.components[static_cast<std::size_t>(i)];
    layout.depth = std::max(layout.depth, a.depth);
    for (int j = 0; j < 4; ++j) {
      const bool other = j != i && (j == 3 ? layout.hasAlpha : j < layout.colours);
      if (other && overlap(a, layout.components[static_cast<std::size_t>(j)])) a.shared = true;
    }
  }
  return layout;
}

AVPixelFormat formatWithLayout(AVPixelFormat format) {
  if (hasPixelLayout(format)) return format;
  const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
  if (description == nullptr || sws_isSupportedInput(format) == 0) {
    throw Error(Problem::unsupported, "The pixel format " + nameOf(format) +
                                          " cannot be worked on; convert the clip first.");
  }
  const bool deep = description->comp[0].depth > 8;
  const bool alpha = (description->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
  if (format == AV_PIX_FMT_UYYVYY411) return AV_PIX_FMT_YUV411P;
  if (format == AV_PIX_FMT_MONOWHITE || format == AV_PIX_FMT_MONOBLACK) return AV_PIX_FMT_GRAY8;
  if (alpha) return deep ? AV_PIX_FMT_RGBA64 : AV_PIX_FMT_RGBA;
  return deep ? AV_PIX_FMT_RGB48 : AV_PIX_FMT_RGB24;
}

}  // namespace media
