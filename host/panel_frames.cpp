// host/panel_frames.cpp — frames that a panel has the host render in the background.
#include "host/panel_frames.h"

#include <algorithm>
#include <utility>

#include "host/command.h"
#include "host/effect_state.h"
#include "host/frame_time.h"
#include "host/sequence_copy.h"

namespace host {

void PanelFrames::count(std::int64_t by) noexcept {
  host_.accounts.renderReferences.fetch_add(by);
}

PanelFrames::Name PanelFrames::newEffect() {
  const Name name = newDrawingName();
  effects_.emplace(name, true);
  count(1);
  return name;
}

bool PanelFrames::disposeEffect(Name name) {
  if (effects_.erase(name) == 0) return false;
  count(-1);
  return true;
}

PanelFrames::Name PanelFrames::newOptions(Moment moment) {
  const Name name = newDrawingName();
  options_.emplace(name, moment);
  count(1);
  return name;
}

const Moment* PanelFrames::options(Name name) const {
  const auto found = options_.find(name);
  return found == options_.end() ? nullptr : &found->second;
}

bool PanelFrames::disposeOptions(Name name) {
  if (options_.erase(name) == 0) return false;
  count(-1);
  return true;
}

PanelFrames::Name PanelFrames::request(Command& command, std::uint32_t purpose,
                                       const Moment& moment) {
  const auto [entry, isNew] = requests_.try_emplace(purpose, Request{moment, delay_.draws});
  Request& request = entry->second;
  const bool same = request.moment.value == moment.value && request.moment.scale == moment.scale;
  // Another frame for the same purpose takes the earlier one's place.
  if (!isNew && !same) request = {moment, delay_.draws};
  const bool ready = request.drawsLeft == 0;
  if (!ready && !delay_.emptyReceipt) return 0;

  Receipt receipt;
  if (ready) {
    SequenceCopy& copy = *command.copy;
    const LayerInfo& info = copy.layer.info();
    receipt.frame = copy.frames.read(host_, copy.layer, frameAt(info, moment), info.depth);
    receipt.world = newDrawingName();
  }
  const Name name = newDrawingName();
  receipts_.emplace(name, std::move(receipt));
  count(1);
  return name;
}

PanelFrames::Name PanelFrames::worldOf(Name receipt) const {
  const auto found = receipts_.find(receipt);
  return found == receipts_.end() ? 0 : found->second.world;
}

bool PanelFrames::checkIn(Command& command, Name receipt) {
  const auto found = receipts_.find(receipt);
  if (found == receipts_.end()) return false;
  if (found->second.frame) command.copy->frames.giveBack(host_, std::move(found->second.frame));
  receipts_.erase(found);
  count(-1);
  return true;
}

const PF_EffectWorld* PanelFrames::world(Name name) const {
  if (name == 0) return nullptr;
  const auto found = std::find_if(receipts_.begin(), receipts_.end(),
                                  [&](const auto& entry) { return entry.second.world == name; });
  return found == receipts_.end() ? nullptr : &found->second.frame->world;
}

void PanelFrames::advance() noexcept {
  for (auto& [purpose, request] : requests_) {
    if (request.drawsLeft > 0) --request.drawsLeft;
  }
}

bool PanelFrames::pending() const noexcept {
  return std::any_of(requests_.begin(), requests_.end(),
                     [](const auto& entry) { return entry.second.drawsLeft > 0; });
}

bool PanelFrames::unready() const noexcept {
  return std::any_of(requests_.begin(), requests_.end(),
                     [](const auto& entry) { return entry.second.drawsLeft != 0; });
}

std::int64_t PanelFrames::outstanding() const noexcept {
  return static_cast<std::int64_t>(effects_.size() + options_.size() + receipts_.size());
}

}  // namespace host
