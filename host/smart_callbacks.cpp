// host/smart_callbacks.cpp — what an effect may ask during SMART_PRE_RENDER and SMART_RENDER.
#include <algorithm>
#include <cstring>

#include "host/callback_tables.h"
#include "host/command.h"
#include "host/effect_state.h"
#include "host/frame_time.h"
#include "host/sequence_copy.h"
#include "host/smart_frame.h"

namespace host {
namespace {

// The command if it is the one that this callback belongs to.
Command* during(PF_ProgPtr ref, std::int32_t wanted, const char* callback) {
  Command* command = commandOf(ref, callback);
  if (command == nullptr) return nullptr;
  if (command->command != wanted || command->smart == nullptr) {
    command->effect.state.report(std::string(callback) + ": not in this command");
    return nullptr;
  }
  return command;
}

PF_LRect intersection(const PF_LRect& a, const PF_LRect& b) noexcept {
  const PF_LRect both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                      std::min(a.bottom, b.bottom)};
  return both.right <= both.left || both.bottom <= both.top ? PF_LRect{} : both;
}

std::int32_t checkoutLayer(PF_ProgPtr ref, std::int32_t index, std::int32_t id,
                           const PF_RenderRequest* request, std::int32_t time, std::int32_t,
                           std::uint32_t scale, PF_CheckoutResult* result) {
  Command* command = during(ref, PF_Cmd_SMART_PRE_RENDER, "checkout_layer");
  if (command == nullptr || request == nullptr || result == nullptr || scale == 0) {
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::checkoutLayer)) return error;
  const LayerChoice choice = command->copy->layerChoice(index);
  if (choice == LayerChoice::no) {
    state.report("checkout_layer: the parameter is no layer");
    return PF_Err_INVALID_INDEX;
  }
  if (id < 0 || command->smart->layers.contains(id)) {
    state.report("checkout_layer: the check-out id is negative or used already");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  try {
    LayerRequest& wanted = command->smart->layers[id];
    wanted.moment = {time, scale};
    wanted.empty = choice == LayerChoice::empty;
  } catch (...) {
    return command->keepFailure();
  }
  const LayerInfo& info = command->copy->layer.info();
  const PF_LRect whole = reducedBounds(info, state.options.stress.downsample);
  *result = {};
  if (choice == LayerChoice::empty) return PF_Err_NONE;
  result->result_rect = intersection(request->rect, whole);
  command->smart->layers[id].part = result->result_rect;
  result->max_result_rect = whole;
  result->par = {info.pixelAspectNum, info.pixelAspectDen};
  result->ref_width = info.width;
  result->ref_height = info.height;
  return PF_Err_NONE;
}

std::int32_t mixIn(PF_ProgPtr ref, std::uint32_t count, const void* bytes) {
  Command* command = during(ref, PF_Cmd_SMART_PRE_RENDER, "GuidMixInPtr");
  if (command == nullptr || (bytes == nullptr && count > 0)) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::guidMixIn)) return error;
  if (!command->effect.supports(PF_OutFlag2_I_MIX_GUID_DEPENDENCIES)) {
    state.report("GuidMixInPtr: the effect did not say that it mixes in");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  try {
    const auto* first = static_cast<const std::byte*>(bytes);
    auto& mixed = command->smart->mixedIn;
    mixed.insert(mixed.end(), first, first + count);
    return PF_Err_NONE;
  } catch (...) {
    return command->keepFailure();
  }
}

std::int32_t checkoutPixels(PF_ProgPtr ref, std::int32_t id, PF_EffectWorld** world) {
  Command* command = during(ref, PF_Cmd_SMART_RENDER, "checkout_layer_pixels");
  if (command == nullptr || world == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  *world = nullptr;
  if (const std::int32_t error = state.faults.check(CallKind::checkoutPixels)) {
    command->smart->inputTaken |= error == kGivesNothing;
    return refusal(error);
  }
  const auto found = command->smart->layers.find(id);
  if (found == command->smart->layers.end() || found->second.taken) {
    state.report("checkout_layer_pixels: not asked for in the pre-render, or taken already");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  SequenceCopy& copy = *command->copy;
  LayerRequest& request = found->second;
  if (request.empty) {
    command->smart->inputTaken = request.taken = true;
    return PF_Err_NONE;
  }
  try {
    request.pixels = copy.frames.read(
        state, copy.layer, frameAt(copy.layer.info(), request.moment), command->smart->depth,
        {command->smart->margins, state.options.stress.downsample, request.part});
  } catch (...) {
    return command->keepFailure();
  }
  request.taken = true;
  command->smart->inputTaken = true;
  state.accounts.layerCheckouts.fetch_add(1);
  *world = &request.pixels->world;
  return PF_Err_NONE;
}

std::int32_t checkinPixels(PF_ProgPtr ref, std::int32_t id) {
  Command* command = during(ref, PF_Cmd_SMART_RENDER, "checkin_layer_pixels");
  if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  const auto found = command->smart->layers.find(id);
  if (found == command->smart->layers.end()) {
    state.report("checkin_layer_pixels: not asked for in the pre-render");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  // After a failed check-out there is nothing to give back, and no harm in trying.
  if (found->second.pixels) {
    command->copy->frames.giveBack(state, std::move(found->second.pixels));
    state.accounts.layerCheckouts.fetch_sub(1);
  }
  return PF_Err_NONE;
}

std::int32_t checkoutOutput(PF_ProgPtr ref, PF_EffectWorld** world) {
  Command* command = during(ref, PF_Cmd_SMART_RENDER, "checkout_output");
  if (command == nullptr || world == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  *world = nullptr;
  if (const std::int32_t error = state.faults.check(CallKind::checkoutOutput))
    return refusal(error);
  if (!command->smart->inputTaken && !command->smart->layers.empty()) {
    state.report("checkout_output: only after an input");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  *world = command->smart->target;
  return PF_Err_NONE;
}

}  // namespace

PF_PreRenderCallbacks* preRenderCallbacks(bool withGuidMixIn) {
  static PF_PreRenderCallbacks with{checkoutLayer, mixIn};
  static PF_PreRenderCallbacks without{checkoutLayer, nullptr};
  return withGuidMixIn ? &with : &without;
}

PF_SmartRenderCallbacks* smartRenderCallbacks() {
  static PF_SmartRenderCallbacks table{checkoutPixels, checkinPixels, checkoutOutput};
  return &table;
}

}  // namespace host
