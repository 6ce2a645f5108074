// validate/checks/arbitrary_checks.cpp — values that only the effect understands.
#include <algorithm>
#include <cstring>

#include "host/arbitrary_values.h"
#include "host/effect_state.h"
#include "host/error.h"
#include "host/instance_state.h"
#include "hostapi/arbitrary.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

constexpr std::size_t kGuard = 64;
constexpr std::byte kGuardByte{0xA7};

// Bytes with a guard behind them.
class GuardedBytes {
 public:
  explicit GuardedBytes(std::size_t size) : size_(size), bytes_(size + kGuard, kGuardByte) {}
  std::byte* data() noexcept { return bytes_.data(); }
  bool intact() const {
    return std::all_of(bytes_.begin() + static_cast<std::ptrdiff_t>(size_), bytes_.end(),
                       [](std::byte b) { return b == kGuardByte; });
  }

 private:
  std::size_t size_;
  std::vector<std::byte> bytes_;
};

std::int32_t call(const host::ArbitraryKind& kind, PF_ArbParamsExtra& extra,
                  std::int32_t function) {
  extra.which_function = function;
  extra.id = kind.id;
  host::Command command(*kind.effect, nullptr, PF_Cmd_ARBITRARY_CALLBACK);
  return command.send(&extra);
}

// Whether FLATTEN and PRINT keep within the sizes that they announced.
void checkSizes(Trial& trial, const host::ArbitraryKind& kind, void** value,
                const std::string& label) {
  std::uint32_t size = 0;
  PF_ArbParamsExtra extra{};
  extra.u.flat_size_func_params = {kind.refcon, value, &size};
  trial.journal.step("FLAT_SIZE and FLATTEN of " + label);
  if (call(kind, extra, PF_Arbitrary_FLAT_SIZE_FUNC) == 0) {
    GuardedBytes flat(size);
    extra = {};
    extra.u.flatten_func_params = {kind.refcon, value, size, flat.data()};
    call(kind, extra, PF_Arbitrary_FLATTEN_FUNC);
    if (!flat.intact()) {
      trial.journal.violate("arbitrary-flatten", label + ": FLATTEN wrote more than its size");
    }
  }
  std::uint32_t length = 0;
  extra = {};
  extra.u.print_size_func_params = {kind.refcon, value, &length};
  trial.journal.step("PRINT_SIZE and PRINT of " + label);
  if (call(kind, extra, PF_Arbitrary_PRINT_SIZE_FUNC) != 0 || length == 0) return;
  GuardedBytes text(length);
  extra = {};
  extra.u.print_func_params = {kind.refcon, PF_ArbPrint_NONE, value, length,
                               reinterpret_cast<char*>(text.data())};
  if (call(kind, extra, PF_Arbitrary_PRINT_FUNC) != 0) return;
  if (!text.intact()) {
    trial.journal.violate("arbitrary-text", label + ": PRINT wrote more than its size");
  } else if (std::memchr(text.data(), 0, length) == nullptr) {
    trial.journal.violate("arbitrary-text", label + ": the printed text has no end");
  }
}

bool equal(const host::ArbitraryKind& kind, const host::ArbitraryPtr& a,
           const host::ArbitraryPtr& b) {
  return a->handle() != nullptr && b->handle() != nullptr &&
         host::compareArbitrary(kind, a->handle(), b->handle()) == PF_ArbCompare_EQUAL;
}

void checkCopies(Trial& trial, const host::ArbitraryKind& kind, const host::ArbitraryPtr& value,
                 const std::string& label) {
  trial.journal.step("COPY, COMPARE and INTERP of " + label);
  const host::ArbitraryPtr copy = host::copyArbitrary(kind, value->handle());
  if (copy->handle() == nullptr || copy->handle() == value->handle()) {
    trial.journal.violate("arbitrary-copy", label + ": COPY gave no handle of its own");
  } else if (!equal(kind, value, copy)) {
    trial.journal.violate("arbitrary-compare", label + ": COMPARE finds a copy unequal");
  }
  if (host::copyArbitrary(kind, nullptr)->handle() == nullptr) {
    trial.journal.violate("arbitrary-copy", label + ": COPY without a source gave no default");
  }
  for (const double t : {0.0, 0.5, 1.0}) {
    const auto between = host::interpolateArbitrary(kind, value->handle(), value->handle(), t);
    if (between->handle() == nullptr) {
      trial.journal.violate("arbitrary-copy", label + ": INTERP gave no handle");
      break;
    }
  }
}

void checkRoundTrips(Trial& trial, const host::ArbitraryKind& kind, const host::ArbitraryPtr& value,
                     const std::string& label) {
  trial.journal.step("FLATTEN and UNFLATTEN of " + label);
  const std::vector<std::byte> flat = host::flattenArbitrary(kind, value->handle());
  if (flat.empty()) {
    trial.journal.violate("arbitrary-flatten", label + ": FLATTEN gave nothing");
  } else if (!equal(kind, value, host::unflattenArbitrary(kind, flat))) {
    trial.journal.violate("arbitrary-flatten", label + ": UNFLATTEN gave another value");
  }
  trial.journal.step("PRINT and SCAN of " + label);
  const std::string text = host::printArbitrary(kind, value->handle());
  if (text.empty()) return;  // effects need not print
  try {
    if (!equal(kind, value, host::scanArbitrary(kind, text))) {
      trial.journal.violate("arbitrary-text", label + ": SCAN made another value of its own text");
    }
  } catch (const host::Error& problem) {
    trial.journal.violate("arbitrary-text", label + ": " + problem.what());
  }
}

void arbitrary(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  if (stage.claims().arbitrary.empty()) throw Skipped("the effect has no arbitrary data");
  stage.attempt("apply to a layer", [&] {
    host::Instance instance(stage.effect(), stage.layer());
    host::InstanceState& state = instance.state();
    for (const std::int32_t index : stage.claims().arbitrary) {
      const std::string label = "\"" + state.declaration(index).name + "\"";
      const host::ArbitraryKind kind = state.ui.params.kindOf(index);
      const host::Value value = state.ui.params.at(index, {0, stage.layer().info().timeScale});
      if (value.opaque->handle() == nullptr) {
        trial.journal.violate("arbitrary-copy", label + ": there is no first value");
        continue;
      }
      checkCopies(trial, kind, value.opaque, label);
      checkRoundTrips(trial, kind, value.opaque, label);
      checkSizes(trial, kind, value.opaque->handle(), label);
    }
  });
  stage.close();
}

}  // namespace

const Check kArbitrary{"arbitrary-data",
                       "Arbitrary data is copied, compared, interpolated, flattened and printed "
                       "within its sizes, and read back.",
                       arbitrary};

}  // namespace validate
