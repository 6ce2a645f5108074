// stats/lifecycle.cpp — making, saving, restoring and destroying an instance's data.
#include "stats/lifecycle.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <utility>

#include "access/handle_lock.h"
#include "hostapi/commands.h"
#include "stats/flat_image.h"
#include "stats/frame_count.h"
#include "stats/live_registry.h"
#include "stats/restore.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"

namespace varilum {
namespace {

// Disposes an instance's header with all that belongs to it: a live one's arrays, or those that an
// image left allocated.
void disposeInstance(const PF_InData& in, void** handle) noexcept {
  if (isLive(handle)) {
    Locked<SequenceState> state{in, handle};
    // There is no later occasion to give the arrays back: a refused lock is asked for once more.
    if (!state) state = {in, handle};
    if (state && state->flattened == 0) disposeArrays(in, *state);
    state.unlock();
    forgetLive(handle);
  }
  disposeArraysOfImage(in, handle);
  in.utils->host_dispose_handle(handle);
}

// A handle that is disposed unless it is given away.
class NewHandle {
 public:
  NewHandle(const PF_InData& in, std::size_t size) noexcept
      : in_(in), handle_(in.utils->host_new_handle(size)) {}
  NewHandle(const NewHandle&) = delete;
  NewHandle& operator=(const NewHandle&) = delete;
  ~NewHandle() {
    if (handle_ != nullptr) in_.utils->host_dispose_handle(handle_);
  }

  void** get() const noexcept { return handle_; }
  void** giveAway() noexcept { return std::exchange(handle_, nullptr); }

 private:
  const PF_InData& in_;
  void** handle_;
};

// An image that came from outside: locked to be read, and disposed in the end.
class OldImage {
 public:
  OldImage(const PF_InData& in, void** handle) noexcept : in_(in), handle_(handle) {
    lock_ = HandleLock{in, handle};
  }
  OldImage(const OldImage&) = delete;
  OldImage& operator=(const OldImage&) = delete;
  ~OldImage() { dispose(); }

  void dispose() noexcept {
    lock_.unlock();
    if (handle_ != nullptr) disposeInstance(in_, handle_);
    handle_ = nullptr;
  }

  std::span<const std::byte> bytes() const noexcept {
    if (!lock_) return {};
    const std::uint64_t size = in_.utils->host_get_handle_size(handle_);
    return {static_cast<const std::byte*>(lock_.data()), static_cast<std::size_t>(size)};
  }

 private:
  const PF_InData& in_;
  void** handle_;
  HandleLock lock_;
};

// Restores what the image holds into the fresh instance in out. False: that instance could not
// take it, and another fresh one must be made.
bool restoreImage(const PF_InData& in, std::span<const std::byte> image, SequenceState& state) {
  switch (imageVersion(image)) {
    case kFormatVersion:
      return restoreFlatImage(in, image, state);
    case kFormatVersion13:
      restoreFlatImage13(in, image, state);
      return true;
    default:
      return true;  // not ours to read: the instance starts fresh
  }
}

// Appends arrays to an image.
class ImageWriter {
 public:
  ImageWriter(const PF_InData& in, std::span<std::byte> image) : in_(in), rest_(image) {}

  // What is left is zero.
  void finish() noexcept { std::ranges::fill(rest_, std::byte{0}); }

  void append(const void* data, std::size_t size) noexcept {
    size = std::min(size, rest_.size());
    std::memcpy(rest_.data(), data, size);
    rest_ = rest_.subspan(size);
  }

  // An array that will not lock is left out.
  void appendArray(void** handle, std::size_t size) noexcept {
    const HandleLock lock{in_, handle};
    if (!lock) return;
    const std::uint64_t held = in_.utils->host_get_handle_size(handle);
    append(lock.data(), static_cast<std::size_t>(std::min<std::uint64_t>(size, held)));
  }

 private:
  const PF_InData& in_;
  std::span<std::byte> rest_;
};

void writeImage(const PF_InData& in, const SequenceState& state, std::span<std::byte> image) {
  SequenceState header = state;
  header.flattened = 1;
  ImageWriter writer{in, image};
  writer.append(&header, sizeof header);
  const auto [records, cache, input, inputSpread, desired, desiredSpread] = arrayHandles(state);
  for (void** levels : {input, inputSpread, desired, desiredSpread}) {
    writer.appendArray(levels, state.levelArrayBytes);
  }
  writer.appendArray(records, state.frameStatsBytes);
  writer.appendArray(cache, state.histogramCacheBytes);
  writer.finish();
}

}  // namespace

std::int32_t setupSequence(const PF_InData& in, PF_OutData& out) {
  if (out.sequence_data != nullptr) disposeInstance(in, std::exchange(out.sequence_data, nullptr));

  NewHandle handle{in, sizeof(SequenceState)};
  if (handle.get() == nullptr) return PF_Err_OUT_OF_MEMORY;
  Locked<SequenceState> state{in, handle.get()};
  if (!state) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  *state = freshSequenceState();
  registerLive(in, handle.get());
  out.sequence_data = handle.giveAway();

  if (in.time_step > 0) {
    const std::int32_t frames = layerFrameCount(in.total_time, in.time_step);
    const std::int32_t error = resizeFrameArrays(in, *state, frames, in.in_flags != 0);
    if (error != 0) {
      disposeArrays(in, *state);
      state.leaveLocked();
      return error;
    }
  }
  return 0;
}

std::int32_t resetupSequence(const PF_InData& in, PF_OutData& out) {
  void** old = out.sequence_data;
  if (old == nullptr) return 0;
  if (isLive(old)) {
    const Locked<SequenceState> live{in, old};
    if (live && live->flattened == 0) return 0;
  }

  out.sequence_data = nullptr;
  OldImage image{in, old};
  std::int32_t error = setupSequence(in, out);
  if (error != 0) return error;

  bool restored = false;
  {
    const Locked<SequenceState> state{in, out.sequence_data};
    if (!state) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    restored = restoreImage(in, image.bytes(), *state);
  }
  if (restored) return 0;
  image.dispose();
  return setupSequence(in, out);
}

std::int32_t flattenSequence(const PF_InData& in, PF_OutData& out, bool disposeLive) {
  void** live = out.sequence_data;
  if (live == nullptr) return 0;
  Locked<SequenceState> state{in, live};
  if (!state) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  // Only what this process made holds handles that may be followed; all else is flat.
  if (!isLive(live) || state->flattened != 0) return 0;

  state->headerSize = static_cast<std::uint32_t>(kHeaderSize);
  const std::size_t size = flatImageSize(*state);
  NewHandle image{in, size};
  if (image.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  {
    const HandleLock lock{in, image.get()};
    if (!lock) {
      // The host would take the live handle for the copy that it asked for.
      if (!disposeLive) out.sequence_data = nullptr;
      return 0;
    }
    writeImage(in, *state, {static_cast<std::byte*>(lock.data()), size});
  }
  if (disposeLive) {
    keepArraysOfImage(in, image.get(), arrayHandles(*state));
    state.unlock();
    forgetLive(live);
    in.utils->host_dispose_handle(live);
  }
  out.sequence_data = image.giveAway();
  return 0;
}

std::int32_t setdownSequence(const PF_InData& in, PF_OutData& out) {
  if (out.sequence_data != nullptr) disposeInstance(in, std::exchange(out.sequence_data, nullptr));
  return 0;
}

}  // namespace varilum
