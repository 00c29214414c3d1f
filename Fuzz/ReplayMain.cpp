// Runs a fuzzer's function over files and folders of inputs, on any compiler: what the test suite
// does with the seeds and with every input that once was a finding. Each input runs once in every
// form that this processor has.

#include "LoopLibrary/Codec/TWIPForms.h"
#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size);

namespace {

int gReplayed = 0;

void Replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    std::fprintf(stderr, "%s\n", path.string().c_str());
    for (const NSLOPDLL::SRenderForm& form : NSLOPDLL::GetRenderForms()) {
        NSLOPDLL::ForceRenderForm(form.fName);
        NSLOPDLL::ForceTWIPForm(form.fName);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    ++gReplayed;
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            Replay(path);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
            if (entry.is_regular_file()) {
                Replay(entry.path());
            }
        }
    }
    std::printf("%d inputs replayed\n", gReplayed);
    return gReplayed > 0 ? 0 : 1;
}
