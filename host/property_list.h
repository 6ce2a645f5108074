// host/property_list.h — what a plug-in says of itself before it is run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace host {

struct PropertyList {
  std::string name;
  std::string category;
  std::string matchName;
  std::string entryPoint;
  std::uint16_t specMajor = 0;
  std::uint16_t specMinor = 0;
  std::uint32_t effectVersion = 0;
  std::uint32_t outFlags = 0;
  std::uint32_t outFlags2 = 0;
};

// Reads a property list as the Windows resource holds it. Throws ModuleError when it is truncated,
// damaged, or not that of an effect.
PropertyList readPropertyList(std::span<const std::byte> bytes);

}  // namespace host
