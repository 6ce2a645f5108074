// host/faults.h — refusing what a real host may refuse, on demand.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <limits>

namespace host {

enum class CallKind : std::uint8_t {
  newHandle,
  lockHandle,
  resizeHandle,
  checkoutParam,
  checkoutLayer,  // check-out of parameter 0, and of layers in pre-render
  checkinParam,
  acquireSuite,
  addParam,
  registerUi,
  iterate,
  fill,
  copy,
  progress,
  infoText,
  guidMixIn,
  checkoutPixels,
  checkoutOutput,
  getPixelFormat,
  updateParamUi,
  script,
  registerAegp,
  isRenderEngine,
  backgroundColour,
  drawingReference,  // of a context; also supplier and surface
  fontSize,
  newDrawingObject,
  pathCall,
  drawCall,
  asyncManager,
  newEffectRef,
  renderOptions,
  asyncFrame,
  receiptWorld,
  fillWorld,
  count_
};

// An error to arm with: the call succeeds, and what it should have given is missing. For calls that
// give something: addresses are null, records empty, values 0.
inline constexpr std::int32_t kGivesNothing = std::numeric_limits<std::int32_t>::min();

// What a callback that leaves its answer empty returns for an error of Faults::check().
constexpr std::int32_t refusal(std::int32_t error) noexcept {
  return error == kGivesNothing ? 0 : error;
}

// A plan of refusals, read by every callback. With no plan, a call costs one relaxed load.
// Counters run from arm() on, until disarm(); thread-safe. To count without refusing, arm with an n
// that is never reached.
class Faults {
 public:
  // The n-th (1-based) call of this kind from now on fails with error (null for calls that give
  // addresses; an error of 0 stands for 4, out of memory). With sticky, all later ones of the kind
  // too.
  void arm(CallKind kind, std::uint64_t n, std::int32_t error, bool sticky = false) noexcept;
  void disarm() noexcept;

  // Calls of this kind since the last reset, failed ones included.
  std::uint64_t calls(CallKind kind) const noexcept;
  // Refusals made since the last reset.
  std::uint64_t injected() const noexcept;
  void resetCounts() noexcept;

  // For callbacks: counts the call, and gives the error to answer with, or 0.
  std::int32_t check(CallKind kind) noexcept {
    return armed_.load(std::memory_order_relaxed) ? checkPlan(kind) : 0;
  }

 private:
  static constexpr auto kKinds = static_cast<std::size_t>(CallKind::count_);
  static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();
  struct Plan {
    std::atomic<std::uint64_t> calls{0};
    std::atomic<std::uint64_t> failAt{kNever};
    std::atomic<std::int32_t> error{0};
    std::atomic<bool> sticky{false};
  };
  std::int32_t checkPlan(CallKind kind) noexcept;
  Plan& planOf(CallKind kind) noexcept { return plans_[static_cast<std::size_t>(kind)]; }

  std::array<Plan, kKinds> plans_;
  std::atomic<bool> armed_{false};
  std::atomic<std::uint64_t> injected_{0};
};

}  // namespace host
