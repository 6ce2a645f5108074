// platform/stay_loaded.h — keeping this library in its process.
#pragma once

namespace varilum {

/// From now on this library stays in the process until that ends, however often it is unloaded and
/// loaded. On Windows the compiler's run-time in it takes one of the process's 1088 slots for
/// thread-local values at each loading and never gives it back: a process that loads and unloads it
/// a thousand times would be aborted. Elsewhere nothing is kept, and nothing done.
void stayLoaded() noexcept;

}  // namespace varilum
