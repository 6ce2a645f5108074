// host/arbitrary_values.cpp — values that only the effect understands, through its own callbacks.
#include "host/arbitrary_values.h"

#include "host/command.h"
#include "host/effect_state.h"
#include "host/error.h"
#include "hostapi/arbitrary.h"
#include "hostapi/commands.h"

namespace host {
namespace {

PF_ArbParamsExtra request(const ArbitraryKind& kind, std::int32_t function) {
  PF_ArbParamsExtra extra{};
  extra.which_function = function;
  extra.id = kind.id;
  return extra;
}

std::int32_t call(const ArbitraryKind& kind, PF_ArbParamsExtra& extra) {
  Command command(*kind.effect, nullptr, PF_Cmd_ARBITRARY_CALLBACK);
  return command.send(&extra);
}

// A call that makes a value; the maker puts the address of the result where the selector wants it.
ArbitraryPtr take(const ArbitraryKind& kind, PF_ArbParamsExtra& extra, void** const& result) {
  if (const std::int32_t error = call(kind, extra); error != 0) {
    kind.effect->state.report("the effect could not make an arbitrary value: selector " +
                              std::to_string(extra.which_function) + ", result " +
                              std::to_string(error));
  }
  return std::make_shared<ArbitraryValue>(kind, result);
}

}  // namespace

ArbitraryValue::~ArbitraryValue() {
  if (handle_ == nullptr) return;
  PF_ArbParamsExtra extra = request(kind_, PF_Arbitrary_DISPOSE_FUNC);
  extra.u.dispose_func_params = {kind_.refcon, handle_};
  try {
    call(kind_, extra);
  } catch (...) {
    kind_.effect->state.report("an arbitrary value could not be disposed of");
  }
}

ArbitraryPtr copyArbitrary(const ArbitraryKind& kind, void** source) {
  void** result = nullptr;
  PF_ArbParamsExtra extra = request(kind, PF_Arbitrary_COPY_FUNC);
  extra.u.copy_func_params = {kind.refcon, source, &result};
  return take(kind, extra, result);
}

ArbitraryPtr interpolateArbitrary(const ArbitraryKind& kind, void** left, void** right, double t) {
  void** result = nullptr;
  PF_ArbParamsExtra extra = request(kind, PF_Arbitrary_INTERP_FUNC);
  extra.u.interp_func_params = {kind.refcon, left, right, t, &result};
  return take(kind, extra, result);
}

ArbitraryPtr unflattenArbitrary(const ArbitraryKind& kind, const std::vector<std::byte>& flat) {
  void** result = nullptr;
  PF_ArbParamsExtra extra = request(kind, PF_Arbitrary_UNFLATTEN_FUNC);
  extra.u.unflatten_func_params = {kind.refcon, static_cast<std::uint32_t>(flat.size()),
                                   flat.data(), &result};
  return take(kind, extra, result);
}

std::vector<std::byte> flattenArbitrary(const ArbitraryKind& kind, void** value) {
  std::uint32_t bytes = 0;
  PF_ArbParamsExtra size = request(kind, PF_Arbitrary_FLAT_SIZE_FUNC);
  size.u.flat_size_func_params = {kind.refcon, value, &bytes};
  if (value == nullptr || call(kind, size) != 0) return {};
  std::vector<std::byte> flat(bytes);
  PF_ArbParamsExtra flatten = request(kind, PF_Arbitrary_FLATTEN_FUNC);
  flatten.u.flatten_func_params = {kind.refcon, value, bytes, flat.data()};
  if (call(kind, flatten) != 0) flat.clear();
  return flat;
}

std::string printArbitrary(const ArbitraryKind& kind, void** value) {
  std::uint32_t bytes = 0;
  PF_ArbParamsExtra size = request(kind, PF_Arbitrary_PRINT_SIZE_FUNC);
  size.u.print_size_func_params = {kind.refcon, value, &bytes};
  if (value == nullptr || call(kind, size) != 0 || bytes == 0) return {};
  std::string text(bytes, '\0');
  PF_ArbParamsExtra print = request(kind, PF_Arbitrary_PRINT_FUNC);
  print.u.print_func_params = {kind.refcon, PF_ArbPrint_NONE, value, bytes, text.data()};
  if (call(kind, print) != 0) return {};
  text.resize(std::min(text.find('\0'), text.size()));
  return text;
}

ArbitraryPtr scanArbitrary(const ArbitraryKind& kind, std::string_view text) {
  const std::string copy{text};
  void** result = nullptr;
  PF_ArbParamsExtra extra = request(kind, PF_Arbitrary_SCAN_FUNC);
  extra.u.scan_func_params = {kind.refcon, copy.c_str(), static_cast<std::uint32_t>(copy.size()),
                              &result};
  const std::int32_t error = call(kind, extra);
  auto value = std::make_shared<ArbitraryValue>(kind, result);
  if (error != 0 || result == nullptr)
    throw Error("The effect cannot read the value \"" + copy + "\".");
  return value;
}

std::int32_t compareArbitrary(const ArbitraryKind& kind, void** a, void** b) {
  std::int32_t answer = PF_ArbCompare_NOT_EQUAL;
  PF_ArbParamsExtra extra = request(kind, PF_Arbitrary_COMPARE_FUNC);
  extra.u.compare_func_params = {kind.refcon, a, b, &answer};
  return call(kind, extra) == 0 ? answer : PF_ArbCompare_NOT_EQUAL;
}

}  // namespace host
