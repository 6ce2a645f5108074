// host/render.cpp — rendering one frame with one copy of an instance.
#include "host/render.h"

#include "host/effect_state.h"
#include "host/error.h"

namespace host {
namespace {

template <typename Number>
void append(std::string& key, const Number& number) {
  key.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void append(std::string& key, ValueKind kind, const Value& value) {
  if (kind == ValueKind::arbitrary) {
    const std::vector<std::byte> flat =
        flattenArbitrary(value.opaque->kind(), value.opaque->handle());
    append(key, flat.size());
    key.append(reinterpret_cast<const char*>(flat.data()), flat.size());
    return;
  }
  append(key, value.x);
  if (kind == ValueKind::number) return;
  append(key, value.y);
  if (kind == ValueKind::point) return;
  append(key, value.z);
  append(key, value.w);
}

}  // namespace

std::string baseCacheKey(SequenceCopy& copy, std::int32_t time, Depth depth, RenderPath path) {
  const LayerInfo& layer = copy.layer.info();
  std::string key;
  append(key, copy.effect.version);
  append(key, reinterpret_cast<std::uintptr_t>(&copy.layer));
  append(key, layer.width);
  append(key, layer.height);
  append(key, depth);
  append(key, path);
  append(key, time);
  const auto count = static_cast<std::int32_t>(copy.definitions.size());
  for (std::int32_t i = 1; i < count; ++i) {
    const ValueKind kind = valueKind(copy.definitions[static_cast<std::size_t>(i)].param_type);
    if (kind == ValueKind::none) continue;
    append(key, kind, copy.params.at(i, {time, layer.timeScale}));
  }
  return key;
}

std::string renderFrame(SequenceCopy& copy, std::int32_t frame, Depth depth, Image& output,
                        RenderPath path) {
  const LayerInfo& layer = copy.layer.info();
  if (frame < 0 || frame >= layer.frameCount) {
    throw Error("The layer has no frame " + std::to_string(frame) + ".");
  }
  const PF_LRect size = reducedBounds(layer, copy.effect.state.options.stress.downsample);
  if (output.empty() || output.width() != size.right || output.height() != size.bottom ||
      output.depth() != depth) {
    output = Image(size.right, size.bottom, depth);
  }
  return path == RenderPath::smart ? renderSmart(copy, frame, depth, output)
                                   : renderClassic(copy, frame, depth, output);
}

}  // namespace host
