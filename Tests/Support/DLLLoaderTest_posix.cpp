#include "Support/Loader/IDLLLoader.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <functional>
#include <string>

namespace NSSupport {

TEST(DLLLoader, LoadsByNameAndByPath) {
    const auto loader = MakeDLLLoader();
    const auto byName = loader->Open(u"libm.so.6");
    const auto cosine = reinterpret_cast<double (*)(double)>(byName->GetAddress("cos"));
    EXPECT_EQ(cosine(0.0), 1.0);
    EXPECT_EQ(byName->FindAddress("no_such_name"), nullptr);

    Dl_info place{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(cosine), &place), 0);
    std::u16string path = u"C:";
    for (const char* c = place.dli_fname; *c != '\0'; ++c) {
        path.push_back(*c == '/' ? u'\\' : static_cast<char16_t>(*c));
    }
    const auto byPath = loader->Open(path);
    EXPECT_EQ(byPath->FindAddress("cos"), byName->FindAddress("cos"));

    const struct {
        std::function<void()> fCall;
        const char* fTextBegins;
        NSLichen::CFixedName fTarget;
    } kRows[] = {
        {[&] { loader->Open(u"no_such_module"); }, "no_such_module.so: ", NSLichen::DllWord()},
        {[&] { loader->Open(u"C:\\no\\such"); }, "/no/such.so: ", NSLichen::DllWord()},
        {[&] { loader->Open(u"D:\\libm.so.6"); }, "dlopen failed", NSLichen::DllWord()},
        {[&] { byName->GetAddress("none"); }, "none", NSLichen::SymbolWord()}};
    for (const auto& [call, textBegins, target] : kRows) {
        try {
            call();
            ADD_FAILURE() << textBegins;
        } catch (const NSLichen::XNotFound& failure) {
            EXPECT_TRUE(std::string(failure.what()).starts_with(textBegins)) << failure.what();
            EXPECT_TRUE(NSLichen::HasTargetObjectType(failure, target)) << textBegins;
        }
    }
}

} // namespace NSSupport
