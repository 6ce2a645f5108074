// analysis/analysis_progress.h — where a run of the analysis reports to.
#pragma once

#include <cstdint>

namespace varilum {

// One surface: the host's dialog, or one of the effect's own.
class AnalysisProgress {
 public:
  virtual ~AnalysisProgress() = default;

  // Asked before each frame: true ends the run as if cancelled.
  virtual bool stopRequested() = 0;

  // True when no pixels are to be read: every frame then counts as one that is not deflickered.
  virtual bool passesOverAll() { return false; }

  // After the first frame and after every frame whose pixels were read. shown runs one ahead of
  // the frames done, on purpose. Gives 0, PF_Interrupt_CANCEL, or an error that ends the run.
  virtual std::int32_t framesRead(std::int32_t shown, std::int32_t count) = 0;

  // After every frame, with the instance's status text. Gives 0 or an error that ends the run.
  virtual std::int32_t frameStored(const char* statusText) = 0;
};

}  // namespace varilum
