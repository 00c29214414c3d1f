#include "Failure/Raising/DebuggerAccess.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/CFailureModule.h"
#include "Failure/Raising/LastChanceHandler.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace NSLichen;

namespace {

class CNotingDebugger : public IDebugger {
public:
    CNotingDebugger() { SetDebugger(this); }
    ~CNotingDebugger() override { SetDebugger(nullptr); }

    void Trace(const CFailureSite& site, const char* text) override {
        fCalls.push_back("trace " + std::to_string(site.fNumber) + " " + text);
        if (*text == '!') {
            throw std::runtime_error("full");
        }
    }
    void Report(const CExceptionBodyMixin& failure) override {
        fCalls.push_back("report " + std::to_string(failure.fCode));
    }
    void ReportAssertion(const CFailureSite&, const char* text) override {
        fCalls.push_back(std::string("assertion ") + text);
    }
    void Indent() override { fCalls.emplace_back("in"); }
    void Outdent() override { fCalls.emplace_back("out"); }

    std::vector<std::string> fCalls;
};

class CNotingHandler : public ILastChanceHandler {
public:
    CNotingHandler() { SetLastChanceHandler(this); }
    ~CNotingHandler() override { SetLastChanceHandler(nullptr); }

    void OnException(const std::exception& exception) override { fSeen = exception.what(); }
    void OnUnknownException() override { fSeen = "unknown"; }

    std::string fSeen;
};

template <class X>
void HandleThrown(const X& thrown) {
    try {
        throw X(thrown);
    } catch (...) {
        HandleEscapedException();
    }
}

} // namespace

TEST(DebuggerAccess, WithoutADebuggerOnlyAFailedAssertionIsHeard) {
    ASSERT_EQ(GetDebugger(), nullptr);
    TraceFormatted(CFailureSite(), "%d", 1);
    TraceFormattedOutdented(CFailureSite(), "%d", 1);
    ReportToDebugger(CExceptionBodyMixin());
    IndentTrace();
    OutdentTrace();
    try {
        OnAssertionFailed(CFailureSite(), "a > b");
        ADD_FAILURE();
    } catch (const XUnitTestFailure& exception) {
        EXPECT_STREQ(exception.what(), "OnAssertionFailed");
    }
}

TEST(DebuggerAccess, EveryEntryReachesTheDebugger) {
    CNotingDebugger debugger;
    CFailureSite site;
    site.fNumber = 3;
    TraceFormatted(site, "%s %d", "x", 5);
    TraceFormattedOutdented(site, "y");
    EXPECT_THROW(TraceFormattedOutdented(site, "!"), std::runtime_error);
    ReportToDebugger(CExceptionBodyMixin());
    OnAssertionFailed(site, "a > b");
    const std::vector<std::string> expected{"trace 3 x 5", "out",      "trace 3 y",
                                            "in",          "out",      "trace 3 !",
                                            "in",          "report 5", "assertion a > b"};
    EXPECT_EQ(debugger.fCalls, expected);
    TraceFormatted(site, "%s", std::string(5000, 'z').c_str());
    EXPECT_EQ(debugger.fCalls.back(), "trace 3 " + std::string(4095, 'z'));
}

TEST(LastChanceHandler, TakesExceptionsAndOtherThings) {
    CNotingHandler handler;
    HandleThrown(XRead("lost"));
    EXPECT_EQ(handler.fSeen, "lost");
    HandleThrown(5);
    EXPECT_EQ(handler.fSeen, "unknown");
    // Outside a catch there is nothing to rethrow.
    handler.fSeen.clear();
    HandleEscapedException();
    EXPECT_EQ(handler.fSeen, "unknown");
}

TEST(FailureModule, StandsFromTheStaticInitialisersOn) {
    EXPECT_GT(CFailureModuleUse::GetCount(), 0);
    const int32_t before = CFailureModuleUse::GetCount();
    {
        const CFailureModuleUse use;
        EXPECT_EQ(CFailureModuleUse::GetCount(), before + 1);
    }
    EXPECT_EQ(CFailureModuleUse::GetCount(), before);
    const SCustomObjectTypes types = GetCustomObjectTypes();
    ASSERT_EQ(types.fCount, 1u);
    EXPECT_EQ(types.fTypes[0], LopFileWord());
}
