#include "Debug/Symbols/CElfSymbols_posix.h"

#include "Debug/Platform/CDescriptor_posix.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace NSDebugPackage {

namespace {

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);

// Count units from an offset of the file, none when they are not all there.
template <class Unit>
std::vector<Unit> ReadUnits(int file, uint64_t offset, uint64_t count) {
    struct stat status {};
    const uint64_t end = fstat(file, &status) == 0 ? static_cast<uint64_t>(status.st_size) : 0;
    // A damaged file may claim tables of any size.
    if (offset > end || count > (end - offset) / sizeof(Unit)) {
        return {};
    }
    std::vector<Unit> units(static_cast<size_t>(count));
    const auto size = static_cast<ssize_t>(count * sizeof(Unit));
    if (pread(file, units.data(), static_cast<size_t>(size), static_cast<off_t>(offset)) != size) {
        return {};
    }
    return units;
}

const Section* FindSection(const std::vector<Section>& sections, uint32_t type) {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [type](const Section& s) { return s.sh_type == type; });
    return found == sections.end() ? nullptr : &*found;
}

} // namespace

CElfSymbols::CElfSymbols(const std::string& path) {
    const CDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.IsOpen()) {
        ReadFunctions(file.Get());
    }
    std::sort(fFunctions.begin(), fFunctions.end(),
              [](const SFunction& a, const SFunction& b) { return a.fStart < b.fStart; });
}

void CElfSymbols::ReadFunctions(int file) {
    const auto headers = ReadUnits<Header>(file, 0, 1);
    if (headers.empty() || std::memcmp(headers[0].e_ident, ELFMAG, SELFMAG) != 0 ||
        headers[0].e_shentsize != sizeof(Section)) {
        return;
    }
    const auto sections = ReadUnits<Section>(file, headers[0].e_shoff, headers[0].e_shnum);
    const Section* table = FindSection(sections, SHT_SYMTAB);
    if (table == nullptr) {
        table = FindSection(sections, SHT_DYNSYM);
    }
    if (table == nullptr || table->sh_link >= sections.size()) {
        return;
    }
    const Section& names = sections[table->sh_link];
    const auto text = ReadUnits<char>(file, names.sh_offset, names.sh_size);
    for (const Symbol& symbol :
         ReadUnits<Symbol>(file, table->sh_offset, table->sh_size / sizeof(Symbol))) {
        const bool isFunction = ELF64_ST_TYPE(symbol.st_info) == STT_FUNC;
        if (isFunction && symbol.st_shndx != SHN_UNDEF && symbol.st_name < text.size()) {
            const char* const name = text.data() + symbol.st_name;
            fFunctions.push_back({symbol.st_value,
                                  symbol.st_size,
                                  {name, strnlen(name, text.size() - symbol.st_name)}});
        }
    }
}

bool CElfSymbols::Find(uint64_t address, std::string& name, uint64_t& offset) const {
    const auto behind =
        std::upper_bound(fFunctions.begin(), fFunctions.end(), address,
                         [](uint64_t value, const SFunction& f) { return value < f.fStart; });
    if (behind == fFunctions.begin()) {
        return false;
    }
    const SFunction& function = *std::prev(behind);
    if (address - function.fStart >= std::max<uint64_t>(function.fSize, 1)) {
        return false;
    }
    name = function.fName;
    offset = address - function.fStart;
    return true;
}

} // namespace NSDebugPackage
