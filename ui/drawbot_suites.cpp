// ui/drawbot_suites.cpp — the host's drawing suites, held while a panel is drawn.
#include "ui/drawbot_suites.h"

#include <iterator>

#include "access/bounded_text.h"
#include "hostapi/commands.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/custom_ui.h"

namespace varilum {
namespace {

constexpr const char* kNotAcquired = "Not able to acquire AEFX Suite.";
constexpr const char* kNotReleased = "Not able to release AEFX Suite.";
constexpr const char* kNoSuitePointer = "NULL suite pointer passed to AEFX_AcquireDrawbotSuites";

struct SuiteName {
  const char* name;
  std::int32_t version;
};

// In the order in which they are acquired and released.
constexpr SuiteName kDrawbotSuites[] = {
    {kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1},
    {kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1},
    {kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2},
    {kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1},
};

std::int32_t report(PF_OutData& out, const char* message, std::int32_t error) noexcept {
  out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
  copyText(out.return_msg, message);
  return error;
}

// Channels of 0..65535 to 0..1.
constexpr float fraction(std::uint16_t channel) noexcept {
  return static_cast<float>(channel) / 65535.0F;
}

}  // namespace

std::int32_t acquireSuite(const PF_InData& in, PF_OutData& out, const char* name,
                          std::int32_t version, const char* message, const void** suite) noexcept {
  const SPBasicSuite* basic = in.pica_basicP;
  const void* table = nullptr;
  if (basic == nullptr || basic->AcquireSuite(name, version, &table) != kSPNoError ||
      table == nullptr) {
    return report(out, message != nullptr ? message : kNotAcquired, PF_Err_BAD_CALLBACK_PARAM);
  }
  *suite = table;
  return 0;
}

std::int32_t releaseSuite(const PF_InData& in, PF_OutData& out, const char* name,
                          std::int32_t version, const char* message) noexcept {
  const SPBasicSuite* basic = in.pica_basicP;
  if (basic == nullptr || basic->ReleaseSuite(name, version) != kSPNoError) {
    return report(out, message != nullptr ? message : kNotReleased, PF_Err_BAD_CALLBACK_PARAM);
  }
  return 0;
}

std::int32_t acquireDrawbotSuites(const PF_InData& in, PF_OutData& out,
                                  DrawbotSuites* suites) noexcept {
  if (suites == nullptr) return report(out, kNoSuitePointer, PF_Err_UNRECOGNIZED_PARAM_TYPE);
  const void* tables[std::size(kDrawbotSuites)] = {};
  for (std::size_t i = 0; i < std::size(kDrawbotSuites); ++i) {
    const auto& [name, version] = kDrawbotSuites[i];
    const std::int32_t error = acquireSuite(in, out, name, version, nullptr, &tables[i]);
    if (error == 0) continue;
    while (i-- > 0) {
      releaseSuite(in, out, kDrawbotSuites[i].name, kDrawbotSuites[i].version, kNotAcquired);
    }
    return error;
  }
  suites->draw = static_cast<const DRAWBOT_DrawbotSuite1*>(tables[0]);
  suites->supplier = static_cast<const DRAWBOT_SupplierSuite1*>(tables[1]);
  suites->surface = static_cast<const DRAWBOT_SurfaceSuite2*>(tables[2]);
  suites->path = static_cast<const DRAWBOT_PathSuite1*>(tables[3]);
  return 0;
}

std::int32_t releaseDrawbotSuites(const PF_InData& in, PF_OutData& out) noexcept {
  std::int32_t first = 0;
  for (const auto& [name, version] : kDrawbotSuites) {
    const std::int32_t error = releaseSuite(in, out, name, version, nullptr);
    if (first == 0) first = error;
  }
  return first;
}

std::int32_t drawingReference(const PF_InData& in, PF_OutData& out, PF_Context** context,
                              DRAWBOT_DrawRef& reference) noexcept {
  reference = nullptr;
  const void* table = nullptr;
  std::int32_t error = acquireSuite(in, out, kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1,
                                    nullptr, &table);
  if (error != 0) return error;
  if (context != nullptr) {
    const auto* suite = static_cast<const PF_EffectCustomUISuite1*>(table);
    error = suite->PF_GetDrawingReference(context, &reference);
  }
  const std::int32_t released =
      releaseSuite(in, out, kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1, nullptr);
  return error != 0 ? error : released;
}

std::int32_t backgroundColor(const PF_InData& in, PF_OutData& out,
                             DRAWBOT_ColorRGBA& color) noexcept {
  const void* table = nullptr;
  std::int32_t error = acquireSuite(in, out, kPFAppSuite, kPFAppSuiteVersion4, nullptr, &table);
  if (error != 0) return error;
  PF_App_Color app{};
  error = static_cast<const PFAppSuite4*>(table)->PF_AppGetBgColor(&app);
  color = {fraction(app.red), fraction(app.green), fraction(app.blue), 1.0F};
  const std::int32_t released = releaseSuite(in, out, kPFAppSuite, kPFAppSuiteVersion4, nullptr);
  return error != 0 ? error : released;
}

}  // namespace varilum
