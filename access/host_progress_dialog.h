// access/host_progress_dialog.h — the progress dialog that the host shows for the effect.
#pragma once

#include <cstdint>

#include "access/suite.h"
#include "hostapi/suites/app.h"

namespace varilum {

// [UI thread] Open from construction on; closed on destruction.
class HostProgressDialog {
 public:
  // A determinate bar under title (UTF-16), with the host's own cancel button. Throws when the
  // host has no such dialogs.
  HostProgressDialog(const PF_InData& in, const char16_t* title);
  HostProgressDialog(const HostProgressDialog&) = delete;
  HostProgressDialog& operator=(const HostProgressDialog&) = delete;
  ~HostProgressDialog();

  // Result of opening; with an error there is no dialog.
  std::int32_t error() const noexcept { return error_; }

  // PF_Interrupt_CANCEL when the user asked to stop.
  std::int32_t update(std::int32_t done, std::int32_t count) noexcept;

 private:
  Suite<PFAppSuite6> suite_;
  PF_AppProgressDialogP dialog_ = nullptr;
  std::int32_t error_;
};

}  // namespace varilum
