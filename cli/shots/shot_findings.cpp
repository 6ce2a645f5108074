// cli/shots/shot_findings.cpp — what is found out about each shot while every frame is looked at
// once.
#include "cli/shots/shot_findings.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "footage/duplicates.h"

namespace cli {
namespace {

bool isLeft(footage::OutlierKind kind, bool leaveFlashes) {
  return kind != footage::OutlierKind::exposureJump || leaveFlashes;
}

}  // namespace

// The shot that frames are being added to.
class ShotFinder::OpenShot {
 public:
  OpenShot(std::int64_t first, const ShotOptions& options)
      : first_(first),
        options_(options),
        repeats_([this](std::int64_t original, const footage::FrameMeasure& frame) {
          take(original, frame);
        }) {}
  OpenShot(const OpenShot&) = delete;
  OpenShot& operator=(const OpenShot&) = delete;

  void add(const footage::FrameMeasure& frame) {
    matte_.add(frame);
    if (options_.keepDuplicates) {
      take(count_, frame);
    } else {
      repeats_.add(frame);
    }
  }

  FoundShot finish() {
    repeats_.finish();
    ShotFindings findings;
    findings.frames = {first_, count_, std::move(duplicates_)};
    findings.matte = matte_.find();
    const ShotFrames& frames = findings.frames;
    for (const footage::Outlier& outlier : outliers_.finish()) {
      footage::Outlier inClip = outlier;
      const auto after = static_cast<std::int32_t>(outlier.last) + 1;
      inClip.first = frames.frameOf(static_cast<std::int32_t>(outlier.first));
      inClip.last = after < frames.pictureCount() ? frames.frameOf(after) - 1 : frames.last();
      findings.outliers.push_back({inClip, isLeft(outlier.kind, options_.leaveFlashes)});
    }
    return {std::move(findings), std::move(light_)};
  }

 private:
  // Held pictures would weigh as often as they are held, and a flash held twice last twice as long.
  void take(std::int64_t original, const footage::FrameMeasure& frame) {
    const std::int64_t number = count_++;
    if (original != number) {
      duplicates_.push_back(first_ + number);
      return;
    }
    outliers_.add(frame);
    light_.push_back(footage::quantilesOf(frame));
  }

  const std::int64_t first_;
  const ShotOptions& options_;
  std::int64_t count_ = 0;
  footage::DuplicateFinder repeats_;
  footage::MatteFinder matte_;
  footage::OutlierFinder outliers_;
  std::vector<std::int64_t> duplicates_;
  std::deque<footage::LuminanceQuantiles> light_;
};

ShotFinder::ShotFinder(const ShotOptions& options, std::vector<std::int64_t> cuts)
    : options_(options), listed_(std::move(cuts)) {}

ShotFinder::~ShotFinder() = default;

void ShotFinder::add(const footage::FrameMeasure& frame) {
  waiting_.push_back(frame);
  if (options_.shots == ShotOptions::Shots::find) {
    cuts_.add(frame);
    passUpTo(cuts_.decided());
  } else {
    passUpTo(next_ + std::ssize(waiting_));
  }
}

std::vector<FoundShot> ShotFinder::finish() {
  cuts_.finish();
  passUpTo(next_ + std::ssize(waiting_));
  close();
  return std::move(found_);
}

bool ShotFinder::beginsShot(std::int64_t frame) const {
  switch (options_.shots) {
    case ShotOptions::Shots::find:
      return std::ranges::binary_search(cuts_.cuts(), frame);
    case ShotOptions::Shots::listed:
      return std::ranges::binary_search(listed_, frame);
    case ShotOptions::Shots::off:
      break;
  }
  return false;
}

void ShotFinder::passUpTo(std::int64_t end) {
  for (; next_ < end; ++next_) {
    if (next_ == 0 || beginsShot(next_)) {
      close();
      open_ = std::make_unique<OpenShot>(next_, options_);
    }
    open_->add(waiting_.front());
    waiting_.pop_front();
  }
}

void ShotFinder::close() {
  if (open_) found_.push_back(open_->finish());
  open_.reset();
}

}  // namespace cli
