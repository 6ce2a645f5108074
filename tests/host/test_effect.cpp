// tests/host/test_effect.cpp — a small effect whose every command a test can take over.
#include "tests/host/test_effect.h"

#include <cstdlib>
#include <cstring>

#include "hostapi/arbitrary.h"
#include "hostapi/smart_render.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/iterate.h"

namespace {

TestHook hook;

constexpr std::int32_t kFlags = PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_SEND_UPDATE_PARAMS_UI |
                                PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING | PF_OutFlag_CUSTOM_UI;
constexpr std::int32_t kFlags2 =
    PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE |
    PF_OutFlag2_I_MIX_GUID_DEPENDENCIES | PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA |
    PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS | PF_OutFlag2_OUTPUT_IS_WATERMARKED |
    PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER;

void** newNumber(const PF_InData& in, double value) {
  void** handle = in.utils->host_new_handle(sizeof value);
  if (handle == nullptr) return nullptr;
  std::memcpy(in.utils->host_lock_handle(handle), &value, sizeof value);
  in.utils->host_unlock_handle(handle);
  return handle;
}

double number(const PF_InData& in, void** handle) {
  double value = 0.0;
  std::memcpy(&value, in.utils->host_lock_handle(handle), sizeof value);
  in.utils->host_unlock_handle(handle);
  return value;
}

std::int32_t setUp(PF_InData& in, PF_OutData& out) {
  out.my_version = 0x00080001;
  out.out_flags = kFlags;
  out.out_flags2 = kFlags2;
  out.global_data = newNumber(in, 0.0);
  return out.global_data == nullptr ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
}

PF_ParamDef named(std::int32_t type, const char* name, std::int32_t flags, std::int32_t id) {
  PF_ParamDef definition{};
  definition.param_type = type;
  definition.flags = flags;
  definition.uu.id = id;
  std::strncpy(definition.name, name, sizeof definition.name - 1);
  return definition;
}

std::int32_t declare(PF_InData& in, PF_OutData& out) {
  PF_ParamDef all[] = {named(PF_Param_FIX_SLIDER, "Amount", 0, kAmount),
                       named(PF_Param_CHECKBOX, "Switch", PF_ParamFlag_SUPERVISE, kSwitch),
                       named(PF_Param_POINT, "Spot", 0, kSpot),
                       named(PF_Param_POPUP, "Mode", PF_ParamFlag_CANNOT_TIME_VARY, kMode),
                       named(PF_Param_BUTTON, " ", PF_ParamFlag_SUPERVISE, kGo),
                       named(PF_Param_ARBITRARY_DATA, "Curve", 0, kCurve),
                       named(PF_Param_FLOAT_SLIDER, "Hidden", 0, kHidden)};
  // Texts on the stack: the host has to copy them.
  char choices[] = "One|Two|Three";
  char go[] = "Go";
  all[0].u.fd.valid_max = 100 * 65536;
  all[0].u.fd.slider_max = 100 * 65536;
  all[0].u.fd.dephault = 10 * 65536;
  all[2].u.td.x_dephault = 25 * 65536;
  all[2].u.td.y_dephault = 75 * 65536;
  all[3].u.pd.num_choices = 3;
  all[3].u.pd.dephault = 2;
  all[3].u.pd.u.namesptr = choices;
  all[4].u.button_d.u.namesptr = go;
  all[5].ui_flags = PF_PUI_CONTROL;
  all[5].ui_width = kPanelWidth;
  all[5].ui_height = kPanelHeight;
  all[5].u.arb_d.id = kCurve;
  all[5].u.arb_d.dephault = newNumber(in, 128.0);
  all[5].u.arb_d.refconPV = &hook;
  all[6].u.fs_d.valid_max = 64000.0f;
  for (PF_ParamDef& definition : all) {
    if (const std::int32_t error = in.inter.add_param(in.effect_ref, -1, &definition)) return error;
  }
  out.num_params = kTestParams;
  PF_CustomUIInfo panel{};
  panel.events = PF_CustomEFlag_EFFECT;
  return in.inter.register_ui(in.effect_ref, &panel);
}

// The sequence data is one number: how often the instance was set up.
std::int32_t replaceSequence(PF_InData& in, PF_OutData& out, double value) {
  if (in.sequence_data != nullptr) in.utils->host_dispose_handle(in.sequence_data);
  out.sequence_data = newNumber(in, value);
  return out.sequence_data == nullptr ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
}

std::int32_t arbitrary(PF_InData& in, PF_ArbParamsExtra& extra) {
  auto& u = extra.u;
  switch (extra.which_function) {
    case PF_Arbitrary_NEW_FUNC:
      *u.new_func_params.arbPH = newNumber(in, 128.0);
      return 0;
    case PF_Arbitrary_DISPOSE_FUNC:
      in.utils->host_dispose_handle(u.dispose_func_params.arbH);
      return 0;
    case PF_Arbitrary_COPY_FUNC: {
      void** source = u.copy_func_params.src_arbH;
      *u.copy_func_params.dst_arbPH = newNumber(in, source != nullptr ? number(in, source) : 128.0);
      return 0;
    }
    case PF_Arbitrary_FLAT_SIZE_FUNC:
      *u.flat_size_func_params.flat_data_sizePLu = sizeof(double);
      return 0;
    case PF_Arbitrary_FLATTEN_FUNC: {
      const double value = number(in, u.flatten_func_params.arbH);
      std::memcpy(u.flatten_func_params.flat_dataPV, &value, sizeof value);
      return 0;
    }
    case PF_Arbitrary_UNFLATTEN_FUNC: {
      double value = 0.0;
      if (u.unflatten_func_params.buf_sizeLu != sizeof value) return 0;
      std::memcpy(&value, u.unflatten_func_params.flat_dataPV, sizeof value);
      *u.unflatten_func_params.arbPH = newNumber(in, value);
      return 0;
    }
    case PF_Arbitrary_INTERP_FUNC: {
      const double a = number(in, u.interp_func_params.left_arbH);
      const double b = number(in, u.interp_func_params.right_arbH);
      *u.interp_func_params.interpPH = newNumber(in, a + (b - a) * u.interp_func_params.tF);
      return 0;
    }
    case PF_Arbitrary_PRINT_SIZE_FUNC:
      *u.print_size_func_params.print_sizePLu = 64;
      return 0;
    case PF_Arbitrary_PRINT_FUNC:
      in.utils->ansi.sprintf(u.print_func_params.print_bufferPC, "%.2f",
                             number(in, u.print_func_params.arbH));
      return 0;
    case PF_Arbitrary_SCAN_FUNC: {
      char* end = nullptr;
      const double value = std::strtod(u.scan_func_params.bufPC, &end);
      if (end == u.scan_func_params.bufPC) return PF_Err_CANNOT_PARSE_KEYFRAME_TEXT;
      *u.scan_func_params.arbPH = newNumber(in, value);
      return 0;
    }
    default:
      return 0;
  }
}

std::int32_t preRender(PF_InData& in, PF_PreRenderExtra& extra) {
  PF_RenderRequest request = extra.input->output_request;
  PF_CheckoutResult layer{};
  const std::int32_t error = extra.cb->checkout_layer(
      in.effect_ref, 0, 7, &request, in.current_time, in.time_step, in.time_scale, &layer);
  if (error != 0) return error;
  extra.output->result_rect = layer.result_rect;
  extra.output->max_result_rect = layer.max_result_rect;
  extra.output->pre_render_data = newNumber(in, 1.0);
  const std::int32_t mark = 0x1234;
  return extra.cb->GuidMixInPtr(in.effect_ref, sizeof mark, &mark);
}

template <typename Pixel>
std::int32_t invert(void* white, std::int32_t, std::int32_t, Pixel* in, Pixel* out) {
  const auto w = *static_cast<decltype(Pixel::red)*>(white);
  using Channel = decltype(Pixel::red);
  out->alpha = in->alpha;
  out->red = static_cast<Channel>(w - in->red);
  out->green = static_cast<Channel>(w - in->green);
  out->blue = static_cast<Channel>(w - in->blue);
  return 0;
}

std::int32_t smartRender(PF_InData& in, PF_SmartRenderExtra& extra) {
  PF_EffectWorld* source = nullptr;
  PF_EffectWorld* target = nullptr;
  if (const std::int32_t error = extra.cb->checkout_layer_pixels(in.effect_ref, 7, &source)) {
    return error;
  }
  if (const std::int32_t error = extra.cb->checkout_output(in.effect_ref, &target)) return error;
  const PF_Rect area{in.output_origin_x, in.output_origin_y, in.output_origin_x + in.width,
                     in.output_origin_y + in.height};
  std::uint8_t white8 = 255;
  std::uint16_t white16 = 32768;
  float white = 1.0f;
  if (extra.input->bitdepth == 8) {
    return in.utils->iterate(&in, 0, in.height, source, &area, &white8, invert<PF_Pixel>, target);
  }
  if (extra.input->bitdepth == 16) {
    return in.utils->iterate16(&in, 0, in.height, source, &area, &white16, invert<PF_Pixel16>,
                               target);
  }
  const void* table = nullptr;
  const std::int32_t error =
      in.pica_basicP->AcquireSuite(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1, &table);
  if (error != 0) return error;
  const auto* suite = static_cast<const PF_IterateFloatSuite1*>(table);
  const std::int32_t result =
      suite->iterate(&in, 0, in.height, source, &area, &white, invert<PF_PixelFloat>, target);
  in.pica_basicP->ReleaseSuite(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1);
  return result;
}

std::int32_t render(PF_InData& in, PF_ParamDef** params, PF_LayerDef& output) {
  return in.utils->copy(in.effect_ref, &params[0]->u.ld, &output, nullptr, nullptr);
}

}  // namespace

#ifdef _WIN32
#define TEST_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_EXPORT extern "C" __attribute__((visibility("default")))
#endif

TEST_EXPORT void setTestHook(void* chosen) {
  hook = *static_cast<TestHook*>(chosen);
}

TEST_EXPORT std::int32_t EntryPointFunc(std::int32_t command, PF_InData* in, PF_OutData* out,
                                        PF_ParamDef** params, PF_LayerDef* output, void* extra) {
  out->out_flags = 0;
  if (hook) {
    if (const auto result = hook({command, in, out, params, output, extra})) return *result;
  }
  switch (command) {
    case PF_Cmd_GLOBAL_SETUP:
      return setUp(*in, *out);
    case PF_Cmd_GLOBAL_SETDOWN:
      in->utils->host_dispose_handle(in->global_data);
      return 0;
    case PF_Cmd_PARAMS_SETUP:
      return declare(*in, *out);
    case PF_Cmd_SEQUENCE_SETUP:
      return replaceSequence(*in, *out, 1.0);
    case PF_Cmd_SEQUENCE_RESETUP:
      return replaceSequence(*in, *out, number(*in, in->sequence_data) + 1.0);
    case PF_Cmd_SEQUENCE_SETDOWN:
      in->utils->host_dispose_handle(in->sequence_data);
      return 0;
    case PF_Cmd_GET_FLATTENED_SEQUENCE_DATA:
      out->sequence_data = newNumber(*in, number(*in, in->sequence_data));
      return 0;
    case PF_Cmd_ARBITRARY_CALLBACK:
      return arbitrary(*in, *static_cast<PF_ArbParamsExtra*>(extra));
    case PF_Cmd_SMART_PRE_RENDER:
      return preRender(*in, *static_cast<PF_PreRenderExtra*>(extra));
    case PF_Cmd_SMART_RENDER:
      return smartRender(*in, *static_cast<PF_SmartRenderExtra*>(extra));
    case PF_Cmd_RENDER:
      return render(*in, params, *output);
    case PF_Cmd_ABOUT:
      std::strcpy(out->return_msg, "A test effect.");
      return 0;
    default:
      return 0;
  }
}
