#pragma once

#include <string>

namespace NSFileLibInternals {

/// The two files change names, and the one that now bears the name of a has a's creation time. Both
/// must be on one volume. After a failure both have their old names, and no third file is left;
/// if moving back fails too, what was in a stands under a third name, or what was in b under the
/// name of a.
void WinSwapFilesContents(const std::u16string& a, const std::u16string& b);

} // namespace NSFileLibInternals
