// What a call raises, for comparing with what it should.
#pragma once

#include "Failure/FailureQuestions.h"
#include "Failure/RaisingSteps.h"

#include <exception>
#include <string>
#include <typeinfo>

namespace NSFileLibInternals {

// The text of an exception of exactly the class X; anything else is told as such.
template <class X, class Call>
std::string TextRaised(Call call) {
    try {
        call();
    } catch (const std::exception& exception) {
        const bool isX = typeid(exception) == typeid(X);
        return isX ? exception.what() : std::string("another class: ") + exception.what();
    }
    return "nothing raised";
}

} // namespace NSFileLibInternals
