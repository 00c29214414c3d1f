#pragma once

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

#include <string>

namespace NSTextPackage {

// The text of the failure, which must be about Unicode.
template <class Conversion>
std::string RefusalOf(Conversion conversion) {
    try {
        conversion();
    } catch (const NSLichen::XFormatViolation& failure) {
        EXPECT_TRUE(NSLichen::HasTargetObjectType(failure, NSLichen::UnicodeWord()));
        return failure.what();
    }
    return "not refused";
}

} // namespace NSTextPackage
