#pragma once

namespace NSLOPDLL {

/// The module's own handle at the system, by which it finds its file. Null where a system has none.
void* GetSystemHandle() noexcept;

} // namespace NSLOPDLL
