#include "Support/Loader/IDLLLoader.h"

#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cmath>
#include <cstring>

namespace NSSupport {
namespace {

TEST(DLLLoader, LoadsByNameAndByPath) {
    const auto loader = MakeDLLLoader();
    const auto byName = loader->Open(u"libm.so.6");
    const auto cosine = reinterpret_cast<double (*)(double)>(byName->GetAddress("cos"));
    EXPECT_EQ(cosine(0.0), 1.0);
    EXPECT_EQ(byName->FindAddress("no_such_name"), nullptr);
    EXPECT_THROW(byName->GetAddress("no_such_name"), NSLichen::XNotFound);

    Dl_info place{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(cosine), &place), 0);
    std::u16string path = u"C:";
    for (const char* c = place.dli_fname; *c != '\0'; ++c) {
        path.push_back(*c == '/' ? u'\\' : static_cast<char16_t>(*c));
    }
    const auto byPath = loader->Open(path);
    EXPECT_EQ(byPath->FindAddress("cos"), byName->FindAddress("cos"));

    for (const auto* const name :
         {u"", u"no_such_module", u"C:\\no\\such\\module", u"D:\\libm.so.6"}) {
        EXPECT_THROW(loader->Open(name), NSLichen::XNotFound);
    }
}

} // namespace
} // namespace NSSupport
