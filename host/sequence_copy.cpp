// host/sequence_copy.cpp — one live copy of an effect's sequence data.
#include "host/sequence_copy.h"

#include <utility>

#include "host/effect_state.h"
#include "host/error.h"
#include "host/frame_time.h"
#include "host/handles.h"

namespace host {
namespace {

constexpr std::int16_t kFirstMinorWithGetFlattened = 9;

std::vector<PF_ParamDef> definitionsOf(const EffectState& effect) {
  std::vector<PF_ParamDef> definitions;
  for (const ParameterDeclaration& declaration : effect.declarations) {
    definitions.push_back(declaration.definition);
    // The default handle is the host's own affair after the declaration.
    if (declaration.definition.param_type == PF_Param_ARBITRARY_DATA) {
      definitions.back().u.arb_d.value = nullptr;
    } else if (declaration.definition.param_type == PF_Param_LAYER) {
      // Pixels come with check-outs alone.
      definitions.back().u.ld = {};
      definitions.back().u.ld.dephault = declaration.definition.u.ld.dephault;
    }
  }
  return definitions;
}

}  // namespace

SequenceCopy::SequenceCopy(EffectState& itsEffect, FrameSource& itsLayer, ParameterStore itsParams,
                           bool itsRenderOnly)
    : effect(itsEffect),
      layer(itsLayer),
      ref(newEffectRef()),
      params(std::move(itsParams)),
      definitions(definitionsOf(itsEffect)),
      renderOnly(itsRenderOnly) {}

SequenceCopy::~SequenceCopy() {
  setDown();
}

LayerChoice SequenceCopy::layerChoice(std::int32_t index) const noexcept {
  if (index == 0) return LayerChoice::own;
  if (index < 0 || index >= static_cast<std::int32_t>(definitions.size())) return LayerChoice::no;
  const PF_ParamDef& definition = definitions[static_cast<std::size_t>(index)];
  if (definition.param_type != PF_Param_LAYER) return LayerChoice::no;
  return definition.u.ld.dephault == PF_LayerDefault_MYSELF ? LayerChoice::own : LayerChoice::empty;
}

std::int32_t SequenceCopy::frameTime(std::int32_t frame) const noexcept {
  return timeOf(layer.info(), frame);
}

std::int32_t SequenceCopy::renderTime(std::int32_t frame) const noexcept {
  return frameTime(frame) + effect.state.options.stress.timeOffset;
}

void SequenceCopy::setUp() {
  Command command(effect, this, PF_Cmd_SEQUENCE_SETUP);
  if (!effect.state.options.stress.withoutParams) command.giveParams();
  const std::int32_t result = command.send();
  if (result != 0) setDown();
  command.require(result, "be applied to the layer");
}

void SequenceCopy::resetUp(std::vector<std::byte> flat) {
  // Of an effect that keeps nothing, there is nothing to hand back.
  if (!flat.empty()) sequenceData = createHandle(effect.state, flat);
  std::vector<std::byte>().swap(flat);  // the effect is about to need as much again
  Command command(effect, this, PF_Cmd_SEQUENCE_RESETUP);
  if (renderOnly) command.in.in_flags = PF_InFlag_PROJECT_IS_RENDER_ONLY;
  if (!effect.state.options.stress.withoutParams) command.giveParams();
  const std::int32_t result = command.send();
  if (result != 0) setDown();
  command.require(result, "open its saved data");
}

void SequenceCopy::setDown() noexcept {
  if (sequenceData == nullptr) return;
  try {
    Command command(effect, this, PF_Cmd_SEQUENCE_SETDOWN);
    if (!effect.state.options.stress.withoutParams) command.giveParams();
    const std::int32_t result = command.send();
    if (result != 0) {
      effect.state.report("SEQUENCE_SETDOWN gave " + std::to_string(result));
    }
  } catch (...) {
    effect.state.report("an instance could not be taken down");
  }
  sequenceData = nullptr;
}

std::vector<std::byte> SequenceCopy::flatten() {
  const bool inPlace = effect.state.role == Role::premiere ||
                       effect.state.version.minor < kFirstMinorWithGetFlattened ||
                       !effect.supports(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA);
  if (inPlace) return flattenInPlace();

  Command command(effect, this, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA);
  if (!effect.state.options.stress.withoutParams) command.giveParams();
  const std::int32_t result = command.send();
  void** image = command.out.sequence_data;
  std::vector<std::byte> flat;
  if (result == 0 && isLiveHandle(image)) flat = handleContents(image);
  if (image != nullptr && image != sequenceData) {
    if (isLiveHandle(image) && handleLocks(image) != 0) {
      effect.state.report("the flattened data is locked");
    }
    disposeHandle(image);
  }
  command.require(result, "hand out its data");
  if (sequenceData != nullptr && image == nullptr) {
    throw CommandError("The effect gave no data to save.", command.command, result);
  }
  return flat;
}

std::vector<std::byte> SequenceCopy::flattenInPlace() {
  const bool needed = (effect.outFlags &
                       static_cast<std::uint32_t>(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING)) != 0;
  if (sequenceData == nullptr) return {};
  if (!needed) return handleContents(sequenceData);
  {
    Command command(effect, this, PF_Cmd_SEQUENCE_FLATTEN);
    if (!effect.state.options.stress.withoutParams) command.giveParams();
    command.require(command.send(), "flatten its data");
  }
  if (sequenceData == nullptr) return {};
  std::vector<std::byte> flat = handleContents(sequenceData);
  Command command(effect, this, PF_Cmd_SEQUENCE_RESETUP);
  if (!effect.state.options.stress.withoutParams) command.giveParams();
  // The image is in the host's hands too: an effect that could not open it gets it once more.
  if (command.send() != 0) {
    setDown();
    resetUp(flat);
  }
  return flat;
}

std::int32_t SequenceCopy::dynamicFlags(std::int32_t time) {
  Command command(effect, this, PF_Cmd_QUERY_DYNAMIC_FLAGS);
  command.setTime(time);
  command.require(command.send(), "tell its present flags");
  return command.out.out_flags2;
}

}  // namespace host
