// tests/validate/odd_effect.cpp — a small effect that is good, or breaks one rule, as it is told.
// The environment's VARILUM_ODD_EFFECT names the variant; the rows of odd_effect_test.cpp list
// them.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "hostapi/command_data.h"
#include "hostapi/commands.h"
#include "hostapi/parameters.h"
#include "hostapi/smart_render.h"
#include "hostapi/suites/basic.h"
#include "hostapi/suites/world.h"

namespace {

constexpr std::int32_t kVersion = 0x00080001;
constexpr std::int32_t kLayerId = 3;  // of the check-out
constexpr std::int32_t kGrowth = 3;   // pixels on each side

bool is(std::string_view variant) {
  const char* chosen = std::getenv("VARILUM_ODD_EFFECT");
  return chosen != nullptr && variant == chosen;
}

bool isSmart() {
  return is("smart") || is("large-result") || is("dynamic-flags") || is("threaded") ||
         is("thread-dependent");
}
bool keepsData() {
  return is("keeper") || is("wears-out") || is("null-crash") || is("counts-on-address") ||
         is("needs-memory") || is("leaves-lock") || is("replaces-data") || is("double-dispose");
}

// What some variants wrongly keep to themselves.
double sharedGain = 1.0;
std::thread::id renderThread;
std::atomic<std::uint32_t> noise{0};

std::int32_t globalSetup(PF_OutData& out) {
  if (is("refuses")) {
    std::strcpy(out.return_msg, "Not in this application.");
    return -1;
  }
  out.my_version = kVersion;
  if (isSmart()) {
    out.out_flags |= PF_OutFlag_DEEP_COLOR_AWARE;
    out.out_flags2 |= PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE;
  }
  if (is("deep")) out.out_flags |= PF_OutFlag_DEEP_COLOR_AWARE;
  if (is("threaded") || is("thread-dependent")) {
    out.out_flags2 |= PF_OutFlag2_SUPPORTS_THREADED_RENDERING;
  }
  if (is("dynamic-flags")) out.out_flags2 |= PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS;
  if (is("expands")) out.out_flags |= PF_OutFlag_I_EXPAND_BUFFER;
  if (keepsData()) out.out_flags |= PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING;
  return 0;
}

// Declares parameters one after the other and counts them.
class Declarer {
 public:
  Declarer(PF_InData& in, PF_OutData& out) : in_(in), out_(out) { out_.num_params = 1; }

  PF_ParamDef& next(std::int32_t type, const char* name, std::int32_t flags = 0) {
    flush();
    record_ = {};
    record_.param_type = type;
    record_.flags = flags;
    std::strncpy(record_.name, name, sizeof record_.name - 1);
    record_.uu.id = is("same-ids") ? 1 : out_.num_params;
    open_ = true;
    return record_;
  }
  void flush() {
    if (!open_) return;
    open_ = false;
    const std::int32_t error = in_.inter.add_param(in_.effect_ref, -1, &record_);
    if (error != 0 && error_ == 0) error_ = error;
    ++out_.num_params;
  }
  std::int32_t error() const { return error_; }

 private:
  PF_InData& in_;
  PF_OutData& out_;
  PF_ParamDef record_{};
  bool open_ = false;
  std::int32_t error_ = 0;
};

void declareKinds(Declarer& all) {
  all.next(PF_Param_GROUP_START, "Kinds");
  all.next(PF_Param_COLOR, "Tint").u.cd.dephault = {255, 10, 20, 30};
  all.next(PF_Param_ANGLE, "Angle").u.ad.dephault = 45 * 65536;
  all.next(PF_Param_POINT, "Spot").u.td.x_dephault = 50 * 65536;
  all.next(PF_Param_POINT_3D, "Place").u.point3d_d.x_dephault = 50.0;
  all.next(PF_Param_PATH, "Outline");
  all.next(PF_Param_LAYER, "Matte").u.ld.dephault = PF_LayerDefault_NONE;
  all.next(PF_Param_LAYER, "Source").u.ld.dephault = PF_LayerDefault_MYSELF;
  all.next(PF_Param_CHECKBOX, "On");
  PF_ParamDef& wide = all.next(PF_Param_FLOAT_SLIDER, "Wide", PF_ParamFlag_CANNOT_TIME_VARY);
  wide.u.fs_d.valid_min = wide.u.fs_d.slider_min = -1.0F;
  wide.u.fs_d.valid_max = wide.u.fs_d.slider_max = 1.0F;
  all.next(PF_Param_BUTTON, "Press", PF_ParamFlag_SUPERVISE);
  all.next(PF_Param_GROUP_END, "");
}

std::int32_t paramsSetup(PF_InData& in, PF_OutData& out) {
  Declarer all(in, out);
  PF_ParamDef& gain = all.next(PF_Param_SLIDER, "Gain", PF_ParamFlag_SUPERVISE);
  gain.u.sd.valid_max = gain.u.sd.slider_max = 100;
  gain.u.sd.dephault = is("bad-range") ? 101 : 50;
  if (is("same-ids")) all.next(PF_Param_ANGLE, "Angle");
  if (is("quiet-button")) all.next(PF_Param_BUTTON, "Press");
  if (is("open-group")) all.next(PF_Param_GROUP_START, "Open");
  if (is("bad-popup")) {
    PF_ParamDef& popup = all.next(PF_Param_POPUP, "Choice");
    popup.u.pd.num_choices = 3;
    popup.u.pd.dephault = 1;
    popup.u.pd.u.namesptr = "One|Two";
  }
  if (is("kinds")) declareKinds(all);
  all.flush();
  if (is("wrong-count")) ++out.num_params;
  return all.error();
}

// Sequence data: the gain as it was last set, where it stood then, and whether it is flat.
struct Kept {
  double gain;
  const void* address;
  char flat;
};

Kept* lock(PF_InData& in, void** handle) {
  return static_cast<Kept*>(in.utils->host_lock_handle(handle));
}

std::int32_t keep(PF_InData& in, PF_OutData& out, double gain, bool flat) {
  void** handle = in.utils->host_new_handle(sizeof(Kept));
  if (handle == nullptr && !is("needs-memory")) return PF_Err_OUT_OF_MEMORY;
  Kept* kept = lock(in, handle);
  if (kept == nullptr && !is("needs-memory")) {
    in.utils->host_dispose_handle(handle);
    return PF_Err_OUT_OF_MEMORY;
  }
  *kept = {gain, kept, static_cast<char>(flat ? 1 : 0)};
  in.utils->host_unlock_handle(handle);
  out.sequence_data = handle;
  return 0;
}

std::int32_t sequenceSetup(PF_InData& in, PF_OutData& out) {
  if (is("leaks-handle")) in.utils->host_new_handle(16);
  return keepsData() ? keep(in, out, 1.0, false) : 0;
}

// RESETUP and FLATTEN: another handle with the same contents.
std::int32_t exchange(PF_InData& in, PF_OutData& out, bool flat) {
  if (!keepsData()) return 0;
  if (in.sequence_data == nullptr && !is("null-crash")) return 0;
  // What was saved may come back shorter; then it is begun afresh.
  if (!is("null-crash") && in.utils->host_get_handle_size(in.sequence_data) < sizeof(Kept)) {
    if (const std::int32_t error = keep(in, out, 1.0, flat)) return error;
    in.utils->host_dispose_handle(in.sequence_data);
    return 0;
  }
  const Kept* kept = lock(in, in.sequence_data);
  if (kept == nullptr && !is("null-crash")) return PF_Err_OUT_OF_MEMORY;
  double gain = kept->gain;
  in.utils->host_unlock_handle(in.sequence_data);
  if (is("wears-out") && !flat) gain *= 0.5;
  if (const std::int32_t error = keep(in, out, gain, flat)) return error;
  in.utils->host_dispose_handle(in.sequence_data);
  return 0;
}

std::int32_t sequenceSetdown(PF_InData& in, PF_OutData& out) {
  if (in.sequence_data == nullptr) return 0;
  in.utils->host_dispose_handle(in.sequence_data);
  if (is("double-dispose")) in.utils->host_dispose_handle(in.sequence_data);
  out.sequence_data = nullptr;
  return 0;
}

std::int32_t userChanged(PF_InData& in, PF_ParamDef** params) {
  const double gain = params[1]->u.sd.value / 50.0;
  if (is("shares-settings")) sharedGain = gain;
  if (!keepsData() || in.sequence_data == nullptr) return 0;
  Kept* kept = lock(in, in.sequence_data);
  if (kept == nullptr) return PF_Err_OUT_OF_MEMORY;
  kept->gain = gain;
  if (!is("leaves-lock")) in.utils->host_unlock_handle(in.sequence_data);
  return 0;
}

std::int32_t checkoutAll(PF_InData& in) {
  for (std::int32_t i = 1; i < in.num_params; ++i) {
    PF_ParamDef record{};
    const std::int32_t error = in.inter.checkout_param(in.effect_ref, i, in.current_time,
                                                       in.time_step, in.time_scale, &record);
    if (error != 0) return error;
    const std::int32_t checkin = in.inter.checkin_param(in.effect_ref, &record);
    if (checkin != 0) return checkin;
  }
  return 0;
}

// What goes wrong before the pixels. Non-zero: the command's result.
std::int32_t misbehave(PF_InData& in) {
  if (is("crashes")) std::abort();
  if (is("hangs")) {
    for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
  }
  if (is("exits")) std::_Exit(3);
  if (is("throws")) throw std::runtime_error("nobody catches this");
  if (is("silent-error")) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  if (is("leaks-checkout")) {
    PF_ParamDef record{};
    in.inter.checkout_param(in.effect_ref, 1, in.current_time, in.time_step, in.time_scale,
                            &record);
  }
  if (is("leaks-world")) {
    PF_EffectWorld world{};
    in.utils->new_world(in.effect_ref, 8, 8, PF_NewWorldFlag_CLEAR_PIXELS, &world);
  }
  if (is("leaks-suite")) {
    const void* suite = nullptr;
    in.pica_basicP->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2, &suite);
  }
  if (is("wrong-thread")) std::thread([&] { checkoutAll(in); }).join();
  return 0;
}

double gainOf(PF_InData& in) {
  if (is("shares-settings")) return sharedGain;
  if (is("random")) return 0.5 + 0.01 * (noise.fetch_add(1) % 32);
  if (is("thread-dependent")) {
    if (renderThread == std::thread::id{}) renderThread = std::this_thread::get_id();
    return renderThread == std::this_thread::get_id() ? 1.0 : 0.5;
  }
  if (!keepsData() || in.sequence_data == nullptr) return 1.0;
  const Kept* kept = lock(in, in.sequence_data);
  if (kept == nullptr) return 1.0;
  const bool lost = is("counts-on-address") && kept->address != kept;
  const double gain = lost ? 0.25 : kept->gain;
  in.utils->host_unlock_handle(in.sequence_data);
  return gain;
}

// Scales the colours; shift: where the input's corner lies in the output.
template <typename Channel>
void scale(const PF_EffectWorld& from, PF_EffectWorld& to, double gain, double white,
           PF_Point shift) {
  const std::int32_t stride = is("ignores-rowbytes") ? to.width * 4 + 4 : to.rowbytes;
  for (std::int32_t y = 0; y < to.height; ++y) {
    auto* out = reinterpret_cast<Channel*>(reinterpret_cast<std::byte*>(to.data) + y * stride);
    const std::int32_t sourceY = y - shift.v;
    for (std::int32_t x = 0; x < to.width; ++x, out += 4) {
      const std::int32_t sourceX = x - shift.h;
      if (is("skips-pixels") && x == 2) continue;
      if (sourceX < 0 || sourceY < 0 || sourceX >= from.width || sourceY >= from.height) {
        std::memset(out, 0, 4 * sizeof(Channel));
        continue;
      }
      auto* in = reinterpret_cast<Channel*>(reinterpret_cast<std::byte*>(from.data) +
                                            sourceY * from.rowbytes) +
                 4 * sourceX;
      if (is("writes-input")) in[1] = Channel{};
      out[0] = in[0];
      for (int c = 1; c < 4; ++c) {
        const double value = static_cast<double>(in[c]) * gain;
        out[c] = static_cast<Channel>(value < white ? value : white);
      }
    }
    if (is("writes-outside")) out[0] = Channel{};
  }
}

std::int32_t render(PF_InData& in, PF_ParamDef** params, PF_LayerDef& output) {
  if (const std::int32_t error = misbehave(in)) return error;
  if (is("kinds")) {
    if (const std::int32_t error = checkoutAll(in)) return error;
  }
  const PF_EffectWorld& input = params[0]->u.ld;
  const PF_Point shift{in.output_origin_x, in.output_origin_y};
  const double gain = gainOf(in);
  if ((output.world_flags & PF_WorldFlag_DEEP) != 0) {
    scale<std::uint16_t>(input, output, gain, 32768.0, shift);
  } else {
    scale<std::uint8_t>(input, output, gain, 255.0, shift);
  }
  return 0;
}

std::int32_t frameSetup(PF_InData& in, PF_OutData& out) {
  if (!is("expands")) return 0;
  out.width = in.width + 2 * kGrowth;
  out.height = in.height + 2 * kGrowth;
  out.origin = {kGrowth, kGrowth};
  return 0;
}

std::int32_t preRender(PF_InData& in, PF_PreRenderExtra& extra) {
  PF_RenderRequest request = extra.input->output_request;
  PF_CheckoutResult layer{};
  const std::int32_t error = extra.cb->checkout_layer(
      in.effect_ref, 0, kLayerId, &request, in.current_time, in.time_step, in.time_scale, &layer);
  if (error != 0) return error;
  extra.output->result_rect = layer.result_rect;
  extra.output->max_result_rect = layer.max_result_rect;
  if (is("large-result")) extra.output->result_rect.right += 5;
  return 0;
}

std::int32_t smartRender(PF_InData& in, PF_SmartRenderExtra& extra) {
  PF_EffectWorld* from = nullptr;
  PF_EffectWorld* to = nullptr;
  if (const auto error = extra.cb->checkout_layer_pixels(in.effect_ref, kLayerId, &from)) {
    return error;
  }
  if (const auto error = extra.cb->checkout_output(in.effect_ref, &to)) return error;
  if (from == nullptr || to == nullptr || from->data == nullptr) return 0;
  // The layer's own pixels, wherever they stand in the two buffers.
  PF_EffectWorld inside = *to;
  const auto pixel = static_cast<std::int32_t>(extra.input->bitdepth) / 2;
  const std::int32_t left = in.output_origin_x;
  const std::int32_t top = in.output_origin_y;
  const auto corner = [&](PF_EffectWorld& world) {
    auto* bytes = reinterpret_cast<std::byte*>(world.data) + top * world.rowbytes + left * pixel;
    world.data = reinterpret_cast<PF_Pixel*>(bytes);
    world.width = in.width;
    world.height = in.height;
  };
  PF_EffectWorld source = *from;
  corner(inside);
  corner(source);
  const double gain = gainOf(in);
  if (extra.input->bitdepth == 8) scale<std::uint8_t>(source, inside, gain, 255.0, {0, 0});
  if (extra.input->bitdepth == 16) scale<std::uint16_t>(source, inside, gain, 32768.0, {0, 0});
  if (extra.input->bitdepth == 32) scale<float>(source, inside, gain, 1e30, {0, 0});
  return 0;
}

}  // namespace

#ifdef _WIN32
#define ODD_EXPORT extern "C" __declspec(dllexport)
#else
#define ODD_EXPORT extern "C" __attribute__((visibility("default")))
#endif

ODD_EXPORT std::int32_t EntryPointFunc(std::int32_t command, PF_InData* in, PF_OutData* out,
                                       PF_ParamDef** params, PF_LayerDef* output, void* extra) {
  out->out_flags = 0;
  switch (command) {
    case PF_Cmd_ABOUT:
      std::strcpy(out->return_msg, "An odd effect.");
      return 0;
    case PF_Cmd_GLOBAL_SETUP:
      return globalSetup(*out);
    case PF_Cmd_PARAMS_SETUP:
      return paramsSetup(*in, *out);
    case PF_Cmd_SEQUENCE_SETUP:
      return sequenceSetup(*in, *out);
    case PF_Cmd_SEQUENCE_RESETUP:
      return exchange(*in, *out, false);
    case PF_Cmd_SEQUENCE_FLATTEN:
      return exchange(*in, *out, true);
    case PF_Cmd_SEQUENCE_SETDOWN:
      return sequenceSetdown(*in, *out);
    case PF_Cmd_USER_CHANGED_PARAM:
      return userChanged(*in, params);
    case PF_Cmd_UPDATE_PARAMS_UI:
      if (is("replaces-data")) out->sequence_data = nullptr;
      return 0;
    case PF_Cmd_QUERY_DYNAMIC_FLAGS:
      out->out_flags2 = PF_OutFlag2_OUTPUT_IS_WATERMARKED;
      return 0;
    case PF_Cmd_FRAME_SETUP:
      return frameSetup(*in, *out);
    case PF_Cmd_RENDER:
      return render(*in, params, *output);
    case PF_Cmd_SMART_PRE_RENDER:
      return preRender(*in, *static_cast<PF_PreRenderExtra*>(extra));
    case PF_Cmd_SMART_RENDER:
      return smartRender(*in, *static_cast<PF_SmartRenderExtra*>(extra));
    default:
      return 0;
  }
}
