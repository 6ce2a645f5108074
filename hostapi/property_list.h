// hostapi/property_list.h — keys of the plug-in property list.
#pragma once

#include <cstdint>

// Every code is stored as a little-endian 32-bit value, so its letters stand reversed in the file.
inline constexpr std::uint32_t kPropertyVendor = 0x3842494D;         // '8BIM'
inline constexpr std::uint32_t kPropertyKind = 0x6B696E64;           // 'kind'
inline constexpr std::uint32_t kPropertyName = 0x6E616D65;           // 'name', Pascal text
inline constexpr std::uint32_t kPropertyCategory = 0x63617467;       // 'catg', Pascal text
inline constexpr std::uint32_t kPropertyEntry64 = 0x38363634;        // '8664', C text
inline constexpr std::uint32_t kPropertyListVersion = 0x65505652;    // 'ePVR', u16 major, u16 minor
inline constexpr std::uint32_t kPropertySpecVersion = 0x65535652;    // 'eSVR', u16 major, u16 minor
inline constexpr std::uint32_t kPropertyEffectVersion = 0x65564552;  // 'eVER', u32
inline constexpr std::uint32_t kPropertyInfoFlags = 0x65494E46;      // 'eINF', u16
inline constexpr std::uint32_t kPropertyOutFlags = 0x65474C4F;       // 'eGLO', u32
inline constexpr std::uint32_t kPropertyOutFlags2 = 0x65474C32;      // 'eGL2', u32
inline constexpr std::uint32_t kPropertyMatchName = 0x654D4E41;      // 'eMNA', Pascal text
inline constexpr std::uint32_t kPropertyReservedInfo = 0x6165464C;   // 'aeFL', u32
inline constexpr std::uint32_t kKindEffect = 0x65464B54;             // 'eFKT', value of 'kind'

// The resource that holds the list in a Windows library.
inline constexpr const char* kPropertyListResourceType = "PIPL";
inline constexpr std::uint16_t kPropertyListResourceId = 16000;
inline constexpr std::uint16_t kPropertyListLanguage = 1033;
