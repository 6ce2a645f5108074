// host/instance_state.h — the inside of an instance: its user-interface copy and its render copy.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "host/effect_state.h"
#include "host/instance.h"
#include "host/sequence_copy.h"

namespace host {

class InstanceState {
 public:
  // Applies the effect to the layer.
  InstanceState(EffectState& effect, FrameSource& layer);
  // Opens a saved instance.
  InstanceState(EffectState& effect, FrameSource& layer, SavedInstance saved);

  // As a user does it: the store changes, then the effect hears of it. time: of the edit.
  void edit(std::int32_t index, std::int32_t time, const std::function<void()>& change);
  void press(std::int32_t index);
  void goTo(std::int32_t frame);
  // As a project being loaded does it.
  void load(const SavedParameter& parameter);
  SavedInstance save();

  // Takes over the values that the effect marked changed; gives their indices.
  std::vector<std::int32_t> takeChanges(Command& command);
  // The render copies are behind: they are made anew when next needed.
  void dropRenderCopies() noexcept;
  // UPDATE_PARAMS_UI, where the effect wants it.
  void updateUi();

  // The copy to render with, made anew when the user-interface copy has changed since. In the
  // Premiere role there is one copy for both.
  SequenceCopy& renderSide(RenderPath path = RenderPath::smart);
  std::unique_ptr<SequenceCopy> newRenderCopy(RenderPath path);
  bool watermarked();

  std::int32_t checkedTime(std::int32_t frame) const;  // throws Error for a frame outside
  std::int32_t now() const noexcept { return ui.frameTime(frame_); }
  const ParameterDeclaration& declaration(std::int32_t index) const {
    return ui.params.declaration(index);
  }

  EffectState& effect;
  SequenceCopy ui;

 private:
  void begin();
  void tellChange(std::int32_t index, std::int32_t time);

  std::unique_ptr<SequenceCopy> smartRender_;
  std::unique_ptr<SequenceCopy> classicRender_;
  std::int32_t frame_ = 0;
};

}  // namespace host
