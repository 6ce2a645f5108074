// host/sequence_copy.h — one live copy of an effect's sequence data, with its view of the project.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/command.h"
#include "host/frame_source.h"
#include "host/layer_frame.h"
#include "host/parameter_store.h"

namespace host {

// What a parameter's index stands for as a layer. Compositions of one layer: a layer parameter is
// set to it, or to none, by its default.
enum class LayerChoice : std::uint8_t { no, own, empty };

// Used by one thread at a time. SEQUENCE_SETDOWN at the end.
class SequenceCopy {
 public:
  // Without sequence data yet: setUp() or resetUp() comes next.
  SequenceCopy(EffectState& effect, FrameSource& layer, ParameterStore params, bool renderOnly);
  ~SequenceCopy();
  SequenceCopy(const SequenceCopy&) = delete;
  SequenceCopy& operator=(const SequenceCopy&) = delete;

  // SEQUENCE_SETUP, or RESETUP with a flat image (empty: with none). Throws when the effect
  // refuses.
  void setUp();
  void resetUp(std::vector<std::byte> flat);

  // The flat image: GET_FLATTENED where effect and host know it, else FLATTEN and RESETUP.
  std::vector<std::byte> flatten();

  // QUERY_DYNAMIC_FLAGS at this time; gives out_flags2 as the effect answered.
  std::int32_t dynamicFlags(std::int32_t time);

  std::int32_t frameTime(std::int32_t frame) const noexcept;
  // The time that renders of the frame are for.
  std::int32_t renderTime(std::int32_t frame) const noexcept;
  LayerChoice layerChoice(std::int32_t index) const noexcept;

  EffectState& effect;
  FrameSource& layer;
  const PF_ProgPtr ref;
  ParameterStore params;
  // Declarations as the effect redefined them for this copy; values unset.
  std::vector<PF_ParamDef> definitions;
  void** sequenceData = nullptr;
  const bool renderOnly;
  FramePool frames;

 private:
  void setDown() noexcept;
  std::vector<std::byte> flattenInPlace();
};

}  // namespace host
