// plugin/global_setup.cpp — the effect's load and unload, and which host it runs in.
#include "plugin/global_setup.h"

#include <algorithm>
#include <cstdio>

#include "access/aegp_text.h"
#include "access/bounded_text.h"
#include "access/suite.h"
#include "hostapi/suites/aegp_utility.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/app_info.h"
#include "hostapi/suites/handle.h"
#include "platform/stay_loaded.h"
#include "resources/effect_identity.h"
#include "resources/string_table.h"
#include "stats/live_registry.h"

namespace varilum {
namespace {

constexpr std::int32_t kRefused = -1;
constexpr std::int16_t kHostMajor = 13;              // of the interface, in After Effects
constexpr std::int16_t kHostLeastMinor = 9;          // likewise: CC 2015
constexpr std::uint32_t kLeastApplicationMajor = 9;  // of Premiere Pro: CC 2015
constexpr std::intptr_t kRegistrationRefcon = 0xF00;
constexpr std::size_t kAfterEffectsVersionText = 16;

// A handle of the handle suite, locked for the command.
class NewGlobalState {
 public:
  explicit NewGlobalState(const PF_InData& in)
      : handles_(in, kPFHandleSuite, kPFHandleSuiteVersion1),
        handle_(handles_->host_new_handle(sizeof(GlobalState))) {
    if (handle_ == nullptr) return;
    state_ = static_cast<GlobalState*>(handles_->host_lock_handle(handle_));
    if (state_ == nullptr) handles_->host_dispose_handle(handle_);
  }
  NewGlobalState(const NewGlobalState&) = delete;
  NewGlobalState& operator=(const NewGlobalState&) = delete;
  ~NewGlobalState() {
    if (state_ != nullptr) handles_->host_unlock_handle(handle_);
  }

  GlobalState* get() const noexcept { return state_; }
  void** handle() const noexcept { return handle_; }

 private:
  const Suite<PF_HandleSuite1> handles_;
  void** handle_;
  GlobalState* state_ = nullptr;
};

void noteHost(const PF_InData& in, GlobalState& global) noexcept {
  global.isAfterEffects = in.appl_id == kAfterEffectsApplication ? 1 : 0;
  global.isPremiere = in.appl_id == kPremiereApplication ? 1 : 0;
  copyText(global.hostTag, global.isAfterEffects != 0 ? "FXTC"
                           : global.isPremiere != 0   ? "PrMr"
                                                      : "????");
  const auto [major, minor] = in.version;
  global.isSpec13_2 = major == 13 && minor == 2 ? 1 : 0;
  global.isSpec13_4 = major == 13 && minor >= 4 ? 1 : 0;
  global.isSpec13_7 = major == 13 && minor >= 7 ? 1 : 0;
  global.versionTextPending = global.isAfterEffects;
}

// Only this major version counts: a newer interface is refused like an old one.
std::int32_t setUpAfterEffects(const PF_InData& in, PF_OutData& out, GlobalState& global) {
  global.hostSupported =
      in.version.major == kHostMajor && in.version.minor >= kHostLeastMinor ? 1 : 0;
  if (global.hostSupported == 0) {
    copyText(out.return_msg, lookupString(kTextUnsupportedAfterEffects));
    return kRefused;
  }
  const Suite<AEGP_UtilitySuite5> utility{in, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5};
  return utility->AEGP_RegisterWithAEGP(reinterpret_cast<AEGP_GlobalRefcon>(kRegistrationRefcon),
                                        kEffectName, &global.aegpPluginId);
}

// The refusal is shown later, when a control is used.
void setUpOtherHost(const PF_InData& in, PF_OutData& out, GlobalState& global) {
  global.hostSupported = 1;
  const OptionalSuite<PrSDKAppInfoSuite> info{in, kPrSDKAppInfoSuite, kPrSDKAppInfoSuiteVersion};
  VersionInfo version{};
  if (!info || info->GetAppInfo(kAppInfo_Version, &version) != 0) return;
  global.hostSupported = version.major >= kLeastApplicationMajor ? 1 : 0;
  std::snprintf(global.hostVersionText, sizeof global.hostVersionText, "%d.%dx%d",
                static_cast<int>(version.major), static_cast<int>(version.minor),
                static_cast<int>(version.patch));
  if (global.hostSupported == 0) {
    copyText(out.return_msg, lookupString(kTextUnsupportedAfterEffects));
  }
}

std::int32_t noteRenderEngine(const PF_InData& in, GlobalState& global) {
  const Suite<PFAppSuite4> application{in, kPFAppSuite, kPFAppSuiteVersion4};
  char renderEngine = 0;
  const std::int32_t error = application->PF_IsRenderEngine(&renderEngine);
  if (error != 0) return error;
  global.renderEngine = global.isAfterEffects != 0 && renderEngine != 0 ? 1 : 0;
  return 0;
}

}  // namespace

std::int32_t globalSetup(const Command& command) {
  const PF_InData& in = command.in;
  PF_OutData& out = command.out;
  stayLoaded();
  const NewGlobalState state{in};
  if (state.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  GlobalState& global = *state.get();
  out.global_data = state.handle();
  global = GlobalState{};
  out.my_version = kEffectVersion;
  out.out_flags = kOutFlags;
  out.out_flags2 = kOutFlags2;
  fillLuminanceWeights(global.weights);
  noteHost(in, global);

  std::int32_t error = 0;
  if (global.isAfterEffects != 0) {
    error = setUpAfterEffects(in, out, global);
  } else {
    setUpOtherHost(in, out, global);
  }
  if (error == 0) error = noteRenderEngine(in, global);
  if (error == 0) global.showUsageNotes = 1;
  return error;
}

std::int32_t globalSetdown(const Command& command) {
  releaseRegistry(command.in);
  if (command.in.global_data == nullptr) return 0;
  const Suite<PF_HandleSuite1> handles{command.in, kPFHandleSuite, kPFHandleSuiteVersion1};
  handles->host_dispose_handle(command.in.global_data);
  return 0;
}

void fetchVersionText(const PF_InData& in, GlobalState& global) {
  if (global.versionTextPending == 0) return;
  const Suite<AEGP_UtilitySuite5> utility{in, kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5};
  const Suite<AEGP_MemorySuite1> memory{in, kAEGPMemorySuite, kAEGPMemorySuiteVersion1};
  AegpText result{memory};
  AegpText complaint{memory};
  const std::int32_t error = utility->AEGP_ExecuteScript(global.aegpPluginId, "app.version;", 0,
                                                         result.receive(), complaint.receive());
  if (error == 0) result.copyTo(global.hostVersionText, kAfterEffectsVersionText + 1);
  global.versionTextPending = 0;
}

}  // namespace varilum
