// host/effect.h — an effect made known to the host: set up, its parameters declared.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/effect_module.h"
#include "host/host.h"
#include "hostapi/parameters.h"

namespace host {

// A declared parameter; texts copied. Index 0 is the input layer.
struct ParameterDeclaration {
  PF_ParamDef definition{};  // text pointers null; values the defaults
  std::string name;
  std::vector<std::string> choices;  // of a popup
  std::string buttonText;
  std::int32_t id = 0;  // identity in saved projects
};

class EffectState;

// Sends GLOBAL_SETUP and PARAMS_SETUP; GLOBAL_SETDOWN at the end. Throws CommandError when the
// effect refuses, with its message. Checks the flags and version against the property list.
class Effect {
 public:
  Effect(Host& host, const EffectModule& module);
  ~Effect();
  Effect(const Effect&) = delete;
  Effect& operator=(const Effect&) = delete;

  Host& host() noexcept;
  const std::vector<ParameterDeclaration>& parameters() const noexcept;
  // Index of the parameter with this name or, for buttons, this button text. Throws Error.
  std::int32_t indexOf(const std::string& name) const;

  std::uint32_t version() const noexcept;  // packed, as the effect reported it
  std::uint32_t outFlags() const noexcept;
  std::uint32_t outFlags2() const noexcept;

  // The text of the effect's About box.
  std::string about();

  EffectState& state() noexcept { return *state_; }

 private:
  std::unique_ptr<EffectState> state_;
};

}  // namespace host
