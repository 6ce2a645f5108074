// resources/property_list.h — what hosts read about the effect before they run any of it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "hostapi/property_list.h"
#include "resources/effect_identity.h"

namespace varilum {

enum class PropertyType : std::uint8_t {
  word,        // 4 bytes
  shortWord,   // 2 bytes, and 2 of padding
  version,     // u16 major (upper half of value), u16 minor
  pascalText,  // length byte, characters
  cText,       // characters, NUL
};

struct Property {
  std::uint32_t key;
  PropertyType type;
  std::uint32_t value;
  std::string_view text;
};

constexpr std::uint32_t versionPair(std::uint16_t major, std::uint16_t minor) {
  return static_cast<std::uint32_t>(major << 16 | minor);
}

inline constexpr Property kProperties[] = {
    {kPropertyKind, PropertyType::word, kKindEffect, {}},
    {kPropertyName, PropertyType::pascalText, 0, kEffectName},
    {kPropertyCategory, PropertyType::pascalText, 0, kEffectCategory},
    {kPropertyEntry64, PropertyType::cText, 0, kEntryPointName},
    {kPropertyListVersion,
     PropertyType::version,
     versionPair(kPropertyListMajor, kPropertyListMinor),
     {}},
    {kPropertySpecVersion, PropertyType::version, versionPair(kSpecMajor, kSpecMinor), {}},
    {kPropertyEffectVersion, PropertyType::word, kEffectVersion, {}},
    {kPropertyInfoFlags, PropertyType::shortWord, kInfoFlags, {}},
    {kPropertyOutFlags, PropertyType::word, static_cast<std::uint32_t>(kOutFlags), {}},
    {kPropertyOutFlags2, PropertyType::word, static_cast<std::uint32_t>(kOutFlags2), {}},
    {kPropertyMatchName, PropertyType::pascalText, 0, kEffectMatchName},
    {kPropertyReservedInfo, PropertyType::word, 0, {}},
};

// The list in its Windows form: u16 1, u32 0, u32 count, then the properties. Each: vendor, key,
// id 0, length, data. Little-endian, unaligned. Texts count their padding to 4 bytes in the length.
std::vector<std::uint8_t> encodePropertyList();

}  // namespace varilum
