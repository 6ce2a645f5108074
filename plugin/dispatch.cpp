// plugin/dispatch.cpp — from the host's command to its handler, and from failures to results.
#include "plugin/dispatch.h"

#include <new>

#include "plugin/about.h"
#include "plugin/arbitrary_callback.h"
#include "plugin/global_setup.h"
#include "plugin/panel_commands.h"
#include "plugin/parameter_changes.h"
#include "plugin/parameter_setup.h"
#include "plugin/render_commands.h"
#include "plugin/sequence_commands.h"

namespace varilum {
namespace {

struct CommandRow {
  std::int32_t selector;
  std::int32_t (*handler)(const Command&);
};

// Commands that are not listed succeed and do nothing.
constexpr CommandRow kCommands[] = {
    {PF_Cmd_ABOUT, about},
    {PF_Cmd_GLOBAL_SETUP, globalSetup},
    {PF_Cmd_GLOBAL_SETDOWN, globalSetdown},
    {PF_Cmd_PARAMS_SETUP, parameterSetup},
    {PF_Cmd_SEQUENCE_SETUP, sequenceSetup},
    {PF_Cmd_SEQUENCE_RESETUP, sequenceResetup},
    {PF_Cmd_SEQUENCE_FLATTEN, sequenceFlatten},
    {PF_Cmd_SEQUENCE_SETDOWN, sequenceSetdown},
    {PF_Cmd_RENDER, renderCommand},
    {PF_Cmd_USER_CHANGED_PARAM, userChangedParam},
    {PF_Cmd_UPDATE_PARAMS_UI, updateParamsUi},
    {PF_Cmd_EVENT, event},
    {PF_Cmd_QUERY_DYNAMIC_FLAGS, queryDynamicFlags},
    {PF_Cmd_ARBITRARY_CALLBACK, arbitraryCallback},
    {PF_Cmd_SMART_PRE_RENDER, smartPreRenderCommand},
    {PF_Cmd_SMART_RENDER, smartRenderCommand},
    {PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, getFlattenedSequenceData},
};

}  // namespace

std::int32_t dispatch(std::int32_t selector, const Command& command) noexcept {
  command.out.out_flags = 0;
  for (const CommandRow& row : kCommands) {
    if (row.selector != selector) continue;
    try {
      return row.handler(command);
    } catch (std::int32_t error) {
      return error;
    } catch (const std::bad_alloc&) {
      return PF_Err_OUT_OF_MEMORY;
    } catch (...) {
      return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
  }
  return 0;
}

}  // namespace varilum
