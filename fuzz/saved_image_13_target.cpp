// fuzz/saved_image_13_target.cpp — instances opened from images of version 13.
#include "fuzz/image_visit.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::visitImage({data, size}, 13);
  return 0;
}
