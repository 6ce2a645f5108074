// host/math_callbacks.cpp — the C library's mathematics and text, for effects.
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "host/callback_tables.h"

namespace host {
namespace {

// The interface gives no size: as with the C function, the caller sees to the room.
std::int32_t printText(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int written = std::vsprintf(buffer, format, arguments);
  va_end(arguments);
  return written;
}

char* copyText(char* to, const char* from) {
  return std::strcpy(to, from);
}

PF_ANSICallbacks makeMathTable() {
  PF_ANSICallbacks table{};
  table.atan = [](double x) { return std::atan(x); };
  table.atan2 = [](double y, double x) { return std::atan2(y, x); };
  table.ceil = [](double x) { return std::ceil(x); };
  table.cos = [](double x) { return std::cos(x); };
  table.exp = [](double x) { return std::exp(x); };
  table.fabs = [](double x) { return std::fabs(x); };
  table.floor = [](double x) { return std::floor(x); };
  table.fmod = [](double x, double y) { return std::fmod(x, y); };
  table.hypot = [](double x, double y) { return std::hypot(x, y); };
  table.log = [](double x) { return std::log(x); };
  table.log10 = [](double x) { return std::log10(x); };
  table.pow = [](double x, double y) { return std::pow(x, y); };
  table.sin = [](double x) { return std::sin(x); };
  table.sqrt = [](double x) { return std::sqrt(x); };
  table.tan = [](double x) { return std::tan(x); };
  table.sprintf = printText;
  table.strcpy = copyText;
  table.asin = [](double x) { return std::asin(x); };
  table.acos = [](double x) { return std::acos(x); };
  return table;
}

}  // namespace

const PF_ANSICallbacks& mathCallbacks() {
  static const PF_ANSICallbacks table = makeMathTable();
  return table;
}

}  // namespace host
