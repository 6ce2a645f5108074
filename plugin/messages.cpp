// plugin/messages.cpp — message boxes of the effect.
#include "plugin/messages.h"

#include "hostapi/commands.h"
#include "platform/message_box.h"
#include "resources/string_table.h"

namespace varilum {

void showMessage(const PF_InData& in, const GlobalState* global, std::uint32_t textId) noexcept {
  if (global != nullptr && global->renderEngine != 0) return;
  showMessageBox(in, lookupString(kTextEffectName), lookupString(textId));
}

std::int32_t reportOutOfMemory(const PF_InData& in, const GlobalState* global,
                               std::int32_t error) noexcept {
  if (error == PF_Err_OUT_OF_MEMORY) showMessage(in, global, kTextOutOfMemory);
  return error;
}

}  // namespace varilum
