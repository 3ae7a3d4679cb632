// Part of every test program: ending inside a test is a failure. The show dies with status 0, which
// would pass for success.
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

pid_t runner = 0; // while tests run; what they fork may end as it likes

class WholeRun : public testing::Environment {
public:
    void SetUp() override
    {
        runner = ::getpid();
        std::atexit([] {
            if (runner == ::getpid()) {
                std::fputs("The program ended inside a test.\n", stderr);
                ::_exit(1);
            }
        });
    }
    void TearDown() override { runner = 0; }
};

// GoogleTest owns it.
const testing::Environment* const kWholeRun = testing::AddGlobalTestEnvironment(new WholeRun);

} // namespace
