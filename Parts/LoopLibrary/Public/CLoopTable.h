#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"
#include "Support/Threads/RealTime.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace NSLOPDLL {

class CLOPObject;

/// The open loops, which it owns, in order of creation, with an index by address beside them so
/// that a look-up takes logarithmic time. Not locked: its owner guards it.
class CLoopTable {
public:
    CLoopTable();
    /// Closes the loops from the newest to the oldest.
    ~CLoopTable();
    CLoopTable(const CLoopTable&) = delete;
    CLoopTable& operator=(const CLoopTable&) = delete;

    /// Raises std::bad_alloc with nothing added.
    LOPHandle Add(std::unique_ptr<CLOPObject> loop);
    /// The loop of a handle, or null. Dereferences nothing.
    CLOPObject* Find(LOPHandle handle) const noexcept LOOP_REALTIME;
    /// Only a loop that Find gave. The others keep their order.
    std::unique_ptr<CLOPObject> Remove(const CLOPObject* loop) noexcept;

    size_t GetSize() const noexcept { return fLoops.size(); }

private:
    std::vector<std::unique_ptr<CLOPObject>> fLoops; // in order of creation
    std::vector<CLOPObject*> fByAddress;             // the same loops
};

} // namespace NSLOPDLL
