// host/interact_callbacks.cpp — check-outs, declaring parameters, progress and abort.
#include <algorithm>
#include <cstring>
#include <new>

#include "host/callback_tables.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "host/frame_time.h"
#include "host/parameter_declaration.h"
#include "host/sequence_copy.h"
#include "host/unused_slot.h"

namespace host {
namespace {

std::int32_t nextToken() noexcept {
  static std::atomic<std::uint32_t> last{0};
  return static_cast<std::int32_t>((last.fetch_add(1) + 1) & 0x7FFFFFFF);
}

// The layer's own pixels, at the project's depth.
void checkoutLayer(Command& command, PF_ParamDef& record, Checkout& checkout, Moment moment) {
  SequenceCopy& copy = *command.copy;
  HostState& state = command.effect.state;
  const LayerInfo& info = copy.layer.info();
  const Depth depth = state.role == Role::premiere ? Depth::bits8 : info.depth;
  checkout.frame = copy.frames.read(state, copy.layer, frameAt(info, moment), depth);
  record.u.ld = checkout.frame->world;
}

// What is still read from the record should be seen to be missing.
void withholdValue(PF_ParamDef& record) noexcept {
  if (record.param_type == PF_Param_LAYER) {
    record.u.ld.data = nullptr;
  } else if (record.param_type == PF_Param_ARBITRARY_DATA) {
    record.u.arb_d.value = nullptr;
  }
}

std::int32_t checkoutParam(PF_ProgPtr ref, std::int32_t index, std::int32_t time, std::int32_t,
                           std::uint32_t scale, PF_ParamDef* record) {
  Command* command = commandOf(ref, "checkout_param");
  if (command == nullptr || record == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  const bool pixels =
      command->copy != nullptr && command->copy->layerChoice(index) == LayerChoice::own;
  const CallKind kind = pixels ? CallKind::checkoutLayer : CallKind::checkoutParam;
  const std::int32_t planned = state.faults.check(kind);
  if (refusal(planned) != 0) return planned;
  if (command->copy == nullptr || scale == 0) {
    state.report("checkout_param: not in this command, or without a time scale");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  SequenceCopy& copy = *command->copy;
  if (index < 0 || index >= static_cast<std::int32_t>(copy.definitions.size())) {
    state.report("checkout_param: no such parameter");
    return PF_Err_INVALID_INDEX;
  }
  try {
    Checkout checkout;
    checkout.token = nextToken();
    checkout.record = record;
    PF_ParamDef filled = copy.definitions[static_cast<std::size_t>(index)];
    if (pixels) {
      checkoutLayer(*command, filled, checkout, {time, scale});
    } else {
      checkout.value = copy.params.at(index, {time, scale});
      ParameterStore::write(filled, checkout.value);
      command->scalePoint(filled);
    }
    filled.unused = checkout.token;
    {
      const std::lock_guard guard(command->mutex);
      command->checkouts.push_back(std::move(checkout));
    }
    *record = filled;
    if (planned == kGivesNothing) withholdValue(*record);
    (pixels ? state.accounts.layerCheckouts : state.accounts.paramCheckouts).fetch_add(1);
    return PF_Err_NONE;
  } catch (...) {
    return command->keepFailure();
  }
}

std::int32_t checkinParam(PF_ProgPtr ref, PF_ParamDef* record) {
  Command* command = commandOf(ref, "checkin_param");
  if (command == nullptr || record == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  Checkout checkout;
  {
    const std::lock_guard guard(command->mutex);
    auto& open = command->checkouts;
    // The record may have been moved: the token goes with it.
    const auto found = std::find_if(open.rbegin(), open.rend(),
                                    [&](const Checkout& c) { return c.token == record->unused; });
    if (found == open.rend()) {
      state.report("checkin_param: this was not checked out, or is in already");
      return PF_Err_BAD_CALLBACK_PARAM;
    }
    checkout = std::move(*found);
    open.erase(std::next(found).base());
  }
  (checkout.frame ? state.accounts.layerCheckouts : state.accounts.paramCheckouts).fetch_sub(1);
  if (checkout.frame) command->copy->frames.giveBack(state, std::move(checkout.frame));
  // The record is dead now.
  record->unused = 0;
  withholdValue(*record);
  // Even a refused check-in has to be survived without a leak: what was lent is back.
  return state.faults.check(CallKind::checkinParam);
}

std::int32_t addParam(PF_ProgPtr ref, std::int32_t index, PF_ParamDef* definition) {
  Command* command = commandOf(ref, "add_param");
  if (command == nullptr || definition == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::addParam)) return error;
  if (command->command != PF_Cmd_PARAMS_SETUP || index != -1) {
    state.report("add_param: only in PARAMS_SETUP, and only to append");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  try {
    command->effect.declarations.push_back(
        declare(*definition, static_cast<std::int32_t>(command->effect.declarations.size())));
    return PF_Err_NONE;
  } catch (...) {
    return command->keepFailure();
  }
}

std::int32_t registerUi(PF_ProgPtr ref, PF_CustomUIInfo* info) {
  Command* command = commandOf(ref, "register_ui");
  if (command == nullptr || info == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::registerUi)) return error;
  if (command->command != PF_Cmd_PARAMS_SETUP) {
    state.report("register_ui: only in PARAMS_SETUP");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  command->effect.eventMask = info->events;
  return PF_Err_NONE;
}

std::int32_t abortAsked(PF_ProgPtr ref) {
  const Command* command = commandOf(ref, "abort");
  if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  return command->cancelled.load() ? PF_Interrupt_CANCEL : PF_Err_NONE;
}

std::int32_t progressMade(PF_ProgPtr ref, std::int32_t, std::int32_t) {
  Command* command = commandOf(ref, "progress");
  if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (const std::int32_t error = command->effect.state.faults.check(CallKind::progress)) {
    return error;
  }
  return command->cancelled.load() ? PF_Interrupt_CANCEL : PF_Err_NONE;
}

PF_InteractCallbacks makeInteractTable() {
  PF_InteractCallbacks table{};
  table.checkout_param = checkoutParam;
  table.checkin_param = checkinParam;
  table.add_param = addParam;
  table.abort = abortAsked;
  table.progress = progressMade;
  table.register_ui = registerUi;
  HOST_UNUSED(table, checkout_layer_audio);
  HOST_UNUSED(table, checkin_layer_audio);
  HOST_UNUSED(table, get_audio_data);
  return table;
}

}  // namespace

const PF_InteractCallbacks& interactCallbacks() {
  static const PF_InteractCallbacks table = makeInteractTable();
  return table;
}

}  // namespace host
