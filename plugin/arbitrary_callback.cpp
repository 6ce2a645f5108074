// plugin/arbitrary_callback.cpp — ARBITRARY_CALLBACK: handling Luminance values for the host.
#include "plugin/arbitrary_callback.h"

#include <cstring>
#include <iterator>

#include "hostapi/arbitrary.h"
#include "plugin/luminance_text.h"
#include "plugin/luminance_value.h"
#include "plugin/parameter_table.h"

namespace varilum {
namespace {

using Arguments = decltype(PF_ArbParamsExtra::u);

constexpr std::uint32_t kOtherRefcon = 0xDEADBEAD;
constexpr std::uint32_t kPrintSize = 64;

bool isRefcon(const void* refcon, std::uint32_t known) noexcept {
  return reinterpret_cast<std::uintptr_t>(refcon) == known;
}

bool isKnown(const void* refcon) noexcept {
  return isRefcon(refcon, kLuminanceRefcon) || isRefcon(refcon, kOtherRefcon);
}

// A new default value in *result. False, with the outcome in error, when there is none.
bool makeResult(const PF_InData& in, void*** result, std::int32_t& error) noexcept {
  void** value = nullptr;
  error = result != nullptr ? newLuminanceValue(in, &value) : 0;
  if (error != 0 || value == nullptr) return false;
  *result = value;
  return true;
}

std::int32_t create(const PF_InData& in, const Arguments& u) {
  if (!isKnown(u.new_func_params.refconPV)) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  std::int32_t error = 0;
  makeResult(in, u.new_func_params.arbPH, error);
  return error;
}

std::int32_t dispose(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, value] = u.dispose_func_params;
  if (!isKnown(refcon)) return PF_Err_INTERNAL_STRUCT_DAMAGED;
  if (value != nullptr) in.utils->host_dispose_handle(value);
  return 0;
}

std::int32_t copy(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, source, result] = u.copy_func_params;
  std::int32_t error = 0;
  if (!isKnown(refcon) || !makeResult(in, result, error)) return error;
  const LuminanceLock from{in, source};
  const LuminanceLock to{in, *result};
  if (from && to) to.set(from.get());
  return 0;
}

std::int32_t flatSize(const PF_InData&, const Arguments& u) {
  std::uint32_t* size = u.flat_size_func_params.flat_data_sizePLu;
  if (size != nullptr) *size = kLuminanceValueSize;
  return 0;
}

std::int32_t flatten(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, value, size, buffer] = u.flatten_func_params;
  if (size != kLuminanceValueSize || buffer == nullptr) return 0;
  const LuminanceLock lock{in, value};
  if (lock) std::memcpy(buffer, lock.data(), kLuminanceValueSize);
  return 0;
}

std::int32_t unflatten(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, size, data, result] = u.unflatten_func_params;
  std::int32_t error = 0;
  if (size != kLuminanceValueSize || !makeResult(in, result, error)) return error;
  const LuminanceLock lock{in, *result};
  if (lock && data != nullptr) std::memcpy(lock.data(), data, kLuminanceValueSize);
  return 0;
}

std::int32_t interpolate(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, leftValue, rightValue, fraction, result] = u.interp_func_params;
  std::int32_t error = 0;
  if (!isKnown(refcon) || !makeResult(in, result, error)) return error;
  const LuminanceLock left{in, leftValue};
  const LuminanceLock right{in, rightValue};
  const LuminanceLock between{in, *result};
  if (left && right && between) {
    between.set(left.get() + (right.get() - left.get()) * fraction);
  }
  return 0;
}

std::int32_t compare(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, firstValue, secondValue, result] = u.compare_func_params;
  if (result == nullptr) return 0;
  *result = PF_ArbCompare_EQUAL;
  if (firstValue == nullptr || secondValue == nullptr) return 0;
  const LuminanceLock first{in, firstValue};
  const LuminanceLock second{in, secondValue};
  if (!first || !second) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  const double a = first.get();
  const double b = second.get();
  if (a > b) *result = PF_ArbCompare_MORE;
  if (b > a) *result = PF_ArbCompare_LESS;
  return 0;
}

std::int32_t printSize(const PF_InData&, const Arguments& u) {
  const auto& [refcon, value, size] = u.print_size_func_params;
  // The other refcon is not known here, unlike everywhere else.
  if (!isRefcon(refcon, kLuminanceRefcon)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  if (size != nullptr) *size = kPrintSize;
  return 0;
}

std::int32_t print(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, flags, value, size, buffer] = u.print_func_params;
  if (!isKnown(refcon)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  if (value == nullptr) return 0;
  const LuminanceLock lock{in, value};
  if (!lock) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  if (buffer == nullptr || size == 0) return 0;
  if (flags != PF_ArbPrint_NONE || size < kPrintSize) {
    buffer[0] = 0;
    return 0;
  }
  return printLuminance(lock.get(), buffer, size) ? 0 : PF_Err_OUT_OF_MEMORY;
}

std::int32_t scan(const PF_InData& in, const Arguments& u) {
  const auto& [refcon, text, bytes, result] = u.scan_func_params;
  if (!isKnown(refcon)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  std::int32_t error = 0;
  if (!makeResult(in, result, error)) return error;
  const LuminanceLock lock{in, *result};
  if (!lock) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
  double luminance = 0.0;
  switch (scanLuminance(text, luminance)) {
    case LuminanceText::nothing:
      return kScanNothing;
    case LuminanceText::notNumber:
      return kScanNotNumber;
    case LuminanceText::number:
      lock.set(luminance);
      return 0;
  }
  return 0;
}

// By selector, from 0 on.
using Function = std::int32_t (*)(const PF_InData&, const Arguments&);
constexpr Function kFunctions[] = {create,      dispose, copy,      flatSize, flatten, unflatten,
                                   interpolate, compare, printSize, print,    scan};
static_assert(kFunctions[PF_Arbitrary_INTERP_FUNC] == interpolate &&
              kFunctions[PF_Arbitrary_SCAN_FUNC] == scan);

}  // namespace

std::int32_t arbitraryCallback(const Command& command) {
  if (command.extra == nullptr) return 0;
  const auto& extra = *static_cast<const PF_ArbParamsExtra*>(command.extra);
  const auto selector = static_cast<std::uint32_t>(extra.which_function);
  if (selector >= std::size(kFunctions)) return 0;
  return kFunctions[selector](command.in, extra.u);
}

}  // namespace varilum
