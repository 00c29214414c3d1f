#include "Debug/Log/LogFolders.h"

#include "Debug/Log/DebugFiles.h"
#include "Text/UnicodeConversion.h"

namespace NSDebugPackage {

using NSTextPackage::Utf8ToUtf16Default;

namespace {

bool HaveFolder(const std::u16string& path) {
    return PathExists(path) || MakeFolder(path);
}

// `base` ends in "\", and so does the answer.
std::u16string MakeLogFolder(const std::u16string& base, const std::u16string& name) {
    const std::u16string logs = base + u"Halyard Logs";
    const std::u16string folder = logs + u"\\" + name + u" Logs";
    return HaveFolder(logs) && HaveFolder(folder) ? folder + u"\\" : base;
}

} // namespace

std::string GetDebugLogFolder(const std::string& name) {
    std::u16string documents;
    if (!FindDocumentsFolder(documents)) {
        return {};
    }
    return NSTextPackage::Utf16ToUtf8(MakeLogFolder(documents, Utf8ToUtf16Default(name)));
}

bool CopyLogToFolder(const std::string& sourceFolder, const std::string& fileName,
                     const std::string& folderName) {
    std::u16string folder;
    if (!FindDesktopFolder(folder)) {
        return false;
    }
    folder += Utf8ToUtf16Default(folderName);
    return HaveFolder(folder) && CopyOneFile(Utf8ToUtf16Default(sourceFolder + fileName),
                                             folder + u"\\" + Utf8ToUtf16Default(fileName));
}

} // namespace NSDebugPackage
