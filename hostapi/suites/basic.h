// hostapi/suites/basic.h — acquiring and releasing all other suites.
#pragma once

#include <cstdint>

// Reached through in_data; acquires all other suites and counts their references.
struct SPBasicSuite {
  // suite name; version; out table address
  std::int32_t (*AcquireSuite)(const char*, std::int32_t, const void**);
  // suite name; version
  std::int32_t (*ReleaseSuite)(const char*, std::int32_t);
  // text; text; gives non-zero when equal
  std::int32_t (*IsEqual)(const char*, const char*);
  // byte count; out address
  std::int32_t (*AllocateBlock)(std::uint64_t, void**);
  // address
  std::int32_t (*FreeBlock)(void*);
  // address; new byte count; out address
  std::int32_t (*ReallocateBlock)(void*, std::uint64_t, void**);
  // none
  std::int32_t (*Undefined)();
};

inline constexpr const char* kSPBasicSuite = "SP Basic Suite";

inline constexpr std::int32_t kSPBasicSuiteVersion = 4;

// Results of the basic suite and of the drawing suites.
inline constexpr std::int32_t kSPNoError = 0;
inline constexpr std::int32_t kSPUnimplementedError = 0x21494D50;
inline constexpr std::int32_t kSPOutOfMemoryError = static_cast<std::int32_t>(0xFFFFFF6Cu);
inline constexpr std::int32_t kSPSuiteNotFoundError = 0x53214664;
inline constexpr std::int32_t kSPBadParameterError = 0x5061726D;
inline constexpr std::int32_t kSPSuiteAlreadyReleasedError = 0x5352656C;
