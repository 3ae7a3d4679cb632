#pragma once

#include <functional>
#include <string>

struct ChildEnd {
    int status = 0;   // exit status, or 128 and the number of the signal that ended it
    std::string said; // on standard output and standard error; of a long text, its end
};

// Does `work`, whose result is an exit status, in a child process and listens to it; what it says
// is passed on to this process's standard error. The child ends with this process.
ChildEnd runListening(const std::function<int()>& work);
