// host/suite_registry.cpp — which suites the host has, and who holds them.
#include "host/suite_registry.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>
#include <string>

#include "host/callback_tables.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "host/suite_tables.h"
#include "hostapi/suites/adv_app.h"
#include "hostapi/suites/aegp_effect.h"
#include "hostapi/suites/aegp_interface.h"
#include "hostapi/suites/aegp_layer_render_options.h"
#include "hostapi/suites/aegp_memory.h"
#include "hostapi/suites/aegp_render.h"
#include "hostapi/suites/aegp_utility.h"
#include "hostapi/suites/aegp_world.h"
#include "hostapi/suites/app.h"
#include "hostapi/suites/app_info.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/custom_ui.h"
#include "hostapi/suites/drawbot.h"
#include "hostapi/suites/handle.h"
#include "hostapi/suites/iterate.h"
#include "hostapi/suites/param_utils.h"
#include "hostapi/suites/varilum_message.h"
#include "hostapi/suites/varilum_progress.h"
#include "hostapi/suites/world.h"

namespace host {
namespace {

enum Roles : unsigned { kAe = 1, kPremiere = 2, kOther = 4, kAll = 7 };

struct Entry {
  const char* name;
  std::int32_t version;
  unsigned roles;
  const void* (*table)();
};

constexpr std::int32_t kSurfaceSuiteVersion1 = 1;  // a shorter table

constexpr Entry kSuites[] = {
    {kPFHandleSuite, kPFHandleSuiteVersion1, kAll, handleSuite},
    {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3, kAll, paramUtilsSuite},
    {kPFAppSuite, kPFAppSuiteVersion4, kAll, appSuite4},
    {kPFAppSuite, kPFAppSuiteVersion6, kAe, appSuite6},
    {kPFAdvAppSuite, kPFAdvAppSuiteVersion2, kAe, advAppSuite},
    {kPFWorldSuite, kPFWorldSuiteVersion2, kAll, worldSuite},
    {kPFIterate8Suite, kPFIterate8SuiteVersion1, kAll, iterate8Suite},
    {kPFIterate8Suite, kPFIterate8SuiteVersion2, kAe, iterate8Suite},
    {kPFIterate16Suite, kPFIterate16SuiteVersion1, kAe, iterate16Suite},
    {kPFIterate16Suite, kPFIterate16SuiteVersion2, kAe, iterate16Suite},
    {kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1, kAe, iterateFloatSuite},
    {kPFIterateFloatSuite, kPFIterateFloatSuiteVersion2, kAe, iterateFloatSuite},
    {kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1, kAll, customUiSuite1},
    {kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion2, kAe, customUiSuite2},
    {kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1, kAll, drawbotDrawSuite},
    {kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1, kAll, drawbotSupplierSuite},
    {kDRAWBOT_SurfaceSuite, kSurfaceSuiteVersion1, kAll, drawbotSurfaceSuite},
    {kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2, kAll, drawbotSurfaceSuite},
    {kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1, kAll, drawbotPathSuite},
    {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5, kAe, aegpUtilitySuite},
    {kAEGPMemorySuite, kAEGPMemorySuiteVersion1, kAe, aegpMemorySuite},
    {kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1, kAe, aegpInterfaceSuite},
    {kAEGPEffectSuite, kAEGPEffectSuiteVersion4, kAe, aegpEffectSuite},
    {kAEGPLayerRenderOptionsSuite, kAEGPLayerRenderOptionsSuiteVersion2, kAe,
     layerRenderOptionsSuite},
    {kAEGPRenderAsyncManagerSuite, kAEGPRenderAsyncManagerSuiteVersion1, kAe,
     renderAsyncManagerSuite},
    {kAEGPRenderSuite, kAEGPRenderSuiteVersion5, kAe, renderSuite},
    {kAEGPWorldSuite, kAEGPWorldSuiteVersion3, kAe, aegpWorldSuite},
    {kPrSDKAppInfoSuite, kPrSDKAppInfoSuiteVersion, kPremiere, appInfoSuite},
    {kVarilumMessageSuite, kVarilumMessageSuiteVersion1, kAll, messageSuite},
    {kVarilumProgressSuite, kVarilumProgressSuiteVersion1, kAll, progressSuite},
};
static_assert(std::size(kSuites) <= kMaxSuites);

unsigned maskOf(Role role) noexcept {
  switch (role) {
    case Role::afterEffects:
      return kAe;
    case Role::premiere:
      return kPremiere;
    case Role::other:
      break;
  }
  return kOther;
}

bool withheld(const HostState& host, std::string_view name) noexcept {
  return name == kVarilumProgressSuite && !host.options.showsEffectDialogs;
}

std::int32_t acquire(const char* name, std::int32_t version, const void** table) {
  if (table == nullptr || name == nullptr) return kSPBadParameterError;
  *table = nullptr;
  HostState* host = currentHost();
  if (host == nullptr) return kSPSuiteNotFoundError;
  if (const std::int32_t error = host->faults.check(CallKind::acquireSuite)) return refusal(error);
  const int suite = findSuite(host->role, name, version);
  if (suite < 0 || withheld(*host, name)) {
    try {
      host->suites.noteMiss(name, version);
    } catch (const std::bad_alloc&) {
      return kSPOutOfMemoryError;
    }
    return kSPSuiteNotFoundError;
  }
  if (Command* command = currentCommand()) {
    try {
      command->suites.push_back(suite);
    } catch (const std::bad_alloc&) {
      return kSPOutOfMemoryError;
    }
  }
  host->suites.acquire(suite);
  *table = suiteTable(suite);
  return kSPNoError;
}

std::int32_t release(const char* name, std::int32_t version) {
  HostState* host = currentHost();
  if (host == nullptr || name == nullptr) return kSPBadParameterError;
  const int suite = findSuite(host->role, name, version);
  if (suite < 0 || !host->suites.release(suite)) {
    host->report("a suite was released that is not held");
    return suite < 0 ? kSPSuiteNotFoundError : kSPSuiteAlreadyReleasedError;
  }
  if (Command* command = currentCommand()) {
    const auto held = std::find(command->suites.begin(), command->suites.end(), suite);
    if (held != command->suites.end()) command->suites.erase(held);
  }
  return kSPNoError;
}

std::int32_t isEqual(const char* a, const char* b) {
  return a != nullptr && b != nullptr && std::strcmp(a, b) == 0 ? 1 : 0;
}

std::int32_t allocateBlock(std::uint64_t bytes, void** block) {
  if (block == nullptr) return kSPBadParameterError;
  *block = std::malloc(static_cast<std::size_t>(bytes == 0 ? 1 : bytes));
  return *block == nullptr ? kSPOutOfMemoryError : kSPNoError;
}

std::int32_t freeBlock(void* block) {
  std::free(block);
  return kSPNoError;
}

std::int32_t reallocateBlock(void* block, std::uint64_t bytes, void** fresh) {
  if (fresh == nullptr) return kSPBadParameterError;
  void* const moved = std::realloc(block, static_cast<std::size_t>(bytes == 0 ? 1 : bytes));
  if (moved == nullptr) return kSPOutOfMemoryError;
  *fresh = moved;
  return kSPNoError;
}

std::int32_t undefined() {
  if (HostState* host = currentHost()) host->report("a function of a released suite was called");
  return kSPUnimplementedError;
}

}  // namespace

int findSuite(Role role, std::string_view name, std::int32_t version) noexcept {
  for (std::size_t i = 0; i < std::size(kSuites); ++i) {
    const Entry& entry = kSuites[i];
    if (entry.version == version && name == entry.name && (entry.roles & maskOf(role)) != 0) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

const void* suiteTable(int suite) noexcept {
  return kSuites[suite].table();
}
const char* suiteName(int suite) noexcept {
  return kSuites[suite].name;
}
std::int32_t suiteVersion(int suite) noexcept {
  return kSuites[suite].version;
}

bool SuiteLedger::release(int suite) noexcept {
  std::atomic<std::int64_t>& held = held_[static_cast<std::size_t>(suite)];
  std::int64_t count = held.load();
  while (count > 0) {
    if (held.compare_exchange_weak(count, count - 1)) return true;
  }
  return false;
}

std::int64_t SuiteLedger::total() const noexcept {
  std::int64_t sum = 0;
  for (const auto& held : held_) sum += held.load();
  return sum;
}

void SuiteLedger::noteMiss(std::string_view name, std::int32_t version) {
  const std::lock_guard guard(mutex_);
  misses_.insert(std::string(name) + " " + std::to_string(version));
}

std::vector<std::string> SuiteLedger::misses() const {
  const std::lock_guard guard(mutex_);
  return {misses_.begin(), misses_.end()};
}

SPBasicSuite* basicSuite() {
  static SPBasicSuite table{acquire,   release,         isEqual,  allocateBlock,
                            freeBlock, reallocateBlock, undefined};
  return &table;
}

}  // namespace host
