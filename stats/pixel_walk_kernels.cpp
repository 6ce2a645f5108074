// stats/pixel_walk_kernels.cpp — the choice between the kernels.
#include "stats/pixel_walk_kernels.h"

namespace varilum {

#if defined(__x86_64__)

bool canRunAvx2Walk() noexcept {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2");  // the system saves the wide registers, too
}

namespace {
const WalkKernels& kBestWalk = canRunAvx2Walk() ? kAvx2Walk : kSse2Walk;
}

#else

namespace {
constexpr const WalkKernels& kBestWalk = kPlainWalk;
}

#endif

const WalkKernels& bestWalkKernels() noexcept {
  return kBestWalk;
}

}  // namespace varilum
