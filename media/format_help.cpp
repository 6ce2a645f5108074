// media/format_help.cpp — what can be read and written through FFmpeg.
#include "media/format_help.h"

namespace media {

const char* const kInputHelp =
    "The clip: anything FFmpeg reads, or numbered pictures such as shot.%05d.png.";
const char* const kOutputHelp =
    "Where to write it; the extension says how (mp4, mov, mkv ...; out.%05d.png, .tif, .dpx, .exr "
    "for pictures). 'null:' writes nothing.";

}  // namespace media
