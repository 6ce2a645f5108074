// fuzz/saved_image_14_target.cpp — instances opened from images of version 14.
#include "fuzz/image_visit.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::visitImage({data, size}, 14);
  return 0;
}
