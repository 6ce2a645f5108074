// host/iterate.cpp — running an effect's function over the pixels of an image.
#include "host/iterate.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "host/command.h"
#include "host/effect_state.h"
#include "host/world_format.h"

namespace host {
namespace {

constexpr std::int32_t kBandsPerThread = 8;
constexpr std::int32_t kOncePerThread = -1;

std::byte* rowOf(const PF_EffectWorld& world, std::int32_t y) noexcept {
  return reinterpret_cast<std::byte*>(world.data) + static_cast<std::ptrdiff_t>(y) * world.rowbytes;
}

PF_Rect clipped(const PF_Rect* area, const PF_EffectWorld* source,
                const PF_EffectWorld& destination) noexcept {
  PF_Rect rect = area != nullptr ? *area : PF_Rect{0, 0, destination.width, destination.height};
  rect.left = std::max(rect.left, 0);
  rect.top = std::max(rect.top, 0);
  rect.right = std::min(rect.right, destination.width);
  rect.bottom = std::min(rect.bottom, destination.height);
  if (source != nullptr) {
    rect.right = std::min(rect.right, source->width);
    rect.bottom = std::min(rect.bottom, source->height);
  }
  return rect;
}

template <typename Pixel>
struct Pass {
  using Function = std::int32_t (*)(void*, std::int32_t, std::int32_t, Pixel*, Pixel*);

  Command* command;
  const PF_EffectWorld* source;
  const PF_EffectWorld* destination;
  PF_Rect area;
  void* context;
  Function function;
  bool withProgress;
  std::vector<std::int32_t> order;  // of rows, when shuffled

  std::int32_t row(std::int32_t y) const {
    auto* out = reinterpret_cast<Pixel*>(rowOf(*destination, y)) + area.left;
    auto* in = source == nullptr ? out : reinterpret_cast<Pixel*>(rowOf(*source, y)) + area.left;
    // What the function writes may be anywhere, so members would be read anew for every pixel.
    const Function call = function;
    void* const itsContext = context;
    const std::int32_t right = area.right;
    for (std::int32_t x = area.left; x < right; ++x) {
      if (const std::int32_t result = call(itsContext, x, y, in++, out++)) return result;
    }
    return 0;
  }

  std::int32_t stopAsked() const {
    if (command->cancelled.load(std::memory_order_relaxed)) return PF_Interrupt_CANCEL;
    return withProgress ? command->effect.state.faults.check(CallKind::progress) : 0;
  }

  static std::int32_t band(void* self, std::int32_t begin, std::int32_t end, std::int32_t worker) {
    const auto& pass = *static_cast<const Pass*>(self);
    for (std::int32_t i = begin; i < end; ++i) {
      const std::int32_t y =
          pass.area.top + (pass.order.empty() ? i : pass.order[static_cast<std::size_t>(i)]);
      if (const std::int32_t result = pass.row(y)) return result;
    }
    return worker == 0 ? pass.stopAsked() : 0;
  }
};

template <typename Pixel>
std::int32_t iterate(PF_InData* in, std::int32_t final, PF_EffectWorld* source, const PF_Rect* area,
                     void* context, typename Pass<Pixel>::Function function,
                     PF_EffectWorld* destination) {
  Command* command = in != nullptr ? commandOf(in->effect_ref, "iterate") : nullptr;
  if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::iterate)) return error;
  if (function == nullptr || destination == nullptr || destination->data == nullptr ||
      (source != nullptr && source->data == nullptr)) {
    state.report("iterate: no function, or a world without pixels");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  for (const PF_EffectWorld* world : {source, destination}) {
    const auto depth = world != nullptr ? worldDepth(*world) : std::nullopt;
    if (depth && pixelBytes(*depth) != static_cast<int>(sizeof(Pixel))) {
      state.report("iterate: the world has another depth than the function");
      return PF_Err_BAD_CALLBACK_PARAM;
    }
  }
  Pass<Pixel> pass{command, source,   destination, clipped(area, source, *destination),
                   context, function, final > 0,   {}};
  const std::int32_t rows = pass.area.bottom - pass.area.top;
  if (rows <= 0 || pass.area.right <= pass.area.left) return PF_Err_NONE;
  std::int32_t piece = std::max(1, rows / (state.pool.threads() * kBandsPerThread));
  if (state.options.stress.shuffleRows) {
    piece = 1;
    pass.order.resize(static_cast<std::size_t>(rows));
    std::iota(pass.order.begin(), pass.order.end(), 0);
    static std::atomic<std::uint32_t> seed{1};
    std::shuffle(pass.order.begin(), pass.order.end(), std::mt19937(seed.fetch_add(1)));
  }
  return state.pool.run(rows, piece, &pass, Pass<Pixel>::band);
}

struct GenericRun {
  void* context;
  std::int32_t (*function)(void*, std::int32_t, std::int32_t, std::int32_t);
  std::int32_t count;

  static std::int32_t band(void* self, std::int32_t begin, std::int32_t end, std::int32_t worker) {
    const auto& run = *static_cast<const GenericRun*>(self);
    for (std::int32_t i = begin; i < end; ++i) {
      if (const std::int32_t result = run.function(run.context, worker, i, run.count)) {
        return result;
      }
    }
    return 0;
  }
};

}  // namespace

std::int32_t iterate8(PF_InData* in, std::int32_t, std::int32_t final, PF_EffectWorld* source,
                      const PF_Rect* area, void* context, PF_IteratePixel8Func function,
                      PF_EffectWorld* destination) {
  return iterate<PF_Pixel>(in, final, source, area, context, function, destination);
}

std::int32_t iterate16(PF_InData* in, std::int32_t, std::int32_t final, PF_EffectWorld* source,
                       const PF_Rect* area, void* context, PF_IteratePixel16Func function,
                       PF_EffectWorld* destination) {
  return iterate<PF_Pixel16>(in, final, source, area, context, function, destination);
}

std::int32_t iterateFloat(PF_InData* in, std::int32_t, std::int32_t final, PF_EffectWorld* source,
                          const PF_Rect* area, void* context, PF_IteratePixelFloatFunc function,
                          PF_EffectWorld* destination) {
  return iterate<PF_PixelFloat>(in, final, source, area, context, function, destination);
}

std::int32_t iterateGeneric(std::int32_t count, void* context,
                            std::int32_t (*function)(void*, std::int32_t, std::int32_t,
                                                     std::int32_t)) {
  HostState* host = currentHost();
  if (host == nullptr || function == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  GenericRun run{context, function, count == kOncePerThread ? host->pool.threads() : count};
  return host->pool.run(run.count, 1, &run, GenericRun::band);
}

}  // namespace host
