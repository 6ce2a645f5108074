// media/frame_type.h — what a picture's memory is: FFmpeg's frame, or the plain backend's own.
#pragma once

#ifdef VARILUM_PLAIN_FOOTAGE
namespace media {
struct PlainFrame;
using Frame = PlainFrame;
}  // namespace media
#else
struct AVFrame;
namespace media {
using Frame = AVFrame;
}  // namespace media
#endif
