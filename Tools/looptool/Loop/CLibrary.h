#pragma once

namespace NSLoopTool {

/// The initialised library, for as long as it lives. One at a time: the program's entry holds it.
class CLibrary {
public:
    CLibrary();
    ~CLibrary();
    CLibrary(const CLibrary&) = delete;
    CLibrary& operator=(const CLibrary&) = delete;
};

} // namespace NSLoopTool
