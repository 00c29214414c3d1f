#include "Failure/Raising/LastChanceHandler.h"

#include <atomic>
#include <cstdlib>

namespace NSLichen {

namespace {

constinit std::atomic<ILastChanceHandler*> sHandler = nullptr;

} // namespace

void SetLastChanceHandler(ILastChanceHandler* handler) noexcept {
    sHandler.store(handler, std::memory_order_release);
}

void HandleEscapedException() {
    ILastChanceHandler* const handler = sHandler.load(std::memory_order_acquire);
    if (handler == nullptr) {
        // Without static destructors: an exception that escaped leaves nothing to rely on.
        std::_Exit(-1);
    }
    // Rethrowing nothing would terminate.
    if (std::current_exception() == nullptr) {
        handler->OnUnknownException();
        return;
    }
    try {
        throw;
    } catch (const std::exception& exception) {
        handler->OnException(exception);
    } catch (...) {
        handler->OnUnknownException();
    }
}

} // namespace NSLichen
