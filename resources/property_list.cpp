// resources/property_list.cpp — what hosts read about the effect before they run any of it.
#include "resources/property_list.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace varilum {
namespace {

class Writer {
 public:
  void u8(std::uint32_t value) { bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF)); }
  void u16(std::uint32_t value) {
    u8(value);
    u8(value >> 8);
  }
  void u32(std::uint32_t value) {
    u16(value);
    u16(value >> 16);
  }
  void text(std::string_view text) {
    for (const char c : text) u8(static_cast<std::uint8_t>(c));
  }
  void zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
  std::vector<std::uint8_t> take() { return std::move(bytes_); }

 private:
  std::vector<std::uint8_t> bytes_;
};

void writeText(Writer& writer, const Property& property) {
  const std::size_t stored = property.text.size() + 1;
  const std::size_t padded = (stored + 3) / 4 * 4;
  writer.u32(static_cast<std::uint32_t>(padded));
  if (property.type == PropertyType::pascalText) {
    writer.u8(static_cast<std::uint32_t>(property.text.size()));
  }
  writer.text(property.text);
  if (property.type == PropertyType::cText) writer.u8(0);
  writer.zeros(padded - stored);
}

void writeData(Writer& writer, const Property& property) {
  switch (property.type) {
    case PropertyType::word:
      writer.u32(4);
      writer.u32(property.value);
      break;
    case PropertyType::shortWord:
      writer.u32(2);
      writer.u16(property.value);
      writer.zeros(2);
      break;
    case PropertyType::version:
      writer.u32(4);
      writer.u16(property.value >> 16);
      writer.u16(property.value);
      break;
    case PropertyType::pascalText:
    case PropertyType::cText:
      writeText(writer, property);
      break;
  }
}

}  // namespace

std::vector<std::uint8_t> encodePropertyList() {
  Writer writer;
  writer.u16(1);
  writer.u32(0);
  writer.u32(static_cast<std::uint32_t>(std::size(kProperties)));
  for (const Property& property : kProperties) {
    writer.u32(kPropertyVendor);
    writer.u32(property.key);
    writer.u32(0);
    writeData(writer, property);
  }
  return writer.take();
}

}  // namespace varilum
