// media/frame_shape.cpp — making frames, and the size of their planes.
#include "media/frame_shape.h"

#include <cstring>

namespace media {
namespace {

FrameHandle makeUnsetFrame(int format, int width, int height) {
  FrameHandle frame = makeFrame();
  frame->format = format;
  frame->width = width;
  frame->height = height;
  if (av_frame_get_buffer(frame.get(), 0) < 0) throw std::bad_alloc();
  return frame;
}

}  // namespace

FrameHandle makeBlankFrame(AVPixelFormat format, int width, int height) {
  FrameHandle frame = makeUnsetFrame(format, width, height);
  for (AVBufferRef* buffer : frame->buf) {
    if (buffer != nullptr) std::memset(buffer->data, 0, buffer->size);
  }
  return frame;
}

FrameHandle makeFrameLike(const AVFrame& like, AVPixelFormat format) {
  FrameHandle frame = makeBlankFrame(format, like.width, like.height);
  if (av_frame_copy_props(frame.get(), &like) < 0) throw std::bad_alloc();
  return frame;
}

FrameHandle makeUnsetFrameLike(const AVFrame& like) {
  FrameHandle frame = makeUnsetFrame(like.format, like.width, like.height);
  if (av_frame_copy_props(frame.get(), &like) < 0) throw std::bad_alloc();
  return frame;
}

FrameHandle referTo(const AVFrame& frame) {
  return FrameHandle(orBadAlloc(av_frame_clone(&frame)));
}

std::shared_ptr<AVFrame> shareFrame(const AVFrame& frame) {
  return std::shared_ptr<AVFrame>(orBadAlloc(av_frame_clone(&frame)), AvDeleter());
}

}  // namespace media
