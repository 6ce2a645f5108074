// host/effect_state.h — the inside of an effect: what it told the host of itself.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/effect.h"
#include "host/host_state.h"
#include "hostapi/scalars.h"

namespace host {

class EffectState {
 public:
  EffectState(Host& itsHost, const EffectModule& module);

  Host& host;
  HostState& state;
  const EntryPoint entry;
  const std::optional<PropertyList> properties;
  const PF_ProgPtr ref;

  std::string name;  // for captions
  std::vector<ParameterDeclaration> declarations;
  void** globalData = nullptr;
  std::uint32_t version = 0;
  std::uint32_t outFlags = 0;
  std::uint32_t outFlags2 = 0;
  std::int32_t eventMask = 0;  // windows that the effect registered for

  bool supports(std::int32_t outFlag2) const noexcept {
    return (outFlags2 & static_cast<std::uint32_t>(outFlag2)) != 0;
  }
  // Whether UPDATE_PARAMS_UI is to be sent.
  bool wantsUpdates() const noexcept;
};

}  // namespace host
