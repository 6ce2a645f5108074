// access/host_progress_dialog.cpp — the progress dialog that the host shows for the effect.
#include "access/host_progress_dialog.h"

#include <cstddef>

namespace varilum {
namespace {

constexpr std::size_t kTitleUnits = 26;  // with the NUL

}  // namespace

HostProgressDialog::HostProgressDialog(const PF_InData& in, const char16_t* title)
    : suite_(in, kPFAppSuite, kPFAppSuiteVersion6) {
  std::uint16_t units[kTitleUnits] = {};
  for (std::size_t i = 0; i + 1 < kTitleUnits && title[i] != 0; ++i) units[i] = title[i];
  error_ = suite_->PF_CreateNewAppProgressDialog(units, nullptr, 0, &dialog_);
}

HostProgressDialog::~HostProgressDialog() {
  if (error_ == 0) suite_->PF_DisposeAppProgressDialog(dialog_);
}

std::int32_t HostProgressDialog::update(std::int32_t done, std::int32_t count) noexcept {
  return suite_->PF_AppProgressDialogUpdate(dialog_, done, count);
}

}  // namespace varilum
