// What it costs to open the library, to initialize it, and what its file holds.

#include "Benchmarks/Contest/Contests.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <dlfcn.h>
#include <elf.h>
#include <unistd.h>

namespace LoopBench {

namespace {

struct SModuleFigures {
    size_t fCodeBytes = 0; // what is loaded and executable or read-only
    size_t fDataBytes = 0;
    size_t fRelocations = 0;
};

SModuleFigures ReadModule(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Elf64_Ehdr head{};
    file.read(reinterpret_cast<char*>(&head), sizeof head);
    std::vector<Elf64_Phdr> segments(head.e_phnum);
    file.seekg(static_cast<std::streamoff>(head.e_phoff));
    file.read(reinterpret_cast<char*>(segments.data()),
              static_cast<std::streamsize>(segments.size() * sizeof(Elf64_Phdr)));
    std::vector<Elf64_Shdr> sections(head.e_shnum);
    file.seekg(static_cast<std::streamoff>(head.e_shoff));
    file.read(reinterpret_cast<char*>(sections.data()),
              static_cast<std::streamsize>(sections.size() * sizeof(Elf64_Shdr)));
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    SModuleFigures figures;
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD) {
            ((segment.p_flags & PF_W) != 0 ? figures.fDataBytes : figures.fCodeBytes) +=
                segment.p_memsz;
        }
    }
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_type == SHT_RELA && section.sh_entsize != 0) {
            figures.fRelocations += section.sh_size / section.sh_entsize;
        }
    }
    return figures;
}

// Of a copy, since the library itself is open already and would only be counted up.
class CCopy {
public:
    explicit CCopy(const std::string& path) : fPath("/tmp/LoopBenchXXXXXX") {
        const int descriptor = mkstemp(fPath.data());
        if (descriptor < 0) {
            throw std::runtime_error("cannot make a file in /tmp");
        }
        close(descriptor);
        std::ofstream(fPath, std::ios::binary) << std::ifstream(path, std::ios::binary).rdbuf();
    }
    ~CCopy() { unlink(fPath.c_str()); }
    CCopy(const CCopy&) = delete;
    CCopy& operator=(const CCopy&) = delete;
    const std::string& GetPath() const { return fPath; }

private:
    std::string fPath;
};

} // namespace

void HoldStartContests(SSession& session) {
    CContest open("dlopen and dlclose", "time", 1);
    CContest initialize("LOPInitializeDLL and back", "time", 1);
    std::vector<std::unique_ptr<CCopy>> copies;
    for (const CLibrary* library : session.FromOldest()) {
        copies.push_back(std::make_unique<CCopy>(library->GetPath()));
        open.Add(library->GetName(), [path = copies.back()->GetPath()] {
            void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
            if (module == nullptr) {
                throw std::runtime_error(dlerror());
            }
            dlclose(module);
        });
        initialize.Add(library->GetName(), [library] {
            library->fUninitialize();
            library->fInitialize();
        });
        const SModuleFigures figures = ReadModule(library->GetPath());
        std::printf("file of %s: %zu bytes loaded, %zu of data, %zu relocations\n",
                    library->GetName().c_str(), figures.fCodeBytes, figures.fDataBytes,
                    figures.fRelocations);
        session.fReport.push_back({{"measure", "file of the library"},
                                   {"name", library->GetName()},
                                   {"code_bytes", figures.fCodeBytes},
                                   {"data_bytes", figures.fDataBytes},
                                   {"relocations", figures.fRelocations}});
    }
    session.Hold(open);
    session.Hold(initialize);
}

} // namespace LoopBench
