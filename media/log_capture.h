// media/log_capture.h — FFmpeg's own chatter kept off the terminal and at hand for messages.
#pragma once

#include <string>

namespace media {

/// From now on FFmpeg's libraries print nothing; their last error line is kept. Called by every
/// reader and writer; calling it again does nothing. Thread-safe.
void captureLibraryLog();

/// The last error line since the previous call, without newline, and forgets it; empty if none.
/// Thread-safe; process-wide, so with several clips at work it may be another's.
std::string takeLibraryMessage();

}  // namespace media
