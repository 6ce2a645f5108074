// host/render_smart.cpp — SMART_PRE_RENDER and SMART_RENDER.
#include <algorithm>

#include "host/callback_tables.h"
#include "host/effect_state.h"
#include "host/error.h"
#include "host/render.h"
#include "host/render_target.h"
#include "host/smart_frame.h"

namespace host {
namespace {

constexpr std::int16_t kFirstMinorWithGuidMixIn = 9;

// Takes back what the effect did not check in; it need not.
void takeBackPixels(SmartFrame& smart, SequenceCopy& copy) {
  HostState& state = copy.effect.state;
  for (auto& [id, request] : smart.layers) {
    if (!request.pixels) continue;
    copy.frames.giveBack(state, std::move(request.pixels));
    state.accounts.layerCheckouts.fetch_sub(1);
  }
}

PF_RenderRequest requestFor(const PF_LRect& rect) {
  PF_RenderRequest request{};
  request.rect = rect;
  request.field = PF_Field_FRAME;
  request.channel_mask = PF_ChannelMask_ARGB;
  return request;
}

std::string asText(const std::vector<std::byte>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void place(Command& command, const Margins& margins, std::int32_t time) {
  command.setTime(time);
  command.in.output_origin_x = margins.left;
  command.in.output_origin_y = margins.top;
}

bool within(const PF_LRect& inner, const PF_LRect& outer) noexcept {
  return inner.right <= inner.left || inner.bottom <= inner.top ||
         (inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
          inner.bottom <= outer.bottom);
}

void reportRects(const PF_PreRenderOutput& output, const PF_LRect& asked, HostState& state) {
  if (!within(output.result_rect, output.max_result_rect)) {
    state.report("SMART_PRE_RENDER: the result is larger than the largest result");
  }
  if ((output.flags & PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS) == 0 &&
      !within(output.result_rect, asked)) {
    state.report("SMART_PRE_RENDER: the result is larger than what was asked for");
  }
}

void preRender(SmartFrame& smart, SequenceCopy& copy, std::int32_t time,
               const PF_RenderRequest& request, const std::string& what) {
  HostState& state = copy.effect.state;
  PF_PreRenderInput input{};
  input.output_request = request;
  input.bitdepth = static_cast<std::int16_t>(smart.depth);
  PF_PreRenderExtra extra{&input, &smart.output,
                          preRenderCallbacks(state.version.minor >= kFirstMinorWithGuidMixIn)};
  Command command(copy.effect, &copy, PF_Cmd_SMART_PRE_RENDER);
  place(command, smart.margins, time);
  command.smart = &smart;
  const std::int32_t result = command.send(&extra);
  // The host's from here on, whatever the result.
  if (smart.output.pre_render_data != nullptr) state.accounts.preRenders.fetch_add(1);
  command.require(result, what);
  reportRects(smart.output, request.rect, state);
}

void render(SmartFrame& smart, SequenceCopy& copy, std::int32_t time,
            const PF_RenderRequest& request, const std::string& what) {
  PF_SmartRenderInput input{};
  input.output_request = request;
  input.bitdepth = static_cast<std::int16_t>(smart.depth);
  input.pre_render_data = smart.output.pre_render_data;
  PF_SmartRenderExtra extra{&input, smartRenderCallbacks()};
  Command command(copy.effect, &copy, PF_Cmd_SMART_RENDER);
  place(command, smart.margins, time);
  command.smart = &smart;
  const std::int32_t result = command.send(&extra);
  takeBackPixels(smart, copy);
  command.require(result, what);
}

// One request, and what it brings put into its place. Gives the bytes mixed into the cache key.
std::string renderPart(SequenceCopy& copy, std::int32_t frame, Depth depth, const PF_LRect& part,
                       const Margins& margins, Image& output) {
  HostState& state = copy.effect.state;
  const std::int32_t time = copy.renderTime(frame);
  const std::string what = "render frame " + std::to_string(frame);
  const PF_RenderRequest request = requestFor(part);
  SmartFrame smart(copy.effect);
  smart.depth = depth;
  smart.margins = margins;
  preRender(smart, copy, time, request, what);
  std::string mixedIn = asText(smart.mixedIn);

  PF_LRect result = smart.output.result_rect;
  result.left = std::max(result.left, part.left);
  result.top = std::max(result.top, part.top);
  result.right = std::min(result.right, part.right);
  result.bottom = std::min(result.bottom, part.bottom);
  if (result.right <= result.left || result.bottom <= result.top) {
    clear(output, part);
    return mixedIn;
  }
  RenderTarget target(state, output, result, depth, smart.margins, part);
  smart.target = &target.world();
  render(smart, copy, time, request, what);
  target.finish(state);
  return mixedIn;
}

}  // namespace

std::string renderSmart(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output) {
  const Stress& stress = copy.effect.state.options.stress;
  const PF_LRect whole = reducedBounds(copy.layer.info(), stress.downsample);
  const std::string key = baseCacheKey(copy, copy.renderTime(frame), depth, RenderPath::smart);
  Margins margins = stressMargins(stress);
  // The buffer of a part ends with it: the frame goes on there.
  if (stress.tiles > 1) margins.right = margins.bottom = 0;
  const std::int32_t tileWidth = std::max(1, (whole.right + stress.tiles - 1) / stress.tiles);
  const std::int32_t tileHeight = std::max(1, (whole.bottom + stress.tiles - 1) / stress.tiles);
  std::string mixedIn;
  for (std::int32_t top = 0; top < whole.bottom; top += tileHeight) {
    for (std::int32_t left = 0; left < whole.right; left += tileWidth) {
      const PF_LRect part{left, top, std::min(left + tileWidth, whole.right),
                          std::min(top + tileHeight, whole.bottom)};
      mixedIn = renderPart(copy, frame, depth, part, margins, output);
    }
  }
  return key + mixedIn;
}

}  // namespace host
