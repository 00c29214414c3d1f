#include "Debug/Symbols/SymbolEngine.h"

#include "Debug/Symbols/CElfSymbols_posix.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <memory>

namespace NSDebugPackage {

namespace {

constexpr uint32_t kMostCaptured = 64;

bool gStarted = false;
// By path; read when an address of the module is first asked for.
std::map<std::string, CElfSymbols> gModules;

std::string Demangle(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> plain(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return status == 0 && plain ? plain.get() : name;
}

} // namespace

bool StartSymbolEngine() {
    // The first capture of a process loads a library and allocates; a later one may come from a
    // handler of a fault.
    std::array<void*, 1> frame{};
    gStarted = backtrace(frame.data(), 1) > 0;
    return gStarted;
}

void EndSymbolEngine() {
    gModules.clear();
    gStarted = false;
}

SCodeSymbol FindCodeSymbol(const void* address) {
    SCodeSymbol result;
    Dl_info place{};
    link_map* module = nullptr;
    if (!gStarted ||
        dladdr1(address, &place, reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP) == 0) {
        return result;
    }
    result.fSource = place.dli_fname;
    // The program's own name may be relative to a folder that is no longer the current one.
    const bool isProgram = module->l_name == nullptr || module->l_name[0] == '\0';
    const std::string file = isProgram ? "/proc/self/exe" : module->l_name;
    const CElfSymbols& symbols = gModules.try_emplace(file, file).first->second;
    std::string name;
    const auto code = reinterpret_cast<uint64_t>(address);
    if (symbols.Find(code - module->l_addr, name, result.fOffset)) {
        result.fName = Demangle(name);
    } else if (place.dli_sname != nullptr) {
        result.fName = Demangle(place.dli_sname);
        result.fOffset = code - reinterpret_cast<uint64_t>(place.dli_saddr);
    }
    return result;
}

uint32_t CaptureFrames(const void* first, void** frames, uint32_t limit) {
    std::array<void*, kMostCaptured> all{};
    const int captured = backtrace(all.data(), static_cast<int>(all.size()));
    const auto end = all.begin() + std::max(captured, 0);
    // How many frames of this package lie on top depends on the build.
    auto start = std::find(all.begin(), end, first);
    if (start == end) {
        start = all.begin() + std::min<ptrdiff_t>(2, end - all.begin());
    }
    const auto count = std::min(static_cast<ptrdiff_t>(limit), end - start);
    std::copy_n(start, count, frames);
    return static_cast<uint32_t>(count);
}

} // namespace NSDebugPackage
