// report/base64.h — bytes as text.
#pragma once

#include <string>
#include <string_view>

namespace report {

/// RFC 4648, with padding and without line ends.
std::string base64(std::string_view bytes);

}  // namespace report
