#pragma once

namespace NSLOPDLL {

/// The slot behind CInsideLibrary lives from process attach to process detach of the module. Before
/// and after, and when the system has no slot left, every thread counts as 0.
void AllocateThreadSlot() noexcept;
void FreeThreadSlot() noexcept;

} // namespace NSLOPDLL
