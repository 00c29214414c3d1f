// The form that a libFuzzer program runs in, by LOOP_RENDER_FORM of the environment: plain, sse2 or
// whatever this processor has; the fastest without it.

#include "LoopLibrary/Codec/TWIPForms.h"
#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    const char* const name = std::getenv("LOOP_RENDER_FORM");
    if (name != nullptr && !(NSLOPDLL::ForceRenderForm(name) && NSLOPDLL::ForceTWIPForm(name))) {
        std::fprintf(stderr, "no form %s here\n", name);
        std::exit(1);
    }
    return 0;
}
