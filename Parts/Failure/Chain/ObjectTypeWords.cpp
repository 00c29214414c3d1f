#include "Failure/Chain/ObjectTypeWords.h"

#include <array>

namespace NSLichen {

namespace {

constexpr std::array kObjectTypeWords{
    RangeWord(),      LengthWord(),         MemoryWord(),    FormatWord(),   BufferWord(),
    DllWord(),        DiskWord(),           VolumeWord(),    DriveWord(),    FileWord(),
    DriverWord(),     NetworkWord(),        SocketWord(),    PortWord(),     MessageWord(),
    HandleWord(),     SymbolWord(),         InterfaceWord(), ApiWord(),      ThreadWord(),
    PropertyWord(),   AuthenticationWord(), UserWord(),      PasswordWord(), ReferenceWord(),
    ServerWord(),     ItemWord(),           MagicWord(),     PathWord(),     UnicodeWord(),
    FileHandleWord(), DirectoryWord()};

static_assert(kObjectTypeWords.size() == 32);

} // namespace

uint32_t GetObjectTypeWordCount() {
    return static_cast<uint32_t>(kObjectTypeWords.size());
}

CFixedName GetObjectTypeWord(uint32_t index) {
    return index < kObjectTypeWords.size() ? kObjectTypeWords[index] : CFixedName();
}

} // namespace NSLichen
