// platform/stay_loaded_posix.cpp — nothing of the run-time is kept here after unloading.
#include "platform/stay_loaded.h"

namespace varilum {

void stayLoaded() noexcept {}

}  // namespace varilum
