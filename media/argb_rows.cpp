// media/argb_rows.cpp — rows of ARGB pixels to and from three rows of code values.
#include "media/argb_rows.h"

#include <cstdint>
#include <cstring>

namespace media {
namespace {

struct Levels {
  float red;
  float green;
  float blue;
};

template <bool kDiagonal>
Levels apply(const AffineMap& map, float a, float b, float c) noexcept {
  const auto& m = map.matrix;
  if constexpr (kDiagonal) {
    return {m[0][0] * a, m[1][1] * b, m[2][2] * c};
  } else {
    return {m[0][0] * a + m[0][1] * b + m[0][2] * c + map.offset[0],
            m[1][0] * a + m[1][1] * b + m[1][2] * c + map.offset[1],
            m[2][0] * a + m[2][1] * b + m[2][2] * c + map.offset[2]};
  }
}

// Comparisons are written so that a NaN becomes 0.
template <Depth kDepth>
std::uint32_t rounded(float level) noexcept {
  constexpr float kWhite = whiteLevel(kDepth);
  level += 0.5F;
  level = level > 0.0F ? level : 0.0F;
  level = level < kWhite ? level : kWhite;
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(level));
}

template <Depth kDepth>
struct Pixel;

template <>
struct Pixel<Depth::eight> {
  static void store(std::uint8_t* row, std::ptrdiff_t i, float alpha, const Levels& c) noexcept {
    const std::uint32_t word = rounded<Depth::eight>(alpha) | rounded<Depth::eight>(c.red) << 8 |
                               rounded<Depth::eight>(c.green) << 16 |
                               rounded<Depth::eight>(c.blue) << 24;
    std::memcpy(row + 4 * i, &word, 4);
  }
  static Levels load(const std::uint8_t* row, std::ptrdiff_t i, float& alpha) noexcept {
    std::uint32_t word;
    std::memcpy(&word, row + 4 * i, 4);
    const auto level = [word](int shift) {
      return static_cast<float>(static_cast<std::int32_t>((word >> shift) & 0xFFU));
    };
    alpha = level(0);
    return {level(8), level(16), level(24)};
  }
};

template <>
struct Pixel<Depth::sixteen> {
  static void store(std::uint8_t* row, std::ptrdiff_t i, float alpha, const Levels& c) noexcept {
    const std::uint32_t low = rounded<Depth::sixteen>(alpha) | rounded<Depth::sixteen>(c.red) << 16;
    const std::uint32_t high = rounded<Depth::sixteen>(c.green) | rounded<Depth::sixteen>(c.blue)
                                                                      << 16;
    std::memcpy(row + 8 * i, &low, 4);
    std::memcpy(row + 8 * i + 4, &high, 4);
  }
  static Levels load(const std::uint8_t* row, std::ptrdiff_t i, float& alpha) noexcept {
    std::uint32_t low;
    std::uint32_t high;
    std::memcpy(&low, row + 8 * i, 4);
    std::memcpy(&high, row + 8 * i + 4, 4);
    const auto level = [](std::uint32_t word) {
      return static_cast<float>(static_cast<std::int32_t>(word & 0xFFFFU));
    };
    alpha = level(low);
    return {level(low >> 16), level(high), level(high >> 16)};
  }
};

template <>
struct Pixel<Depth::floating> {
  static void store(std::uint8_t* row, std::ptrdiff_t i, float alpha, const Levels& c) noexcept {
    const float words[4] = {alpha, c.red, c.green, c.blue};
    std::memcpy(row + 16 * i, words, 16);
  }
  static Levels load(const std::uint8_t* row, std::ptrdiff_t i, float& alpha) noexcept {
    float words[4];
    std::memcpy(words, row + 16 * i, 16);
    alpha = words[0];
    return {words[1], words[2], words[3]};
  }
};

template <Depth kDepth, bool kDiagonal, bool kAlpha>
void pack(const CodeRows& codes, const ColourTransform& transform, int width, void* out) {
  const AffineMap map = transform.toLevels;
  const float* __restrict__ first = codes.first;
  const float* __restrict__ second = codes.second;
  const float* __restrict__ third = codes.third;
  const float* __restrict__ alpha = codes.alpha;
  const float alphaScale = transform.alphaToLevels;
  auto* __restrict__ row = static_cast<std::uint8_t*>(out);
  for (std::ptrdiff_t i = 0; i < width; ++i) {
    const Levels levels = apply<kDiagonal>(map, first[i], second[i], third[i]);
    const float a = kAlpha ? alpha[i] * alphaScale : whiteLevel(kDepth);
    Pixel<kDepth>::store(row, i, a, levels);
  }
}

template <Depth kDepth, bool kDiagonal, bool kAlpha>
void unpack(const void* in, const ColourTransform& transform, int width,
            const MutableCodeRows& codes) {
  const AffineMap map = transform.toCodes;
  float* __restrict__ first = codes.first;
  float* __restrict__ second = codes.second;
  float* __restrict__ third = codes.third;
  float* __restrict__ alpha = codes.alpha;
  const float alphaScale = transform.alphaToCodes;
  const auto* __restrict__ row = static_cast<const std::uint8_t*>(in);
  for (std::ptrdiff_t i = 0; i < width; ++i) {
    float a = 0;
    const Levels levels = Pixel<kDepth>::load(row, i, a);
    const Levels code = apply<kDiagonal>(map, levels.red, levels.green, levels.blue);
    first[i] = code.red;
    second[i] = code.green;
    third[i] = code.blue;
    if constexpr (kAlpha) alpha[i] = a * alphaScale;
  }
}

// Calls `body` with the depth, and whether the map is diagonal and alpha is there, as constants.
template <typename Body>
void withShape(Depth depth, bool diagonal, bool alpha, Body&& body) {
  const auto withDepth = [&](auto diagonalConstant, auto alphaConstant) {
    switch (depth) {
      case Depth::eight:
        return body(std::integral_constant<Depth, Depth::eight>{}, diagonalConstant, alphaConstant);
      case Depth::sixteen:
        return body(std::integral_constant<Depth, Depth::sixteen>{}, diagonalConstant,
                    alphaConstant);
      case Depth::floating:
        return body(std::integral_constant<Depth, Depth::floating>{}, diagonalConstant,
                    alphaConstant);
    }
  };
  if (diagonal) {
    alpha ? withDepth(std::true_type{}, std::true_type{})
          : withDepth(std::true_type{}, std::false_type{});
  } else {
    alpha ? withDepth(std::false_type{}, std::true_type{})
          : withDepth(std::false_type{}, std::false_type{});
  }
}

}  // namespace

void packArgbRow(const CodeRows& codes, const ColourTransform& transform, Depth depth, int width,
                 void* out) {
  withShape(depth, transform.toLevels.diagonal, codes.alpha != nullptr,
            [&](auto d, auto diagonal, auto alpha) {
              pack<d.value, diagonal.value, alpha.value>(codes, transform, width, out);
            });
}

void unpackArgbRow(const void* in, const ColourTransform& transform, Depth depth, int width,
                   const MutableCodeRows& codes) {
  withShape(depth, transform.toCodes.diagonal, codes.alpha != nullptr,
            [&](auto d, auto diagonal, auto alpha) {
              unpack<d.value, diagonal.value, alpha.value>(in, transform, width, codes);
            });
}

}  // namespace media
