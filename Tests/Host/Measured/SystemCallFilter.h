#pragma once

#include <functional>

// What became of work in a process that may compute and exit, and do nothing else.
enum class EAlone {
    kTrue,
    kFalse,        // what the work answered
    kSystemCall,   // which ended the process
    kNotSupported, // no such filters on this system
};

// Forks, forbids the child every system call but its exit, and lets it do the work.
EAlone RunWithoutSystemCalls(const std::function<bool()>& work);
