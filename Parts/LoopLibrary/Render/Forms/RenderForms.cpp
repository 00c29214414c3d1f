#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <atomic>

namespace NSLOPDLL {

namespace {

// Null until the first call chooses, so that loading the library runs nothing. Threads that meet in
// that call choose alike.
constinit std::atomic<const SRenderForm*> gForm = nullptr;

} // namespace

const SRenderForm& GetRenderForm() noexcept {
    const SRenderForm* form = gForm.load(std::memory_order_relaxed);
    if (form == nullptr) {
        form = &GetRenderForms().back();
        gForm.store(form, std::memory_order_relaxed);
    }
    return *form;
}

bool ForceRenderForm(std::string_view name) noexcept {
    if (name.empty()) {
        gForm.store(nullptr, std::memory_order_relaxed);
        return true;
    }
    for (const SRenderForm& form : GetRenderForms()) {
        if (name == form.fName) {
            gForm.store(&form, std::memory_order_relaxed);
            return true;
        }
    }
    return false;
}

} // namespace NSLOPDLL
