// media/log_capture.cpp — FFmpeg's own chatter kept off the terminal and at hand for messages.
#include "media/log_capture.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

#include "media/av_handles.h"

extern "C" {
#include <libavutil/log.h>
}

namespace media {
namespace {

std::mutex lastLineMutex;
std::string lastLine;

void keepErrorLine(void* /*context*/, int level, const char* format, va_list arguments) {
  if (level > AV_LOG_ERROR) return;
  char text[512];
  std::vsnprintf(text, sizeof text, format, arguments);
  std::string line(text);
  while (!line.empty() && (line.back() == '\n' || line.back() == ' ')) line.pop_back();
  if (line.empty()) return;
  const std::scoped_lock lock(lastLineMutex);
  lastLine = std::move(line);
}

}  // namespace

void captureLibraryLog() {
  static const bool once = [] {
    av_log_set_callback(keepErrorLine);
    return true;
  }();
  static_cast<void>(once);
}

std::string takeLibraryMessage() {
  const std::scoped_lock lock(lastLineMutex);
  return std::exchange(lastLine, {});
}

std::string errorText(int code) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(code, text, sizeof text);
  return text;
}

}  // namespace media
