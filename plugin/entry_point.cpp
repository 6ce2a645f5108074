// plugin/entry_point.cpp — the one function that the library exports.
#include <type_traits>

#include "plugin/dispatch.h"

#ifdef _WIN32
#define VARILUM_EXPORT __declspec(dllexport)
#else
#define VARILUM_EXPORT __attribute__((visibility("default")))
#endif

extern "C" VARILUM_EXPORT std::int32_t EntryPointFunc(std::int32_t command, PF_InData* in,
                                                      PF_OutData* out, PF_ParamDef** params,
                                                      PF_LayerDef* output, void* extra) {
  if (in == nullptr || out == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  return varilum::dispatch(command, {*in, *out, params, output, extra});
}

static_assert(std::is_same_v<decltype(&EntryPointFunc), EntryPoint>);
