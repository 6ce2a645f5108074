// media/plain/plain_output.h — pictures written in the plain formats.
#pragma once

#include <memory>
#include <string>

#include "media/clip_output.h"
#include "media/clip_writer.h"

namespace media {

/// Throw Error as ClipWriter does.
std::unique_ptr<ClipOutput> makeY4m(const std::string& path, const ClipInfo& format,
                                    const WriteOptions& options);
std::unique_ptr<ClipOutput> makePnm(const std::string& path, const ClipInfo& format,
                                    int firstNumber, const WriteOptions& options);

/// The picture in another format of the same size, through RGB in float; itself if it has it.
Picture inFormat(const Picture& picture, const ClipInfo& format);

}  // namespace media
