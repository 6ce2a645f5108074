// cli/project/project_header.h — the JSON header of a project file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/project/project_file.h"

namespace cli {

/// Everything but the shots' sequence data, of which it has the lengths; a final newline.
std::string projectHeader(const Project& project);

/// The project of a header and the sequence data of its shots, one after the other. `version` is
/// the container's, at least 1. Throws std::exception when anything is missing, of another type,
/// out of range, or does not fit the rest.
Project projectFrom(std::string_view header, std::uint32_t version,
                    std::vector<std::byte> sequenceData);

}  // namespace cli
