// cli/job/frame_level.h — a frame's brightness on the way in and out, to tell what was gained.
#pragma once

#include "media/argb_view.h"

namespace cli {

/// Which pixels count, and how. Right and bottom exclusive; empty = the whole frame.
struct LevelArea {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  bool favorBrighter = false;  ///< each pixel weighs as much as it is bright
};

/// Mean of 0.3 R + 0.59 G + 0.11 B over the area, on the 0..255 scale at every depth, row by row as
/// they come. All pixels of every row are read below 1080 rows; above, those of each third, fifth
/// ... row, so that 360 to 720 are.
class LevelMeter {
 public:
  /// The pixels must live as long as this.
  LevelMeter(const media::ConstArgbView& pixels, const LevelArea& area);

  /// Takes row y into account, if it counts. Once a row.
  void add(int y);

  /// The level of the rows so far; 0 if there were none.
  double level() const;

 private:
  media::ConstArgbView pixels_;
  bool favorBrighter_;
  int left_;
  int right_;
  int top_;
  int bottom_;
  int step_;
  double level_ = 0.0;
  double square_ = 0.0;
  double count_ = 0.0;
};

/// The level of all rows.
double frameLevel(const media::ConstArgbView& pixels, const LevelArea& area);

}  // namespace cli
