#pragma once

#include "FileLib/Glue/FileLibFailures.h"
#include "FileLib/Interface/FileLibRecords.h"
#include "FileLib/Interface/FileLibStatus.h"

#include <cstdint>
#include <initializer_list>
#include <string>

namespace NSFileLibInternals {

// The shape that all operations of the glue share: check the object, then the arguments, note in
// the out-arguments that nothing is done yet, and run the body; nothing leaves but a status.

/// The status for the exception being caught, whatever happens on the way to it.
int32_t CurrentExceptionStatus() noexcept;

/// kFileLibStatus_OK, or what forbids the operation.
int32_t CheckCall(int32_t isValid, std::initializer_list<const void*> pointers) noexcept;
/// The same for a read or write, which takes no negative position or count.
int32_t CheckTransfer(int32_t isValid, int64_t position, int64_t count,
                      const uint8_t* buffer) noexcept;

/// For an operation that returns its status. `check` is what CheckCall answered.
template <class TBody>
int32_t RunGuarded(int32_t check, const TBody& body) noexcept {
    if (check != NSFileLib::kFileLibStatus_OK) {
        return check;
    }
    try {
        body();
        return NSFileLib::kFileLibStatus_OK;
    } catch (...) {
        return CurrentExceptionStatus();
    }
}

/// For an operation that returns an object, which the body makes.
template <class TObject, class TBody>
TObject* CreateGuarded(int32_t check, int32_t* status, const TBody& body) noexcept {
    // With nowhere to answer there is nothing to do either.
    if (status == nullptr) {
        return nullptr;
    }
    *status = NSFileLib::kFileLibStatus_LogicError;
    TObject* object = nullptr;
    *status = RunGuarded(check, [&object, &body] { object = body(); });
    return object;
}

/// Marks of an out-argument that is not filled yet.
void PutUnfinished(char16_t* text) noexcept;
void PutUnfinished(char* text) noexcept;
void PutUnfinished(int32_t* value) noexcept;
void PutUnfinished(int64_t* value) noexcept;
void PutUnfinished(NSFileLib::SFileInfo* info) noexcept;
void PutUnfinished(NSFileLib::SVolumeInfo* info) noexcept;

/// 1 or 0.
void PutFlag(int32_t* flag, bool value) noexcept;

/// Into a buffer of kFileLibTextUnits, cut without splitting a character.
void PutText(char16_t* buffer, const std::u16string& text);
void PutText(char* buffer, const std::string& utf8);

/// From a buffer of kFileLibTextUnits, whose last unit counts as the terminator.
std::u16string TakeText(const char16_t* buffer);

} // namespace NSFileLibInternals
