// host/faults.cpp — refusing what a real host may refuse, on demand.
#include "host/faults.h"

#include "hostapi/commands.h"

namespace host {

void Faults::arm(CallKind kind, std::uint64_t n, std::int32_t error, bool sticky) noexcept {
  Plan& plan = planOf(kind);
  const std::uint64_t made = plan.calls.load();
  plan.error.store(error == 0 ? PF_Err_OUT_OF_MEMORY : error);
  plan.sticky.store(sticky);
  plan.failAt.store(n > kNever - made ? kNever : made + n);
  armed_.store(true);
}

void Faults::disarm() noexcept {
  armed_.store(false);
  for (Plan& plan : plans_) {
    plan.failAt.store(kNever);
    plan.sticky.store(false);
  }
}

std::uint64_t Faults::calls(CallKind kind) const noexcept {
  return plans_[static_cast<std::size_t>(kind)].calls.load();
}

std::uint64_t Faults::injected() const noexcept {
  return injected_.load();
}

void Faults::resetCounts() noexcept {
  for (Plan& plan : plans_) {
    const std::uint64_t made = plan.calls.exchange(0);
    const std::uint64_t at = plan.failAt.load();
    if (at != kNever) plan.failAt.store(at > made ? at - made : 0);
  }
  injected_.store(0);
}

std::int32_t Faults::checkPlan(CallKind kind) noexcept {
  Plan& plan = planOf(kind);
  const std::uint64_t call = plan.calls.fetch_add(1) + 1;
  const std::uint64_t at = plan.failAt.load();
  if (call != at && !(call > at && plan.sticky.load())) return 0;
  injected_.fetch_add(1);
  return plan.error.load();
}

}  // namespace host
