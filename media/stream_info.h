// media/stream_info.h — a stream's properties in the words of ClipInfo.
#pragma once

#include "media/av_handles.h"
#include "media/clip_info.h"
#include "media/frame_index.h"
#include "media/input_file.h"

namespace media {

/// "yuvj420p" and its like are "yuv420p" and full range; other formats are given back unchanged.
AVPixelFormat withoutJpegName(AVPixelFormat format) noexcept;

std::string pixelFormatName(AVPixelFormat format);

/// Clockwise quarter turns, in degrees, that the stream's display matrix asks for.
int rotationOf(const AVStream& stream) noexcept;

/// Everything but ClipInfo::path. `first` is frame 0 as handed out.
ClipInfo describeStream(const InputFile& input, const FrameIndex& index, const AVFrame& first);

}  // namespace media
