// media/yuv_kernels.cpp — choosing the YUV kernels for this processor.
#include "media/yuv_kernels.h"

namespace media {

const YuvKernels* yuvKernels() noexcept {
#if defined(__x86_64__)
  // The system saves the wide registers, too, where this says yes.
  static const YuvKernels* const chosen =
      __builtin_cpu_supports("avx2") ? &kYuvKernelsAvx2 : nullptr;
  return chosen;
#else
  return nullptr;
#endif
}

}  // namespace media
