#include "LoopLibrary/Public/CLoopTable.h"

#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/LoopHandles.h"

#include <algorithm>
#include <functional>

namespace NSLOPDLL {

CLoopTable::CLoopTable() = default;

CLoopTable::~CLoopTable() {
    while (!fLoops.empty()) {
        fLoops.pop_back();
    }
}

LOPHandle CLoopTable::Add(std::unique_ptr<CLOPObject> loop) {
    CLOPObject* const address = loop.get();
    fLoops.push_back(std::move(loop));
    try {
        fByAddress.insert(
            std::lower_bound(fByAddress.begin(), fByAddress.end(), address, std::less<>()),
            address);
    } catch (...) {
        fLoops.pop_back();
        throw;
    }
    return HandleFromObject(address);
}

CLOPObject* CLoopTable::Find(LOPHandle handle) const noexcept LOOP_REALTIME {
    CLOPObject* const address = ObjectFromHandle(handle);
    const bool isOpen =
        std::binary_search(fByAddress.begin(), fByAddress.end(), address, std::less<>());
    return isOpen ? address : nullptr;
}

std::unique_ptr<CLOPObject> CLoopTable::Remove(const CLOPObject* loop) noexcept {
    fByAddress.erase(std::lower_bound(fByAddress.begin(), fByAddress.end(), loop, std::less<>()));
    const auto found = std::find_if(fLoops.begin(), fLoops.end(),
                                    [loop](const auto& held) { return held.get() == loop; });
    std::unique_ptr<CLOPObject> removed = std::move(*found);
    fLoops.erase(found);
    return removed;
}

} // namespace NSLOPDLL
