#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSDebugPackage {

/// The functions of one ELF file on disk, from its full symbol table or, in a stripped file, from
/// the exported names. Names are as the linker knows them.
class CElfSymbols {
public:
    /// A file that cannot be read or is not well formed has no functions.
    explicit CElfSymbols(const std::string& path);

    /// The function at an address as the file counts them. False when none is there.
    bool Find(uint64_t address, std::string& name, uint64_t& offset) const;

private:
    struct SFunction {
        uint64_t fStart;
        uint64_t fSize;
        std::string fName;
    };

    void ReadFunctions(int file);

    std::vector<SFunction> fFunctions; // by ascending start
};

} // namespace NSDebugPackage
