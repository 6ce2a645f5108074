// host/effect_module.h — a loaded effect library.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/property_list.h"
#include "hostapi/commands.h"

namespace host {

// Loads the library and finds its entry point: the one that its property list names, or
// "EntryPointFunc". The list comes from the library's resource on Windows and elsewhere from a file
// beside it (libname.pipl), if there is one. Throws ModuleError.
class EffectModule {
 public:
  explicit EffectModule(const std::filesystem::path& library);
  ~EffectModule();
  EffectModule(const EffectModule&) = delete;
  EffectModule& operator=(const EffectModule&) = delete;

  EntryPoint entry() const noexcept { return entry_; }
  const std::filesystem::path& path() const noexcept { return path_; }
  const std::optional<PropertyList>& properties() const noexcept { return properties_; }

 private:
  std::filesystem::path path_;
  void* library_ = nullptr;
  EntryPoint entry_ = nullptr;
  std::optional<PropertyList> properties_;
};

}  // namespace host
