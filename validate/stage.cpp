// validate/stage.cpp — a host with the effect loaded, and everything it reports put in the journal.
#include "validate/stage.h"

#include <algorithm>
#include <atomic>
#include <mutex>

#include "host/effect_state.h"
#include "host/error.h"
#include "validate/rules.h"

namespace validate {
namespace {

struct Leak {
  std::int64_t host::Outstanding::*count;
  const char* rule;
  const char* noun;
};
constexpr Leak kLeaks[] = {
    {&host::Outstanding::handles, "leaked-handle", "handle"},
    {&host::Outstanding::aegpHandles, "leaked-handle", "memory handle of the application"},
    {&host::Outstanding::locks, "unbalanced-locks", "lock"},
    {&host::Outstanding::paramCheckouts, "leaked-checkout", "parameter check-out"},
    {&host::Outstanding::layerCheckouts, "leaked-checkout", "layer check-out"},
    {&host::Outstanding::suites, "leaked-suite", "suite reference"},
    {&host::Outstanding::worlds, "leaked-world", "world"},
    {&host::Outstanding::drawingObjects, "leaked-drawing", "drawing object"},
    {&host::Outstanding::progressDialogs, "leaked-reference", "progress dialog"},
    {&host::Outstanding::preRenders, "leaked-reference", "pre-render record"},
    {&host::Outstanding::renderReferences, "leaked-reference", "render reference"},
};

bool reportsItself(std::int32_t result) noexcept {
  // Of memory the application tells the user nothing, and a wish to stop is no failure.
  return result != PF_Err_OUT_OF_MEMORY && result != PF_Interrupt_CANCEL;
}

}  // namespace

// Hears what the host would show, and puts broken rules into the journal.
class Stage::Ear : public host::Listener {
 public:
  explicit Ear(Journal& journal) : journal_(journal) {}

  void message(host::MessageKind kind, std::string_view, std::string_view text) override {
    if (kind == host::MessageKind::protocol) {
      const std::string rule = ruleOfReport(text).id;
      if (!isForgiven(rule)) journal_.violate(rule, text);
    } else {
      messages_.fetch_add(1);
    }
  }
  void status(std::string_view, std::string_view text) override { journal_.step(text); }
  bool progress(std::int32_t, std::int32_t) override {
    journal_.step(journal_.doing());  // a sign of life
    return true;
  }

  void forgive(std::vector<std::string> rules) {
    const std::lock_guard guard(mutex_);
    forgiven_ = std::move(rules);
  }

  int messages() const { return messages_.load(); }

 private:
  bool isForgiven(const std::string& rule) {
    const std::lock_guard guard(mutex_);
    return std::find(forgiven_.begin(), forgiven_.end(), rule) != forgiven_.end();
  }

  Journal& journal_;
  std::mutex mutex_;
  std::vector<std::string> forgiven_;
  std::atomic<int> messages_{0};
};

Pixels pixelsOf(const host::Image& image) {
  const auto row = static_cast<std::size_t>(image.width()) *
                   static_cast<std::size_t>(host::pixelBytes(image.depth()));
  Pixels pixels;
  pixels.reserve(row * static_cast<std::size_t>(image.height()));
  for (std::int32_t y = 0; y < image.height(); ++y) {
    pixels.insert(pixels.end(), image.row(y), image.row(y) + row);
  }
  return pixels;
}

Stage::Stage(Trial& trial, StageOptions options)
    : trial_(trial),
      ear_(std::make_unique<Ear>(trial.journal)),
      layer_(options.layer, trial.subject.seed) {
  if (options.host.threads == 0) options.host.threads = 2;
  host_ = std::make_unique<host::Host>(options.role, options.version, options.host);
  host_->setListener(ear_.get());
  trial.journal.step("load the library");
  try {
    module_ = std::make_unique<host::EffectModule>(trial.subject.library);
  } catch (const host::Error& problem) {
    throw CannotStart("load-failed", problem.what());
  }
}

Stage::~Stage() = default;

void Stage::setUp() {
  trial_.journal.step("GLOBAL_SETUP and PARAMS_SETUP");
  try {
    effect_ = std::make_unique<host::Effect>(*host_, *module_);
  } catch (const host::Error& problem) {
    throw CannotStart("refused", problem.what());
  }
  claims_ = claimsOf(*effect_);
}

void Stage::close() {
  trial_.journal.step("GLOBAL_SETDOWN");
  effect_.reset();
  const host::Outstanding left = host_->outstanding();
  trial_.journal.step("count what was not given back");
  for (const Leak& leak : kLeaks) {
    const std::int64_t count = left.*leak.count;
    if (count == 0) continue;
    trial_.journal.violate(leak.rule, "not given back: " + std::to_string(count) + " " + leak.noun +
                                          (count == 1 ? "" : "s"));
  }
  for (const std::string& suite : host_->missingSuites()) {
    trial_.journal.violate("unserved", "asked for the suite " + suite);
  }
}

void Stage::forgive(std::vector<std::string> rules) {
  ear_->forgive(std::move(rules));
}

bool Stage::attempt(const std::string& doing, const std::function<void()>& work, const char* rule) {
  trial_.journal.step(doing);
  const int before = ear_->messages();
  try {
    work();
    return true;
  } catch (const host::CommandError& problem) {
    trial_.journal.violate(rule, problem.what());
    if (reportsItself(problem.result()) && ear_->messages() == before) {
      trial_.journal.violate("silent-error", "command " + std::to_string(problem.command()) +
                                                 " gave " + std::to_string(problem.result()) +
                                                 " and no message");
    }
  } catch (const host::Cancelled&) {
    trial_.journal.violate(rule, "the effect says that it was cancelled; nobody did");
  } catch (const host::Error& problem) {
    trial_.journal.violate(rule, problem.what());
  }
  return false;
}

bool Stage::tolerate(const std::string& doing, const std::function<void()>& work) {
  trial_.journal.step(doing);
  try {
    work();
    return true;
  } catch (const host::Error&) {
    return false;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

std::optional<Pixels> Stage::render(host::Instance& instance, std::int32_t frame, host::Depth depth,
                                    const char* rule) {
  std::optional<Pixels> pixels;
  attempt(
      "render frame " + std::to_string(frame) + " at " + nameOf(depth),
      [&] {
        host::Image image;
        instance.render(frame, depth, image, claims_.path);
        pixels = pixelsOf(image);
      },
      rule);
  return pixels;
}

}  // namespace validate
