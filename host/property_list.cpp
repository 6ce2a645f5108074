// host/property_list.cpp — reading the plug-in property list.
#include "hostapi/property_list.h"

#include <limits>

#include "host/error.h"
#include "host/property_list.h"

namespace host {
namespace {

// Little-endian reading with bounds; positions are unaligned.
class Reader {
 public:
  explicit Reader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::span<const std::byte> take(std::size_t count) {
    if (count > bytes_.size()) throw ModuleError("The plug-in's property list is cut short.");
    const auto head = bytes_.first(count);
    bytes_ = bytes_.subspan(count);
    return head;
  }

  std::uint32_t number(std::size_t width) {
    std::uint32_t value = 0;
    const auto raw = take(width);
    for (std::size_t i = width; i-- > 0;) {
      value = value << 8 | std::to_integer<std::uint32_t>(raw[i]);
    }
    return value;
  }

  std::size_t left() const noexcept { return bytes_.size(); }

 private:
  std::span<const std::byte> bytes_;
};

std::string characters(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string pascalText(std::span<const std::byte> data) {
  Reader reader{data};
  return characters(reader.take(reader.number(1)));
}

std::string cText(std::span<const std::byte> data) {
  std::string text = characters(data);
  const auto end = text.find('\0');
  if (end == std::string::npos) throw ModuleError("A text of the property list has no end.");
  text.resize(end);
  return text;
}

std::uint32_t word(std::span<const std::byte> data) {
  return Reader{data}.number(4);
}

}  // namespace

PropertyList readPropertyList(std::span<const std::byte> bytes) {
  Reader reader{bytes};
  if (reader.number(2) != 1 || reader.number(4) != 0) {
    throw ModuleError("The plug-in's property list has an unknown form.");
  }
  PropertyList list;
  bool isEffect = false;
  for (std::uint32_t count = reader.number(4); count > 0; --count) {
    const std::uint32_t vendor = reader.number(4);
    const std::uint32_t key = reader.number(4);
    reader.number(4);
    const std::uint32_t length = reader.number(4);
    const auto data = reader.take(length);
    // The last property may end with the file, unpadded.
    const std::size_t padding = (4 - length % 4) % 4;
    reader.take(padding < reader.left() ? padding : reader.left());
    if (vendor != kPropertyVendor) continue;
    switch (key) {
      case kPropertyKind:
        isEffect = word(data) == kKindEffect;
        break;
      case kPropertyName:
        list.name = pascalText(data);
        break;
      case kPropertyCategory:
        list.category = pascalText(data);
        break;
      case kPropertyMatchName:
        list.matchName = pascalText(data);
        break;
      case kPropertyEntry64:
        list.entryPoint = cText(data);
        break;
      case kPropertySpecVersion: {
        Reader version{data};
        list.specMajor = static_cast<std::uint16_t>(version.number(2));
        list.specMinor = static_cast<std::uint16_t>(version.number(2));
        break;
      }
      case kPropertyEffectVersion:
        list.effectVersion = word(data);
        break;
      case kPropertyOutFlags:
        list.outFlags = word(data);
        break;
      case kPropertyOutFlags2:
        list.outFlags2 = word(data);
        break;
      default:
        break;
    }
  }
  if (!isEffect) throw ModuleError("The library is a plug-in, but not an effect.");
  if (list.entryPoint.empty()) throw ModuleError("The property list names no entry point.");
  return list;
}

}  // namespace host
