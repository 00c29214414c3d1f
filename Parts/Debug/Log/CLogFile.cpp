#include "Debug/Log/CLogFile.h"

#include "Failure/Raising/Raise.h"
#include "Text/UnicodeConversion.h"

#include <cstring>

namespace NSDebugPackage {

CLogFile::CLogFile(const std::string& fileName, const std::string& folder, bool erase)
    : fPath(NSTextPackage::Utf8ToUtf16Default(folder + fileName)) {
    if (erase && PathExists(fPath) && !RemoveFile(fPath)) {
        NSLichen::Raise(std::exception());
    }
}

void CLogFile::Write(const char* line, size_t) {
    if (!fFile) {
        fFile = std::make_unique<CAppendFile>(fPath);
    }
    if (fFile->Append(line, std::strlen(line))) {
        fFile->Append("\r\n", 2);
    }
}

void CLogFile::Flush() {
    if (fFile) {
        fFile->Flush();
    }
}

} // namespace NSDebugPackage
