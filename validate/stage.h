// validate/stage.h — a host with the effect loaded, and everything it reports put in the journal.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/effect.h"
#include "host/host.h"
#include "host/instance.h"
#include "validate/check.h"
#include "validate/claims.h"
#include "validate/test_layer.h"

namespace validate {

struct StageOptions {
  host::Role role = host::Role::afterEffects;
  host::ApiVersion version = {13, 15};
  host::HostOptions host;
  LayerShape layer;
};

/// Pixels row by row, without what stands between the rows.
using Pixels = std::vector<std::byte>;
Pixels pixelsOf(const host::Image& image);

class Stage {
 public:
  /// Loads the library. Throws CannotStart.
  explicit Stage(Trial& trial, StageOptions options = {});
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  /// Sends GLOBAL_SETUP and PARAMS_SETUP. Throws CannotStart when the effect refuses.
  void setUp();
  /// Takes the effect down; whatever it has not given back breaks a rule. Instances are gone by
  /// now.
  void close();

  host::Host& host() noexcept { return *host_; }
  host::EffectModule& module() noexcept { return *module_; }
  host::Effect& effect() noexcept { return *effect_; }
  const Claims& claims() const noexcept { return claims_; }
  TestLayer& layer() noexcept { return layer_; }

  /// Runs work as a step. What the effect refuses breaks `rule`; false then.
  bool attempt(const std::string& doing, const std::function<void()>& work,
               const char* rule = "command-failed");
  /// Runs work as a step in which refusals are fair. False when something was refused.
  bool tolerate(const std::string& doing, const std::function<void()>& work);

  /// What the host reports under these rules from now on is no violation; empty: everything is.
  void forgive(std::vector<std::string> rules);

  /// The frame, or nothing when the effect failed, which breaks `rule`.
  std::optional<Pixels> render(host::Instance& instance, std::int32_t frame, host::Depth depth,
                               const char* rule = "command-failed");

 private:
  class Ear;

  Trial& trial_;
  std::unique_ptr<Ear> ear_;
  TestLayer layer_;
  std::unique_ptr<host::Host> host_;
  std::unique_ptr<host::EffectModule> module_;
  std::unique_ptr<host::Effect> effect_;
  Claims claims_;
};

}  // namespace validate
