#include "LoopLibrary/Codec/TWIPForms.h"

#include <atomic>

namespace NSLOPDLL {

namespace {

// Null until the first call chooses, so that loading the library runs nothing. Threads that meet in
// that call choose alike.
constinit std::atomic<const STWIPForm*> gForm = nullptr;

} // namespace

const STWIPForm& GetTWIPForm() noexcept {
    const STWIPForm* form = gForm.load(std::memory_order_relaxed);
    if (form == nullptr) {
        form = &GetTWIPForms().back();
        gForm.store(form, std::memory_order_relaxed);
    }
    return *form;
}

bool ForceTWIPForm(std::string_view name) noexcept {
    if (name.empty()) {
        gForm.store(nullptr, std::memory_order_relaxed);
        return true;
    }
    for (const STWIPForm& form : GetTWIPForms()) {
        if (name == form.fName) {
            gForm.store(&form, std::memory_order_relaxed);
            return true;
        }
    }
    return false;
}

} // namespace NSLOPDLL
