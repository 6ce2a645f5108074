// ui/drawbot_suites.h — the host's drawing suites, held while a panel is drawn.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/suites/drawbot.h"

namespace varilum {

struct DrawbotSuites {
  const DRAWBOT_DrawbotSuite1* draw = nullptr;
  const DRAWBOT_SupplierSuite1* supplier = nullptr;
  const DRAWBOT_SurfaceSuite2* surface = nullptr;
  const DRAWBOT_PathSuite1* path = nullptr;
};

// One suite. What goes wrong is also shown to the user: with message, or a text of its own when
// message is null. PF_Err_BAD_CALLBACK_PARAM: the host does not have it, or will not take it back.
std::int32_t acquireSuite(const PF_InData& in, PF_OutData& out, const char* name,
                          std::int32_t version, const char* message, const void** suite) noexcept;
std::int32_t releaseSuite(const PF_InData& in, PF_OutData& out, const char* name,
                          std::int32_t version, const char* message) noexcept;

// All four, in the record's order, or none. Releasing goes on after a failure and gives the first.
// PF_Err_UNRECOGNIZED_PARAM_TYPE: suites is null.
std::int32_t acquireDrawbotSuites(const PF_InData& in, PF_OutData& out,
                                  DrawbotSuites* suites) noexcept;
std::int32_t releaseDrawbotSuites(const PF_InData& in, PF_OutData& out) noexcept;

// The four, given back on destruction, or before, when the result of doing so matters.
class HeldDrawbotSuites {
 public:
  HeldDrawbotSuites(const PF_InData& in, PF_OutData& out) noexcept
      : in_(in), out_(out), error_(acquireDrawbotSuites(in, out, &suites_)), held_(error_ == 0) {}
  HeldDrawbotSuites(const HeldDrawbotSuites&) = delete;
  HeldDrawbotSuites& operator=(const HeldDrawbotSuites&) = delete;
  ~HeldDrawbotSuites() { release(); }

  // Result of acquiring; with an error there are no suites.
  std::int32_t error() const noexcept { return error_; }
  const DrawbotSuites& suites() const noexcept { return suites_; }

  std::int32_t release() noexcept {
    if (!held_) return 0;
    held_ = false;
    return releaseDrawbotSuites(in_, out_);
  }

 private:
  const PF_InData& in_;
  PF_OutData& out_;
  DrawbotSuites suites_;
  std::int32_t error_;
  bool held_;
};

// The drawing reference of an event's context; null when the host has none for it.
std::int32_t drawingReference(const PF_InData& in, PF_OutData& out, PF_Context** context,
                              DRAWBOT_DrawRef& reference) noexcept;

// The colour behind the host's own controls.
std::int32_t backgroundColor(const PF_InData& in, PF_OutData& out,
                             DRAWBOT_ColorRGBA& color) noexcept;

}  // namespace varilum
