#pragma once

#include <cstdio>
#include <cstdlib>

// A promise that the code under test makes; breaking it is a finding.
#define PROMISE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: broken promise: %s\n", __FILE__, __LINE__, #condition);   \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
