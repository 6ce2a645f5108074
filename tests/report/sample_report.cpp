// tests/report/sample_report.cpp — a small report with one of everything.
#include "tests/report/sample_report.h"

namespace report::test {

Report sampleReport() {
  Report report;
  report.input = "lamp <&> \"day\".mp4";
  report.output = "steady.mp4";
  report.width = 640;
  report.height = 360;
  report.frameRate = 24;
  report.clipFrames = 12;
  report.seconds = 1.5;
  report.first = 4;
  report.frames = {
      {100.123456, 101, 101.01, 4, false},
      {135, 101.5, 101.4, 5, false},
      {135, 101.5, 101.4, 5, false},
      {50, 50.5, 50.4, 7, false},
      {51, 51, 51, 8, true},
      {52, 52, 52, 9, true},
  };
  report.figures = {6.5, 0.25, 11, 0.5};
  Shot first;
  first.first = 0;
  first.last = 6;
  first.figures = {8, 0.2, 12, 0.4};
  first.matte = std::array<int, 4>{0, 40, 640, 320};
  first.outliers = {{5, 6, "exposure jump", "the histogram keeps its shape", 1.35, false}};
  Shot second;
  second.first = 7;
  second.last = 11;
  second.passedThrough = true;
  report.shots = {first, second};
  report.settings = {{"target", "smoothing"}, {"smoothing frames", "30"}};
  report.versions = {{"varilum4", "4.2.0"}};
  report.thumbnails = {{4, "four"}};
  report.comparisons = {{5, "the largest correction", "old", "new"}};
  return report;
}

}  // namespace report::test
