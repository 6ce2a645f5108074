// media/frame_shape.h — making frames, and the size of their planes.
#pragma once

#include <memory>

#include "media/av_handles.h"

namespace media {

/// A frame with zeroed pixel memory of its own.
FrameHandle makeBlankFrame(AVPixelFormat format, int width, int height);

/// A frame with memory of its own and everything but the pixels copied from `like`.
FrameHandle makeFrameLike(const AVFrame& like, AVPixelFormat format);

/// The same in the format of `like`, but nobody knows what the pixels are.
FrameHandle makeUnsetFrameLike(const AVFrame& like);

/// A new reference to the same pixels, with properties of its own.
FrameHandle referTo(const AVFrame& frame);

/// The same as referTo(), shared.
std::shared_ptr<AVFrame> shareFrame(const AVFrame& frame);

}  // namespace media
