// media/plain/jpeg_still.cpp — no stills: nothing here encodes JPEG.
#include "media/jpeg_still.h"

namespace media {

std::string jpegStill(const Picture&, int, int, int) {
  return {};
}

}  // namespace media
