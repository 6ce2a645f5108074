// host/effect_module.cpp — a loaded effect library.
#include "host/effect_module.h"

#include "host/dynamic_library.h"
#include "host/error.h"

namespace host {

EffectModule::EffectModule(const std::filesystem::path& library)
    : path_(library), library_(openLibrary(library)) {
  try {
    if (const auto bytes = findPropertyList(library_, path_)) {
      properties_ = readPropertyList(*bytes);
    }
    const std::string name = properties_ ? properties_->entryPoint : "EntryPointFunc";
    entry_ = reinterpret_cast<EntryPoint>(findFunction(library_, name));
    if (entry_ == nullptr) {
      throw ModuleError(path_.string() + " is no effect: it has no function " + name + ".");
    }
  } catch (...) {
    closeLibrary(library_);
    throw;
  }
}

EffectModule::~EffectModule() {
  closeLibrary(library_);
}

}  // namespace host
