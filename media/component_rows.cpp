// media/component_rows.cpp — rows of one component between a picture's memory and plain floats.
#include "media/component_rows.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <type_traits>

namespace media {
namespace {

static_assert(std::endian::native == std::endian::little);

template <typename Word>
Word readWord(const std::uint8_t* at) noexcept {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

template <bool kSwapped, typename Word>
Word inOrder(Word word) noexcept {
  if constexpr (!kSwapped || sizeof(Word) == 1) {
    return word;
  } else if constexpr (sizeof(Word) == 2) {
    return static_cast<Word>((word << 8) | (word >> 8));
  } else {
    return __builtin_bswap32(word);
  }
}

// Calls `body` with the step as a compile-time constant where it is a usual one, so that the loops
// turn into vector code; 0 stands for any other.
template <typename Body>
void withStep(int step, Body&& body) {
  switch (step) {
    case 1:
      return body(std::integral_constant<int, 1>{});
    case 2:
      return body(std::integral_constant<int, 2>{});
    case 3:
      return body(std::integral_constant<int, 3>{});
    case 4:
      return body(std::integral_constant<int, 4>{});
    case 6:
      return body(std::integral_constant<int, 6>{});
    case 8:
      return body(std::integral_constant<int, 8>{});
    default:
      return body(std::integral_constant<int, 0>{});
  }
}

template <typename Word, bool kSwapped>
void loadIntegers(const std::uint8_t* first, const ComponentLayout& c, int count, float* out) {
  const int shift = c.shift;
  const auto mask = static_cast<int>(c.maximum());
  withStep(c.step, [&](auto constant) {
    const std::ptrdiff_t step = constant.value == 0 ? c.step : constant.value;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      const int word = inOrder<kSwapped>(readWord<Word>(first + i * step));
      out[i] = static_cast<float>((word >> shift) & mask);
    }
  });
}

template <bool kSwapped>
void loadFloats(const std::uint8_t* first, const ComponentLayout& c, int count, float* out) {
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    out[i] = std::bit_cast<float>(
        inOrder<kSwapped>(readWord<std::uint32_t>(first + i * std::ptrdiff_t{c.step})));
  }
}

template <typename Word, bool kSwapped, bool kShared>
void storeIntegers(const float* in, const ComponentLayout& c, int count, std::uint8_t* first) {
  const int shift = c.shift;
  const auto maximum = static_cast<float>(c.maximum());
  const auto others = static_cast<Word>(~(c.maximum() << shift));
  withStep(c.step, [&](auto constant) {
    const std::ptrdiff_t step = constant.value == 0 ? c.step : constant.value;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      float level = in[i] + 0.5F;
      level = level > 0.0F ? level : 0.0F;
      level = level < maximum ? level : maximum;
      auto word = static_cast<Word>(static_cast<int>(level) << shift);
      std::uint8_t* at = first + i * step;
      if constexpr (kShared) {
        word = static_cast<Word>(word | (inOrder<kSwapped>(readWord<Word>(at)) & others));
      }
      word = inOrder<kSwapped>(word);
      std::memcpy(at, &word, sizeof word);
    }
  });
}

template <bool kSwapped>
void storeFloats(const float* in, const ComponentLayout& c, int count, std::uint8_t* first) {
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const auto word = inOrder<kSwapped>(std::bit_cast<std::uint32_t>(in[i]));
    std::memcpy(first + i * std::ptrdiff_t{c.step}, &word, sizeof word);
  }
}

template <typename Word, bool kSwapped>
void storeIntegers(const float* in, const ComponentLayout& c, int count, std::uint8_t* first) {
  if (c.shared) {
    storeIntegers<Word, kSwapped, true>(in, c, count, first);
  } else {
    storeIntegers<Word, kSwapped, false>(in, c, count, first);
  }
}

}  // namespace

void loadRow(const std::uint8_t* row, const ComponentLayout& c, int count, float* out) {
  const std::uint8_t* first = row + c.offset;
  switch (c.bytes) {
    case 1:
      return loadIntegers<std::uint8_t, false>(first, c, count, out);
    case 2:
      return c.swapped ? loadIntegers<std::uint16_t, true>(first, c, count, out)
                       : loadIntegers<std::uint16_t, false>(first, c, count, out);
    default:
      return c.swapped ? loadFloats<true>(first, c, count, out)
                       : loadFloats<false>(first, c, count, out);
  }
}

void storeRow(const float* in, const ComponentLayout& c, int count, std::uint8_t* row) {
  std::uint8_t* first = row + c.offset;
  switch (c.bytes) {
    case 1:
      return storeIntegers<std::uint8_t, false>(in, c, count, first);
    case 2:
      return c.swapped ? storeIntegers<std::uint16_t, true>(in, c, count, first)
                       : storeIntegers<std::uint16_t, false>(in, c, count, first);
    default:
      return c.swapped ? storeFloats<true>(in, c, count, first)
                       : storeFloats<false>(in, c, count, first);
  }
}

void replicateRow(const float* in, int shift, int count, float* out) {
  if (shift == 0) {
    std::copy_n(in, count, out);
    return;
  }
  if (shift == 1) {
    for (int i = 0; i < count / 2; ++i) {
      out[2 * i] = in[i];
      out[2 * i + 1] = in[i];
    }
    if (count % 2 != 0) out[count - 1] = in[count / 2];
    return;
  }
  for (int i = 0; i < count; ++i) out[i] = in[i >> shift];
}

void averageRow(const float* in, int shift, int count, float scale, float* out) {
  if (shift == 0) {
    for (int i = 0; i < count; ++i) out[i] = in[i] * scale;
    return;
  }
  const int size = 1 << shift;
  const int whole = count / size;
  if (shift == 1) {
    const float half = 0.5F * scale;
    for (int i = 0; i < whole; ++i) out[i] = (in[2 * i] + in[2 * i + 1]) * half;
  } else {
    for (int i = 0; i < whole; ++i) {
      float sum = 0;
      for (int j = 0; j < size; ++j) sum += in[i * size + j];
      out[i] = sum * scale / static_cast<float>(size);
    }
  }
  const int rest = count - whole * size;
  if (rest > 0) {
    float sum = 0;
    for (int j = 0; j < rest; ++j) sum += in[whole * size + j];
    out[whole] = sum * scale / static_cast<float>(rest);
  }
}

}  // namespace media
