// report/report_json.h — a report as a tree of JSON, to be written or to be put into the page.
#pragma once

#include <nlohmann/json.hpp>

#include "report/report.h"

namespace report {

/// All of the report but its pictures.
nlohmann::ordered_json jsonOf(const Report& report);

/// As text on one line; wrong UTF-8 replaced.
std::string textOf(const nlohmann::ordered_json& json);

}  // namespace report
