// validate/claims.h — what an effect says that it can do; only that is demanded of it.
#pragma once

#include <cstdint>
#include <vector>

#include "host/effect.h"
#include "host/image.h"
#include "host/instance.h"

namespace validate {

struct Claims {
  host::RenderPath path = host::RenderPath::classic;
  std::vector<host::Depth> depths;  // on that path, 8 bits first
  bool panel = false;               // of its own, in the effect controls
  bool flattens = false;            // its sequence data needs it
  bool flattensCopies = false;      // GET_FLATTENED_SEQUENCE_DATA
  bool dynamicFlags = false;
  bool threadSafe = false;       // the user interface and one render at the same time
  bool rendersThreaded = false;  // several renders at the same time
  // By index.
  std::vector<std::int32_t> valued;  // numbers, points, colours
  std::vector<std::int32_t> arbitrary;
  std::vector<std::int32_t> supervised;  // without the buttons
  std::vector<std::int32_t> buttons;
};

Claims claimsOf(host::Effect& effect);

const char* nameOf(host::Depth depth) noexcept;

}  // namespace validate
