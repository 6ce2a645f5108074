// cli/terminal/invocation_windows.cpp — what the program was started with on Windows.
#include <windows.h>
// after it
#include <shellapi.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <new>

#include "cli/terminal/invocation.h"

namespace {

std::string narrowed(const wchar_t* text) {
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (bytes <= 1) return {};
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow.data(), bytes, nullptr, nullptr);
  narrow.pop_back();  // the zero at the end
  return narrow;
}

struct Freed {
  void operator()(wchar_t** words) const noexcept { LocalFree(words); }
};

// How many bytes a sequence has by its first; 0: none begins so.
std::size_t lengthOf(unsigned char first) noexcept {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

}  // namespace

// The standard library has this function read narrow text that becomes a path, and takes what comes
// out of a path for UTF-8. The one that the system brings reads the code page, so that a name would
// not come back as it went in. A character beyond 16 bits is read in two steps: three bytes give
// the first half, the fourth the second, which waits in the state.
extern "C" std::size_t mbrtowc(wchar_t* out, const char* bytes, std::size_t size,
                               std::mbstate_t* state) {
  constexpr auto kInvalid = static_cast<std::size_t>(-1);
  constexpr auto kIncomplete = static_cast<std::size_t>(-2);
  thread_local std::mbstate_t own{};
  std::mbstate_t& waiting = state != nullptr ? *state : own;
  if (bytes == nullptr) {
    waiting = 0;
    return 0;
  }
  if (size == 0) return kIncomplete;
  if (waiting != 0) {
    if (out != nullptr) *out = static_cast<wchar_t>(waiting);
    waiting = 0;
    return 1;
  }
  const auto at = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const std::size_t length = lengthOf(at(0));
  if (length > size) return kIncomplete;
  std::uint32_t code = length < 2 ? at(0) : at(0) & (0x7FU >> length);
  bool valid = length != 0;
  for (std::size_t i = 1; i < length; ++i) {
    valid = valid && (at(i) & 0xC0U) == 0x80U;
    code = code << 6 | (at(i) & 0x3FU);
  }
  constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  if (!valid || code < kLeast[length] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
    errno = EILSEQ;
    return kInvalid;
  }
  if (length == 4) {
    waiting = static_cast<std::mbstate_t>(0xDC00U + (code & 0x3FFU));
    code = 0xD800U + ((code - 0x10000U) >> 10);
  }
  if (out != nullptr) *out = static_cast<wchar_t>(code);
  return code == 0 ? 0 : length == 4 ? 3 : length;
}

namespace cli {

std::vector<std::string> programWords(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, Freed> words(CommandLineToArgvW(GetCommandLineW(), &count));
  if (words == nullptr) throw std::bad_alloc();
  std::vector<std::string> narrow;
  for (int i = 1; i < count; ++i) narrow.push_back(narrowed(words.get()[i]));
  return narrow;
}

std::string environmentValue(const char* name) {
  const wchar_t* value =
      _wgetenv(std::wstring(name, name + std::char_traits<char>::length(name)).c_str());
  return value != nullptr ? narrowed(value) : "";
}

}  // namespace cli
