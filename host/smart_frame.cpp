// host/smart_frame.cpp — the end of a smart frame.
#include "host/smart_frame.h"

#include <cstdlib>

#include "host/effect_state.h"
#include "host/handles.h"

namespace host {

SmartFrame::~SmartFrame() {
  disposePreRenderData(effect, output);
}

void disposePreRenderData(EffectState& effect, PF_PreRenderOutput& output) noexcept {
  void* const data = output.pre_render_data;
  if (data == nullptr) return;
  output.pre_render_data = nullptr;
  effect.state.accounts.preRenders.fetch_sub(1);
  if (output.delete_pre_render_data_func != nullptr) {
    const HostScope scope(effect.state);
    try {
      output.delete_pre_render_data_func(data);
    } catch (...) {
      effect.state.report("an exception escaped from the deletion of pre-render data");
    }
  } else if (isLiveHandle(static_cast<void**>(data))) {
    if (handleLocks(static_cast<void**>(data)) != 0) {
      effect.state.report("the pre-render data is still locked");
    }
    disposeHandle(static_cast<void**>(data));
  } else {
    std::free(data);
  }
}

}  // namespace host
