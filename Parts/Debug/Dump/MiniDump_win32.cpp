#include "Debug/Dump/MiniDump.h"

#include "Support/Modules/WideText_win32.h"

#include <windows.h>

#include <dbghelp.h>

namespace NSDebugPackage {

namespace {

bool WriteDumpInto(HANDLE file, void* fault) {
    const HMODULE help = LoadLibraryW(L"dbghelp.dll");
    if (help == nullptr) {
        return false;
    }
    const auto write = reinterpret_cast<decltype(&::MiniDumpWriteDump)>(
        reinterpret_cast<void*>(GetProcAddress(help, "MiniDumpWriteDump")));
    MINIDUMP_EXCEPTION_INFORMATION exception{};
    exception.ThreadId = GetCurrentThreadId();
    exception.ExceptionPointers = static_cast<EXCEPTION_POINTERS*>(fault);
    exception.ClientPointers = FALSE;
    const bool written =
        write != nullptr && write(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal,
                                  fault != nullptr ? &exception : nullptr, nullptr, nullptr);
    FreeLibrary(help);
    return written;
}

} // namespace

EDumpResult WriteProcessDump(const std::u16string& path, void* fault) {
    const wchar_t* const name = NSSupport::Wide(path);
    const HANDLE file =
        CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_FILE_EXISTS ? EDumpResult::kNameTaken : EDumpResult::kFailed;
    }
    const bool written = WriteDumpInto(file, fault);
    CloseHandle(file);
    if (!written) {
        DeleteFileW(name);
    }
    return written ? EDumpResult::kWritten : EDumpResult::kFailed;
}

} // namespace NSDebugPackage
