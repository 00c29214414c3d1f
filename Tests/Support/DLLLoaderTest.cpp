#include "Support/Loader/IDLLLoader.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

namespace NSSupport {

class CModuleWithoutNames : public IOpenDLL {
public:
    Address FindAddress(const std::string&) const override { return nullptr; }
};

TEST(DLLLoader, RefusalsSayWhatIsMissing) {
    const auto loader = MakeDLLLoader();
    for (const auto* const name :
         {u"", u"no_such_module", u"C:\\no\\such\\module", u"D:\\libm.so.6"}) {
        try {
            loader->Open(name);
            ADD_FAILURE();
        } catch (const NSLichen::XNotFound& failure) {
            EXPECT_TRUE(NSLichen::HasTargetObjectType(failure, NSLichen::DllWord()));
            EXPECT_STRNE(failure.what(), "");
        }
    }
    try {
        CModuleWithoutNames().GetAddress("name");
        ADD_FAILURE();
    } catch (const NSLichen::XNotFound& failure) {
        EXPECT_TRUE(NSLichen::HasTargetObjectType(failure, NSLichen::SymbolWord()));
        EXPECT_STREQ(failure.what(), "name");
    }
}

} // namespace NSSupport
