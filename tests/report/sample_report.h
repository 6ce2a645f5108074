// tests/report/sample_report.h — a small report with one of everything.
#pragma once

#include "report/report.h"

namespace report::test {

/// Frames 4..9 of a clip of 12 in two shots, 0..6 and 7..11; frame 6 repeats 5, frames 8 and 9 are
/// untouched, frame 5 is an outlier.
Report sampleReport();

}  // namespace report::test
