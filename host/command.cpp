// host/command.cpp — one command on its way to the effect and back.
#include "host/command.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <utility>

#include "host/callback_tables.h"
#include "host/effect_state.h"
#include "host/error.h"
#include "host/frame_time.h"
#include "host/handles.h"
#include "host/sequence_copy.h"

namespace host {
namespace {

thread_local Command* threadCommand = nullptr;

// The commands under way, for callbacks from threads that the host did not call on.
struct UnderWay {
  std::mutex mutex;
  std::map<PF_ProgPtr, Command*> commands;
};

UnderWay& underWay() {
  static UnderWay* const instance = new UnderWay;
  return *instance;
}

std::int32_t applicationId(Role role) noexcept {
  switch (role) {
    case Role::afterEffects:
      return kAfterEffectsApplication;
    case Role::premiere:
      return kPremiereApplication;
    case Role::other:
      break;
  }
  return 0x6F746872;  // 'othr'
}

// After these the effect may have put another handle in place of its sequence data.
bool mayReplaceSequenceData(std::int32_t command) noexcept {
  constexpr std::array kAllowed{PF_Cmd_SEQUENCE_SETUP,   PF_Cmd_SEQUENCE_RESETUP,
                                PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_SEQUENCE_SETDOWN,
                                PF_Cmd_FRAME_SETUP,      PF_Cmd_RENDER,
                                PF_Cmd_FRAME_SETDOWN,    PF_Cmd_DO_DIALOG};
  return std::find(kAllowed.begin(), kAllowed.end(), command) != kAllowed.end();
}

bool isRender(std::int32_t command) noexcept {
  return command == PF_Cmd_FRAME_SETUP || command == PF_Cmd_RENDER ||
         command == PF_Cmd_FRAME_SETDOWN || command == PF_Cmd_SMART_PRE_RENDER ||
         command == PF_Cmd_SMART_RENDER;
}

const char* meaning(std::int32_t result) noexcept {
  switch (result) {
    case PF_Err_OUT_OF_MEMORY:
      return "out of memory";
    case PF_Err_INTERNAL_STRUCT_DAMAGED:
      return "its data is damaged or missing";
    case PF_Err_INVALID_INDEX:
      return "invalid index";
    case PF_Err_UNRECOGNIZED_PARAM_TYPE:
      return "unrecognised parameter";
    case PF_Err_INVALID_CALLBACK:
      return "a service of the host is missing";
    case PF_Err_BAD_CALLBACK_PARAM:
      return "the host refused a call";
    default:
      return "error";
  }
}

}  // namespace

Command::Command(EffectState& itsEffect, SequenceCopy* itsCopy, std::int32_t itsCommand)
    : effect(itsEffect),
      copy(itsCopy),
      command(itsCommand),
      ref_(itsCopy != nullptr ? itsCopy->ref : itsEffect.ref) {
  const HostState& state = effect.state;
  in.inter = interactCallbacks();
  in.utils = utilCallbacks();
  in.pica_basicP = basicSuite();
  in.effect_ref = ref_;
  in.quality = PF_Quality_HI;
  in.version = {state.version.major, state.version.minor};
  in.appl_id = applicationId(state.role);
  in.num_params = std::max<std::int32_t>(1, static_cast<std::int32_t>(effect.declarations.size()));
  const Downsample by = isRender(itsCommand) ? state.options.stress.downsample : Downsample{};
  in.downsample_x = {1, static_cast<std::uint32_t>(by.x)};
  in.downsample_y = {1, static_cast<std::uint32_t>(by.y)};
  in.pixel_aspect_ratio = {1, 1};
  in.global_data = effect.globalData;
  if (copy != nullptr) {
    const LayerInfo& layer = copy->layer.info();
    in.time_step = layer.timeStep;
    in.local_time_step = layer.timeStep;
    in.total_time = timeOf(layer, layer.frameCount);
    in.time_scale = layer.timeScale;
    in.width = layer.width;
    in.height = layer.height;
    in.extent_hint = {0, 0, layer.width, layer.height};
    in.pixel_aspect_ratio = {layer.pixelAspectNum, layer.pixelAspectDen};
    in.sequence_data = copy->sequenceData;
  }
  out.global_data = in.global_data;
  out.sequence_data = in.sequence_data;
  // What stands here on entry means nothing; effects have to write it.
  out.out_flags = 0x5A5A5A5A;
}

Command::~Command() = default;

void Command::giveParams(const PF_EffectWorld* layer) {
  if (copy == nullptr) return;
  params = copy->definitions;
  values_.resize(params.size());
  pointers_.clear();
  const Moment now{in.current_time, in.time_scale};
  for (std::size_t i = 0; i < params.size(); ++i) {
    PF_ParamDef& record = params[i];
    record.uu.change_flags = PF_ChangeFlag_NONE;
    if (i == 0) {
      record.u.ld = layer != nullptr ? *layer : PF_EffectWorld{};
    } else {
      values_[i] = copy->params.at(static_cast<std::int32_t>(i), now);
      ParameterStore::write(record, values_[i]);
      scalePoint(record);
    }
    pointers_.push_back(&record);
  }
  pointers_.push_back(nullptr);
}

void Command::scalePoint(PF_ParamDef& record) const noexcept {
  if (record.param_type != PF_Param_POINT) return;
  record.u.td.x_value /= static_cast<std::int32_t>(in.downsample_x.den);
  record.u.td.y_value /= static_cast<std::int32_t>(in.downsample_y.den);
}

std::int32_t Command::send(void* extra, PF_LayerDef* output) {
  const HostScope scope(effect.state);
  outer_ = std::exchange(threadCommand, this);
  if (copy != nullptr) {
    UnderWay& all = underWay();
    const std::lock_guard guard(all.mutex);
    all.commands[ref_] = this;
  }
  hold(global_, in.global_data);
  hold(sequence_, in.sequence_data);

  std::int32_t result = PF_Err_INTERNAL_STRUCT_DAMAGED;
  try {
    result = effect.entry(command, &in, &out, pointers_.empty() ? nullptr : pointers_.data(),
                          output, extra);
  } catch (const std::exception& e) {
    effect.state.report("an exception escaped from command " + std::to_string(command) + ": " +
                        e.what());
  } catch (...) {
    effect.state.report("an exception escaped from command " + std::to_string(command));
  }

  if (copy != nullptr) {
    UnderWay& all = underWay();
    const std::lock_guard guard(all.mutex);
    all.commands.erase(ref_);
  }
  takeBack();
  letGo(global_, "global data");
  letGo(sequence_, "sequence data");
  takeSequenceData(result);
  // A replaced value handle is the host's now; the one that was lent is then the effect's to free.
  for (std::size_t i = 1; i < params.size() && i < values_.size(); ++i) {
    if (values_[i].opaque) values_[i].opaque->adopt(params[i].u.arb_d.value);
  }
  threadCommand = outer_;
  showMessage();
  return result;
}

void Command::hold(Held& held, void** handle) noexcept {
  if (handle == nullptr) return;
  held.handle = handle;
  held.serial = handleSerial(handle);
  lockHandle(handle);
}

void Command::noteLock(void** handle, std::int32_t by) noexcept {
  if (handle != nullptr && handle == global_.handle) global_.balance.fetch_add(by);
  if (handle != nullptr && handle == sequence_.handle) sequence_.balance.fetch_add(by);
}

// The lock state is again as it was before, unless the effect disposed of the handle.
void Command::letGo(Held& held, const char* what) {
  if (held.handle == nullptr || handleSerial(held.handle) != held.serial) return;
  const std::int32_t extra = held.balance.load();
  if (extra != 0) {
    effect.state.report("command " + std::to_string(command) + " left the locks of the " + what +
                        " unbalanced by " + std::to_string(extra));
  }
  adjustLocks(held.handle, -1 - extra);
}

void Command::takeSequenceData(std::int32_t result) {
  if (copy == nullptr) return;
  if (mayReplaceSequenceData(command)) {
    copy->sequenceData = command == PF_Cmd_SEQUENCE_SETDOWN ? nullptr : out.sequence_data;
    if (out.sequence_data != in.sequence_data && isLiveHandle(out.sequence_data) &&
        handleLocks(out.sequence_data) != 0) {
      effect.state.report("command " + std::to_string(command) +
                          (result == 0 ? " gave" : " failed and gave") +
                          " back locked sequence data");
      adjustLocks(out.sequence_data, -static_cast<std::int32_t>(handleLocks(out.sequence_data)));
    }
  } else if (command != PF_Cmd_GET_FLATTENED_SEQUENCE_DATA &&
             out.sequence_data != in.sequence_data) {
    effect.state.report("command " + std::to_string(command) +
                        " may not replace the sequence data; ignored");
  }
}

void Command::takeBack() {
  HostState& state = effect.state;
  std::vector<Checkout> left;
  {
    const std::lock_guard guard(mutex);
    left.swap(checkouts);
  }
  for (Checkout& checkout : left) {
    state.report("command " + std::to_string(command) + " did not check in " +
                 (checkout.frame ? "a layer" : "a parameter"));
    if (checkout.frame) {
      state.accounts.layerCheckouts.fetch_sub(1);
      copy->frames.giveBack(state, std::move(checkout.frame));
    } else {
      state.accounts.paramCheckouts.fetch_sub(1);
    }
  }
  for (const int suite : suites) {
    state.report("command " + std::to_string(command) + " did not release " +
                 std::string(suiteName(suite)) + " " + std::to_string(suiteVersion(suite)));
  }
}

void Command::showMessage() {
  constexpr std::size_t kLength = sizeof out.return_msg;
  if (out.return_msg[kLength - 1] != '\0') {
    out.return_msg[kLength - 1] = '\0';
    effect.state.report("a return message has no end");
  }
  if (quiet || out.return_msg[0] == '\0') return;
  const bool error = (out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0;
  try {
    effect.state.show(error ? MessageKind::error : MessageKind::info, effect.name, out.return_msg);
  } catch (...) {
    keepFailure();
  }
}

void Command::rethrowFailure() const {
  if (failure_) std::rethrow_exception(failure_);
}

void Command::require(std::int32_t result, const std::string& what) const {
  rethrowFailure();
  if (result == 0) return;
  if (result == PF_Interrupt_CANCEL) throw Cancelled();
  std::string text = "The effect could not " + what + ": ";
  if (out.return_msg[0] != '\0') {
    text += out.return_msg;
  } else {
    text += std::string(meaning(result)) + " (" + std::to_string(result) + ").";
  }
  throw CommandError(text, command, result);
}

std::int32_t Command::keepFailure() noexcept {
  const std::lock_guard guard(mutex);
  if (!failure_) failure_ = std::current_exception();
  try {
    throw;
  } catch (const Cancelled&) {
    cancelled.store(true);
    return PF_Interrupt_CANCEL;
  } catch (const std::bad_alloc&) {
    return PF_Err_OUT_OF_MEMORY;
  } catch (...) {
    return PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
}

Command* currentCommand() noexcept {
  return threadCommand;
}

Command* commandOf(PF_ProgPtr ref, const char* callback) noexcept {
  for (Command* command = threadCommand; command != nullptr; command = command->outer_) {
    if (command->ref_ == ref) return command;
  }
  HostState* host = currentHost();
  if (host == nullptr) return nullptr;
  bool known = false;
  {
    UnderWay& all = underWay();
    const std::lock_guard guard(all.mutex);
    const auto found = all.commands.find(ref);
    known = found != all.commands.end();
    const bool anyThread = host->role == Role::premiere && !host->options.stress.callerThreadOnly;
    if (known && anyThread) return found->second;
  }
  try {
    host->report(std::string(callback) +
                 (known ? ": called on a thread that the host did not call on"
                        : ": unknown effect reference, or no command under way"));
  } catch (const std::bad_alloc&) {
    host->report("a callback came without a command");
  }
  return nullptr;
}

PF_ProgPtr newEffectRef() noexcept {
  static std::atomic<std::uintptr_t> last{0xEF0000};
  return reinterpret_cast<PF_ProgPtr>(last.fetch_add(0x11) + 0x11);
}

}  // namespace host
