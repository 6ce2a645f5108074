// media/sequence_output.cpp — a clip written as numbered pictures.
#include "media/sequence_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "media/error.h"
#include "media/pending_file.h"
#include "media/remains.h"
#include "media/stream_info.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

namespace fs = std::filesystem;

void requireNoneThere(const fs::path& folder, const NumberPattern& pattern) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (pattern.numberOf(name)) {
      throw Error(
          Problem::exists,
          entry.path().string() + " exists already; choose another name or allow replacing it.");
    }
  }
}

}  // namespace

TemporaryFolder::TemporaryFolder(const fs::path& beside, const std::string& name) {
  removeRemains(beside, name);
  for (;;) {
    path_ = beside / temporaryName(name, "");
    std::error_code status;
    if (fs::create_directory(path_, status)) {
      descriptor_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      if (descriptor_ < 0 || markInUse(descriptor_)) return;
      close(std::exchange(descriptor_, -1));
    } else if (status) {
      throw Error(Problem::unwritable, "The folder " + beside.string() +
                                           " may not be written to: " + status.message() + ".");
    }
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  if (descriptor_ >= 0) close(descriptor_);
}

SequenceOutput::SequenceOutput(const std::string& path, const ClipInfo& format, int firstNumber,
                               const WriteOptions& options)
    : folder_(fs::path(path).has_parent_path() ? fs::path(path).parent_path() : fs::path(".")),
      pattern_(*numberPattern(fs::path(path).filename().string())),
      number_(firstNumber),
      overwrite_(options.overwrite) {
  requireWritable(folder_ / pattern_.fileName(number_), true);
  if (!overwrite_) requireNoneThere(folder_, pattern_);
  EncoderInput input;
  input.pixelFormat = av_get_pix_fmt(format.pixelFormat.c_str());
  input.range = format.colourRange == "pc" ? AVCOL_RANGE_JPEG : AVCOL_RANGE_UNSPECIFIED;
  const std::string extension = fs::path(pattern_.fileName(0)).extension().string();
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
  temporary_ = std::make_unique<TemporaryFolder>(folder_, pattern_.prefix);
}

std::string SequenceOutput::pixelFormat() const {
  return pixelFormatName(encoder_->context().pix_fmt);
}

void SequenceOutput::takePacket(const AVPacket& packet) {
  const std::string name = pattern_.fileName(number_++);
  PendingFile file(temporary_->path() / name, true);
  if (!file.write(packet.data, static_cast<std::size_t>(packet.size))) {
    throwWriteError(folder_ / name, file.errorCode());
  }
  file.commit();
  names_.push_back(name);
}

void SequenceOutput::write(const Picture& picture) {
  encoder_->encode(*picture.frame(), [this](const AVPacket& packet) { takePacket(packet); });
}

void SequenceOutput::finish() {
  encoder_->flush([this](const AVPacket& packet) { takePacket(packet); });
  std::size_t moved = 0;
  try {
    for (; moved < names_.size(); ++moved) {
      moveIntoPlace(temporary_->path() / names_[moved], folder_ / names_[moved], overwrite_);
    }
  } catch (const Error&) {
    std::error_code ignored;
    for (std::size_t i = 0; i < moved && !overwrite_; ++i) fs::remove(folder_ / names_[i], ignored);
    throw;
  }
  temporary_.reset();
}

}  // namespace media
