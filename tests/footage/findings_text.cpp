// tests/footage/findings_text.cpp — all that is found in a clip, as a line of text a shot.
#include "tests/footage/findings_text.h"

#include <cstdio>
#include <vector>

#include "footage/cuts.h"
#include "footage/duplicates.h"
#include "footage/matte.h"
#include "footage/outliers.h"

namespace footage::test {
namespace {

std::string outlierText(const Outlier& outlier) {
  char ratio[32];
  std::snprintf(ratio, sizeof(ratio), "%.2f", outlier.ratio);
  return std::to_string(outlier.first) + ".." + std::to_string(outlier.last) + ' ' +
         std::string(name(outlier.kind)) + ' ' + ratio;
}

std::string shotText(const Shot& shot, std::span<const FrameMeasure> frames) {
  std::string text = std::to_string(shot.first) + '+' + std::to_string(shot.count);
  std::vector<FrameMeasure> distinct;
  const std::vector<std::int64_t> originals = findDuplicates(frames);
  for (std::size_t i = 0; i < originals.size(); ++i) {
    const auto frame = static_cast<std::int64_t>(i);
    if (originals[i] == frame) {
      distinct.push_back(frames[i]);
    } else {
      text += " =" + std::to_string(frame);
    }
  }
  for (const Outlier& outlier : findOutliers(distinct)) text += ", " + outlierText(outlier);
  if (const auto matte = findMatte(frames)) {
    for (const int side : {matte->left, matte->top, matte->right, matte->bottom}) {
      text += " |" + std::to_string(side);
    }
  }
  return text + '\n';
}

}  // namespace

std::string findingsText(std::span<const FrameMeasure> clip) {
  std::string text;
  for (const Shot& shot : shotsBetween(findCuts(clip), static_cast<std::int64_t>(clip.size()))) {
    text += shotText(shot, clip.subspan(static_cast<std::size_t>(shot.first),
                                        static_cast<std::size_t>(shot.count)));
  }
  return text;
}

}  // namespace footage::test
