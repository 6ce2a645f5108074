// resources/string_table.h — all texts that users see, by number.
#pragma once

#include <cstdint>

namespace varilum {

// Numbers of the texts that code names.
inline constexpr std::uint32_t kTextEffectName = 1;
inline constexpr std::uint32_t kTextCopyright = 2;
inline constexpr std::uint32_t kTextAnalyzeButton = 54;
inline constexpr std::uint32_t kTextClearButton = 56;
inline constexpr std::uint32_t kTextAnalyzeRequired = 58;
inline constexpr std::uint32_t kTextFramesAnalyzed = 59;
inline constexpr std::uint32_t kTextAnalyzed = 61;
inline constexpr std::uint32_t kTextAnalyzing = 67;
inline constexpr std::uint32_t kTextNoSequenceData = 78;
inline constexpr std::uint32_t kTextUsageNotes = 80;
inline constexpr std::uint32_t kTextUnsupportedAfterEffects = 91;
inline constexpr std::uint32_t kTextUnsupportedHost = 92;
inline constexpr std::uint32_t kTextOutOfMemory = 93;

inline constexpr std::uint32_t kTextCount = 97;

// The text with this number, in static storage; empty for numbers beyond the table.
const char* lookupString(std::uint32_t id) noexcept;

}  // namespace varilum
