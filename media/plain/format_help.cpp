// media/plain/format_help.cpp — what can be read and written without FFmpeg.
#include "media/format_help.h"

namespace media {

const char* const kInputHelp =
    "The clip: YUV4MPEG2 (.y4m), or numbered pictures such as shot.%05d.ppm or .pgm with 8 or 16 "
    "bits. This program reads nothing else; convert other footage first.";
const char* const kOutputHelp =
    "Where to write it; the extension says how (.y4m; out.%05d.ppm or .pgm for pictures). 'null:' "
    "writes nothing.";

}  // namespace media
