#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <cstdlib>

#include <gtest/gtest.h>

// The whole program runs once more for each slower form of this processor, which the environment
// names.

namespace NSLOPDLL {

namespace {

class CFormOfTheRun : public ::testing::EmptyTestEventListener {
public:
    explicit CFormOfTheRun(const char* name) : fName(name) {}

    // Before each test, since some choose forms themselves.
    void OnTestStart(const ::testing::TestInfo& /*test*/) override {
        EXPECT_TRUE(ForceRenderForm(fName)) << fName;
    }

private:
    const char* fName;
};

[[maybe_unused]] const bool gIsForced = [] {
    const char* const name = std::getenv("LOOP_RENDER_FORM");
    if (name != nullptr) {
        ::testing::UnitTest::GetInstance()->listeners().Append(new CFormOfTheRun(name));
    }
    return name != nullptr;
}();

} // namespace

} // namespace NSLOPDLL
