// What a call raises, for comparing with what it should.
#pragma once

#include "Tests/FileLib/CFakeFileOps.h"

#include <exception>
#include <functional>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

constexpr uint32_t kUnknownError = 1000;

// The text of an exception of exactly the class X; anything else is told as such.
template <class X>
std::string TextRaised(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& exception) {
        const bool isX = typeid(exception) == typeid(X);
        return isX ? exception.what() : std::string("another class: ") + exception.what();
    }
    return "nothing raised";
}

struct SFailureRow {
    std::string (*fTextRaised)(const std::function<void()>&);
    std::function<void()> fCall;
    std::string fText;
    std::string fOperation =
        {}; // fails with an unknown error, which the text names by its function
};

inline void ExpectFailures(CFakeFileOps& ops, const std::vector<SFailureRow>& rows) {
    for (const SFailureRow& row : rows) {
        ops.Script(row.fOperation, {kUnknownError});
        const char* tail = row.fOperation.empty() ? "" : " failed with unrecognized error type";
        EXPECT_EQ(row.fTextRaised(row.fCall), row.fText + tail);
    }
}

} // namespace NSFileLibInternals
