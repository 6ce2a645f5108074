// media/yuv_kernels.h — a row of planar YUV to ARGB and back in one go, on wide vectors.
#pragma once

#include <cstdint>

namespace media {

/// out[i] = sum over j of matrix[i][j] * in[j] + offset[i], added up from left to right.
struct YuvMap {
  float matrix[3][3];
  float offset[3];
};

/// Code values of one row; chroma at half the width where the kernel says so.
struct YuvRow {
  const std::uint8_t* luma;
  const std::uint8_t* cb;
  const std::uint8_t* cr;
  std::int32_t maximum;  ///< 2^bits - 1; bits above are not looked at
};

/// Where code values go. `lower` is used by kernels for two rows of luma.
struct MutableYuvRow {
  std::uint8_t* luma;
  std::uint8_t* lower;
  std::uint8_t* cb;
  std::uint8_t* cr;
  std::int32_t maximum;
};

/// Writes `width` opaque ARGB pixels. The map's first column is one value, and red has no Cb and
/// blue no Cr, as all matrices of luma weights have it.
using YuvToArgb = void (*)(const YuvRow& row, const YuvMap& toLevels, int width, void* argb);

/// From one row of ARGB pixels or two (else `lower` is not looked at); chroma is the mean over the
/// pixels that share it.
using YuvFromArgb = void (*)(const void* upper, const void* lower, const YuvMap& toCodes, int width,
                             const MutableYuvRow& row);

/// Every kernel gives bit for bit what the plain way through component_rows.h and argb_rows.h does.
/// "Narrow": bytes, to and from 8-bit ARGB. "Wide": 16-bit little-endian words, to and from 16-bit
/// ARGB. Rows may lie at any address of their components' alignment; nothing is read or written
/// beyond them.
struct YuvKernels {
  const char* name;
  YuvToArgb toArgb[2][2];      ///< [wide][log2 of columns per chroma column]
  YuvFromArgb fromArgb[2][2];  ///< the same, for chroma of one row
  YuvFromArgb fromTwoRows[2];  ///< [wide], chroma of two columns and two rows (4:2:0)
};

/// The kernels for this processor, chosen once; null where the plain way is the best there is.
const YuvKernels* yuvKernels() noexcept;

#if defined(__x86_64__)
/// For processors with AVX2.
extern const YuvKernels kYuvKernelsAvx2;
#endif

}  // namespace media
