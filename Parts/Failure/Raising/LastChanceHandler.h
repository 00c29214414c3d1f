#pragma once

#include <exception>

namespace NSLichen {

/// Takes exceptions that nobody else did.
class ILastChanceHandler {
public:
    virtual void OnException(const std::exception& exception) = 0;
    virtual void OnUnknownException() = 0;
    virtual ~ILastChanceHandler() = default;

protected:
    ILastChanceHandler() = default;
    ILastChanceHandler(const ILastChanceHandler&) = default;
    ILastChanceHandler& operator=(const ILastChanceHandler&) = default;
};

/// Borrowed; null until one is set.
void SetLastChanceHandler(ILastChanceHandler* handler) noexcept;

/// To be called inside a catch: hands the current exception to the handler. With none set it ends
/// the process with exit code -1.
void HandleEscapedException();

} // namespace NSLichen
