// fuzz/property_list_target.cpp — property lists of libraries that anybody may have made.
#include "host/error.h"
#include "host/property_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    host::readPropertyList(std::as_bytes(std::span(data, size)));
  } catch (const host::ModuleError&) {
  }
  return 0;
}
