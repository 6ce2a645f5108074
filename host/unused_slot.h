// host/unused_slot.h — functions for the slots that this host does not serve.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "host/host_state.h"
#include "hostapi/commands.h"

namespace host {

// Text as a template argument.
template <std::size_t N>
struct SlotName {
  char text[N];
  constexpr SlotName(const char (&source)[N]) { std::copy_n(source, N, text); }
};

template <SlotName Name, typename Function>
struct UnusedSlot;

// Reports the slot's name and answers 515 (or nothing, or zero, by the slot's type).
template <SlotName Name, typename Result, typename... Arguments>
struct UnusedSlot<Name, Result (*)(Arguments...)> {
  static Result call(Arguments...) {
    if (HostState* host = currentHost()) host->report(Name.text);
    if constexpr (std::is_same_v<Result, std::int32_t>) {
      return PF_Err_INVALID_CALLBACK;
    } else if constexpr (!std::is_void_v<Result>) {
      return Result{};
    }
  }
};

template <SlotName Name, typename Function>
void leaveUnused(Function& slot) {
  slot = UnusedSlot<Name, Function>::call;
}

}  // namespace host

// The slot's name with a sentence, for the report.
#define HOST_UNUSED(table, slot) \
  ::host::leaveUnused<#slot ": this host does not serve it">((table).slot)
