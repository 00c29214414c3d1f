// A folder of its own for a test, removed with all that is in it.
#pragma once

#include <string>

namespace NSFileLibInternals {

class CTestFolder {
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::u16string& GetPath() const { return fPath; } // ends in "\"
    std::u16string PathOf(const std::u16string& name) const { return fPath + name; }
    int CountEntries() const;

private:
    std::u16string fPath;
};

} // namespace NSFileLibInternals
