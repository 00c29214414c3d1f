#include "Fuzz/HostContract.h"

// The exports as a contract: the first two bytes say how many of the following are decisions, the
// rest is the file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    const std::vector<uint8_t> choices = source.Take(source.Word(2) % 512);
    CByteSource decisions(choices.data(), choices.size());
    CheckHostContract(source.Rest(), decisions);
    return 0;
}
