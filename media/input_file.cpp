// media/input_file.cpp — an open container, of which one video stream is read packet by packet.
#include "media/input_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "media/error.h"
#include "media/log_capture.h"

namespace media {
namespace {

// Demuxers that turn any text into a picture of its characters.
constexpr std::array<std::string_view, 5> kTextDemuxers = {"tty", "bin", "xbin", "adf", "idf"};

[[noreturn]] void throwOpenError(const std::string& path, int code) {
  if (code == AVERROR(ENOENT)) throw Error(Problem::missing, "There is no file " + path + ".");
  if (code == AVERROR(EACCES) || code == AVERROR(EPERM)) {
    throw Error(Problem::missing, path + " may not be read; check its permissions.");
  }
  const std::string message = takeLibraryMessage();
  throw Error(Problem::notVideo, path + " is not footage that can be read (" +
                                     (message.empty() ? errorText(code) : message) +
                                     "). It may be cut off, or no video at all.");
}

}  // namespace

InputFile::InputFile(InputPath path, ReadOptions options)
    : path_(std::move(path)), options_(std::move(options)) {
  open();
}

void InputFile::open() {
  context_.reset();
  readError_ = 0;
  takeLibraryMessage();
  Dictionary dictionary;
  const AVInputFormat* format = nullptr;
  if (path_.sequence) {
    format = av_find_input_format("image2");
    const Rational rate = options_.frameRate.value_or(Rational{24, 1});
    dictionary.set("framerate", std::to_string(rate.num) + "/" + std::to_string(rate.den));
    dictionary.set("pattern_type", path_.glob ? "glob" : "sequence");
    if (!path_.glob) {
      dictionary.set("start_number", std::to_string(path_.firstNumber));
      dictionary.set("start_number_range", "1");
    }
  }
  AVFormatContext* raw = nullptr;
  int code = avformat_open_input(&raw, path_.url.c_str(), format, dictionary.address());
  if (code < 0) throwOpenError(path_.url, code);
  context_.reset(raw);
  const std::string_view demuxer(context_->iformat->name);
  if (std::ranges::find(kTextDemuxers, demuxer) != kTextDemuxers.end()) {
    throw Error(Problem::notVideo, path_.url + " is a text file, not a video.");
  }
  code = avformat_find_stream_info(context_.get(), nullptr);
  if (code < 0) throwOpenError(path_.url, code);
  const int best = av_find_best_stream(context_.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (best < 0 || (context_->streams[best]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
    throw Error(Problem::notVideo, path_.url + " has no video in it.");
  }
  videoStream_ = static_cast<unsigned>(best);
  for (unsigned i = 0; i < context_->nb_streams; ++i) {
    context_->streams[i]->discard = i == videoStream_ ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
  }
}

void InputFile::reopen() {
  open();
}

bool InputFile::read(AVPacket& packet) {
  for (;;) {
    av_packet_unref(&packet);
    const int code = av_read_frame(context_.get(), &packet);
    if (code == AVERROR(EAGAIN)) continue;
    if (code < 0) {
      readError_ = code == AVERROR_EOF ? 0 : code;
      return false;
    }
    if (packet.stream_index == static_cast<int>(videoStream_)) return true;
  }
}

bool InputFile::seek(std::int64_t timestamp) {
  readError_ = 0;
  return av_seek_frame(context_.get(), static_cast<int>(videoStream_), timestamp,
                       AVSEEK_FLAG_BACKWARD) >= 0;
}

}  // namespace media
