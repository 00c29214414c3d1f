#pragma once

namespace NSLOPDLL {

/// The thread runtime, a copy of which each load of this library brings along, takes a slot of
/// thread-local storage, of which a process has some thousand, two handles for a lock of its own,
/// and two for each thread that uses it. When a thread ends it closes that thread's two, but at an
/// unload it frees neither the slot nor the other handles. This function does: it runs once, as the
/// last code of a module that is unloaded while the process goes on. `module` is the module's
/// handle.
///
/// A thread that used the library and outlives it keeps its two handles until the process ends.
void FreeRuntimeThreadSlot(void* module) noexcept;

} // namespace NSLOPDLL
