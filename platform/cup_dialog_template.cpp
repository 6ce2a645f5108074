// platform/cup_dialog_template.cpp — the worker dialog's window, as the system reads it from
// memory.
#include "platform/cup_dialog_template.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/cup_dialog.h"

namespace varilum {
namespace {

struct Item {
  std::uint32_t style;
  std::int16_t x, y, width, height;  // dialog units
  std::uint16_t id;
  std::uint16_t classAtom;  // 0: the name instead
  std::u16string_view className;
  std::u16string_view text;
};

constexpr std::uint16_t kButtonAtom = 0x80;
constexpr std::uint16_t kStaticAtom = 0x82;
constexpr std::uint32_t kDialogStyle = 0x82C808C8;  // centred, modal frame, caption, system menu
constexpr std::int16_t kWidth = 187;
constexpr std::int16_t kHeight = 70;
constexpr std::u16string_view kTitle = u"Dialog";
constexpr std::uint16_t kPointSize = 8;
constexpr std::u16string_view kFont = u"MS Shell Dlg";

constexpr Item kItems[] = {
    {0x50010000, 129, 50, 50, 14, CUPDialog::cancelButton, kButtonAtom, {}, u"&Cancel"},
    {0x50800000, 7, 25, 172, 14, CUPDialog::progressBar, 0, u"msctls_progress32", u""},
    {0x50020200, 7, 7, 172, 8, CUPDialog::statusLine, kStaticAtom, {}, u"Static"},
};

// In 16-bit words; each item begins on a 32-bit boundary.
class TemplateWriter {
 public:
  constexpr void word(std::uint16_t value) { words[size++] = value; }
  constexpr void number(std::uint32_t value) {
    word(static_cast<std::uint16_t>(value & 0xFFFF));
    word(static_cast<std::uint16_t>(value >> 16));
  }
  constexpr void place(std::int16_t value) { word(static_cast<std::uint16_t>(value)); }
  constexpr void text(std::u16string_view text) {
    for (const char16_t unit : text) word(static_cast<std::uint16_t>(unit));
    word(0);
  }
  constexpr void align() {
    if (size % 2 != 0) word(0);
  }

  std::array<std::uint16_t, 160> words{};
  std::size_t size = 0;
};

constexpr TemplateWriter writeTemplate() {
  TemplateWriter writer;
  writer.number(kDialogStyle);
  writer.number(0);  // no extended style
  writer.word(std::size(kItems));
  for (const std::int16_t value : {std::int16_t{0}, std::int16_t{0}, kWidth, kHeight}) {
    writer.place(value);
  }
  writer.word(0);  // no menu
  writer.word(0);  // the dialog's own class
  writer.text(kTitle);
  writer.word(kPointSize);
  writer.text(kFont);
  for (const Item& item : kItems) {
    writer.align();
    writer.number(item.style);
    writer.number(0);
    for (const std::int16_t value : {item.x, item.y, item.width, item.height}) writer.place(value);
    writer.word(item.id);
    if (item.classAtom != 0) {
      writer.word(0xFFFF);
      writer.word(item.classAtom);
    } else {
      writer.text(item.className);
    }
    writer.text(item.text);
    writer.word(0);  // nothing passed at creation
  }
  return writer;
}

alignas(DWORD) constexpr TemplateWriter kTemplate = writeTemplate();

}  // namespace

const DLGTEMPLATE* progressTemplate() noexcept {
  return reinterpret_cast<const DLGTEMPLATE*>(kTemplate.words.data());
}

}  // namespace varilum
