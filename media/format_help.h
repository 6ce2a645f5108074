// media/format_help.h — what can be read and written, in the words of help texts.
#pragma once

namespace media {

/// What a clip to read may be; a sentence.
extern const char* const kInputHelp;
/// How the name of an output decides its kind; a sentence.
extern const char* const kOutputHelp;

}  // namespace media
