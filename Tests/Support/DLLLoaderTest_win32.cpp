#include "Support/Loader/IDLLLoader.h"

#include "Support/Version/VersionInfo.h"

#include <gtest/gtest.h>

namespace NSSupport {

TEST(DLLLoader, LoadsByNameAndByPath) {
    const auto loader = MakeDLLLoader();
    for (const auto* const name :
         {u"kernel32", u"kernel32.dll", u"C:\\windows\\system32\\kernel32"}) {
        const auto module = loader->Open(name);
        EXPECT_NE(module->GetAddress("GetTickCount"), nullptr);
        EXPECT_EQ(module->FindAddress("NoSuchName"), nullptr);
    }
}

TEST(VersionInfo, OfASystemFile) {
    const auto info = OpenFileVersionInfo(u"C:\\windows\\system32\\kernel32.dll");
    ASSERT_NE(info, nullptr);
    ASSERT_TRUE(info->GetLanguage());
    EXPECT_TRUE(FindVersionText(*info));
    EXPECT_EQ(FindBuildKindName(*info), "");
}

} // namespace NSSupport
