// report/report.h — everything that a report on a deflickered clip tells.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace report {

/// In percent, before and after. Flicker: root mean square of the mean luminance against its
/// centred 15-frame mean. Jerk: mean absolute second difference, relative to the mean.
struct Figures {
  double flickerBefore = 0.0;
  double flickerAfter = 0.0;
  double jerkBefore = 0.0;
  double jerkAfter = 0.0;
};

/// Mean levels of one frame, 0..255.
struct Frame {
  double input = 0.0;
  double target = 0.0;
  double output = 0.0;
  std::int64_t original = 0;  ///< the frame whose picture this one repeats, or itself
  bool untouched = false;     ///< written from its original picture
};

/// Frames first..last that stand out from those around them.
struct Outlier {
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::string kind;
  std::string reason;  ///< why it was judged so
  double ratio = 1.0;  ///< mean luminance to the neighbourhood's
  bool left = false;   ///< left as it was; else corrected
};

struct Shot {
  std::int64_t first = 0;
  std::int64_t last = 0;
  Figures figures;
  bool passedThrough = false;               ///< it would have come out worse
  std::optional<std::array<int, 4>> matte;  ///< the live picture: left, top, right, bottom
  std::vector<Outlier> outliers;
};

/// A small picture of a frame as it came.
struct Thumbnail {
  std::int64_t frame = 0;
  std::string jpeg;  ///< the file's bytes
};

/// A frame before and after, to be compared by eye.
struct Comparison {
  std::int64_t frame = 0;
  std::string why;  ///< what makes it worth a look
  std::string jpegBefore;
  std::string jpegAfter;
};

/// A row of a table of two columns.
using Row = std::pair<std::string, std::string>;

struct Report {
  std::string input;  ///< file names without folders
  std::string output;
  int width = 0;
  int height = 0;
  double frameRate = 0.0;
  std::int64_t clipFrames = 0;  ///< of the whole clip
  double seconds = 0.0;         ///< that the work took

  std::int64_t first = 0;     ///< frame of the clip that `frames` begins with
  std::vector<Frame> frames;  ///< those that were written, in order
  Figures figures;            ///< of all of them; steps at cuts are no flicker
  std::vector<Shot> shots;    ///< of the whole clip, in order
  std::vector<Row> settings;
  std::vector<Row> versions;

  std::vector<Thumbnail> thumbnails;    ///< rising; for the page alone
  std::vector<Comparison> comparisons;  ///< for the page alone
};

/// The report for programs: one JSON object, described in docs/report.md. Levels are rounded to
/// four decimals, figures to six. Text that is no UTF-8 has its wrong bytes replaced.
std::string jsonReport(const Report& report);

/// The report for people: one page of HTML that fetches nothing and works from disk.
std::string pageReport(const Report& report);

}  // namespace report
