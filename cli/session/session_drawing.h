// cli/session/session_drawing.h — drawings as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "host/drawing_record.h"

namespace cli {

/// An array with an object for each mark; see docs/session.md. Numbers are as short as they are
/// exact in single precision.
nlohmann::ordered_json drawingJson(const host::DrawingRecord& drawing);

}  // namespace cli
