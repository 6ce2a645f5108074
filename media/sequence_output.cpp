// media/sequence_output.cpp — a clip written as numbered pictures.
#include "media/sequence_output.h"

#include <filesystem>

#include "media/stream_info.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {

SequenceOutput::SequenceOutput(const std::string& path, const ClipInfo& format, int firstNumber,
                               const WriteOptions& options) {
  files_ = std::make_unique<NumberedFiles>(path, firstNumber, options.overwrite);
  EncoderInput input;
  input.pixelFormat = av_get_pix_fmt(format.pixelFormat.c_str());
  input.range = format.colourRange == "pc" ? AVCOL_RANGE_JPEG : AVCOL_RANGE_UNSPECIFIED;
  const std::string extension = std::filesystem::path(path).extension().string();
  const EncoderPlan plan = planPictureEncoder(input, extension, options);
  notes_ = plan.notes;
  if (!format.otherStreams.empty() && options.audio) {
    notes_.push_back("Numbered pictures carry no sound; the input's other streams are left out.");
  }
  if (format.rotationDegrees != 0) {
    notes_.push_back("Numbered pictures carry no rotation; the one of " +
                     std::to_string(format.rotationDegrees) + " degrees is left out.");
  }
  encoder_ =
      std::make_unique<VideoEncoder>(plan, format, false, AV_FIELD_PROGRESSIVE, 0, options.threads);
}

std::string SequenceOutput::pixelFormat() const {
  return pixelFormatName(encoder_->context().pix_fmt);
}

void SequenceOutput::takePacket(const AVPacket& packet) {
  files_->add(packet.data, static_cast<std::size_t>(packet.size));
}

void SequenceOutput::write(const Picture& picture) {
  encoder_->encode(*picture.frame(), [this](const AVPacket& packet) { takePacket(packet); });
}

void SequenceOutput::finish() {
  encoder_->flush([this](const AVPacket& packet) { takePacket(packet); });
  files_->finish();
}

}  // namespace media
