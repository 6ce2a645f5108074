// host/effect.cpp — an effect made known to the host.
#include "host/effect.h"

#include <cstdio>

#include "host/command.h"
#include "host/effect_state.h"
#include "host/error.h"
#include "host/handles.h"
#include "host/parameter_declaration.h"

namespace host {
namespace {

void compare(HostState& state, const char* what, std::uint32_t listed, std::uint32_t reported) {
  if (listed == reported) return;
  char text[160];
  std::snprintf(text, sizeof text,
                "the property list gives %s as 0x%08X, the effect itself as 0x%08X", what, listed,
                reported);
  state.report(text);
}

void setUpGlobally(EffectState& effect) {
  Command command(effect, nullptr, PF_Cmd_GLOBAL_SETUP);
  command.in.num_params = 0;
  const std::int32_t result = command.send();
  if (result != 0) {
    // Nobody else will: a refused effect gets no GLOBAL_SETDOWN.
    if (isLiveHandle(command.out.global_data)) disposeHandle(command.out.global_data);
    command.require(result, "start in this host");
  }
  effect.globalData = command.out.global_data;
  if (effect.globalData != nullptr) markKept(effect.globalData);
  effect.version = command.out.my_version;
  effect.outFlags = static_cast<std::uint32_t>(command.out.out_flags);
  effect.outFlags2 = static_cast<std::uint32_t>(command.out.out_flags2);
  if (effect.properties) {
    compare(effect.state, "the version", effect.properties->effectVersion, effect.version);
    compare(effect.state, "the flags", effect.properties->outFlags, effect.outFlags);
    compare(effect.state, "the second flags", effect.properties->outFlags2, effect.outFlags2);
  }
}

void setUpParameters(EffectState& effect) {
  effect.declarations.push_back(declareLayer());
  Command command(effect, nullptr, PF_Cmd_PARAMS_SETUP);
  command.in.num_params = 1;
  command.require(command.send(), "declare its parameters");
  const auto declared = static_cast<std::int32_t>(effect.declarations.size());
  if (command.out.num_params != declared) {
    effect.state.report("the effect declared " + std::to_string(declared) +
                        " parameters with the layer, and says it has " +
                        std::to_string(command.out.num_params));
  }
}

void setDownGlobally(EffectState& effect) noexcept {
  HostState& state = effect.state;
  try {
    // The defaults are disposed of as any other value, while the effect can still do it.
    for (const ParameterDeclaration& declaration : effect.declarations) {
      const PF_ParamDef& definition = declaration.definition;
      if (definition.param_type != PF_Param_ARBITRARY_DATA) continue;
      const PF_ArbitraryDef& arbitrary = definition.u.arb_d;
      const ArbitraryValue last({&effect, arbitrary.id, arbitrary.refconPV}, arbitrary.dephault);
    }
    Command command(effect, nullptr, PF_Cmd_GLOBAL_SETDOWN);
    const std::int32_t result = command.send();
    if (result != 0) state.report("GLOBAL_SETDOWN gave " + std::to_string(result));
    if (effect.globalData != nullptr && isLiveHandle(effect.globalData)) {
      state.report("GLOBAL_SETDOWN left the global data behind");
      disposeHandle(effect.globalData);
    }
  } catch (...) {
    state.report("the effect could not be taken down");
  }
}

}  // namespace

EffectState::EffectState(Host& itsHost, const EffectModule& module)
    : host(itsHost),
      state(itsHost.state()),
      entry(module.entry()),
      properties(module.properties()),
      ref(newEffectRef()),
      name(properties && !properties->name.empty() ? properties->name
                                                   : module.path().stem().string()) {}

bool EffectState::wantsUpdates() const noexcept {
  if ((outFlags & static_cast<std::uint32_t>(PF_OutFlag_SEND_UPDATE_PARAMS_UI)) != 0) return true;
  if (state.role != Role::afterEffects) return false;
  for (const ParameterDeclaration& declaration : declarations) {
    if ((declaration.definition.flags & PF_ParamFlag_SUPERVISE) != 0) return true;
  }
  return false;
}

Effect::Effect(Host& host, const EffectModule& module)
    : state_(std::make_unique<EffectState>(host, module)) {
  setUpGlobally(*state_);
  try {
    setUpParameters(*state_);
  } catch (...) {
    setDownGlobally(*state_);
    throw;
  }
  for (const ParameterDeclaration& declaration : state_->declarations) {
    if (declaration.definition.param_type == PF_Param_ARBITRARY_DATA) {
      markKept(declaration.definition.u.arb_d.dephault);
    }
  }
}

Effect::~Effect() {
  setDownGlobally(*state_);
}

Host& Effect::host() noexcept {
  return state_->host;
}

const std::vector<ParameterDeclaration>& Effect::parameters() const noexcept {
  return state_->declarations;
}

std::int32_t Effect::indexOf(const std::string& name) const {
  const auto& declarations = state_->declarations;
  for (std::size_t i = 1; i < declarations.size(); ++i) {
    if (declarations[i].name == name || (!name.empty() && declarations[i].buttonText == name)) {
      return static_cast<std::int32_t>(i);
    }
  }
  throw Error("The effect has no parameter \"" + name + "\".");
}

std::uint32_t Effect::version() const noexcept {
  return state_->version;
}
std::uint32_t Effect::outFlags() const noexcept {
  return state_->outFlags;
}
std::uint32_t Effect::outFlags2() const noexcept {
  return state_->outFlags2;
}

std::string Effect::about() {
  Command command(*state_, nullptr, PF_Cmd_ABOUT);
  command.quiet = true;
  command.require(command.send(), "show its About text");
  return command.out.return_msg;
}

}  // namespace host
