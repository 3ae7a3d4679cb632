// What both readers do with a file before they look into it.
#include "tests/image/picture_checks.h"

#include <cstdlib>
#include <ctime>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

TEST(PictureFileDeathTest, OpensNothingButFiles)
{
    const std::string pipe = testing::TempDir() + "kso_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {std::string{"no/such.file"}, std::string{"/"}, pipe}) {
        const std::string message = "^\n\nError opening " + path + "!\n\n$";
        EXPECT_EXIT(Bitmap{}.load(path.c_str(), 32), kStatus0, message);
        EXPECT_EXIT(Bitmap{}.loadHsiRaw(path.c_str(), 32), kStatus0, message);
    }
    unlink(pipe.c_str());
}

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr long kSanitizing = 8; // sanitizers take that many times the time and the memory
#else
constexpr long kSanitizing = 1;
#endif

// Makes the process end with status 1 if from here on it takes more than so long, or 64 MiB.
void watchCosts(int milliseconds)
{
    static const std::clock_t limit = CLOCKS_PER_SEC / 1000 * milliseconds * kSanitizing;
    static const auto resident = [] {
        rusage now = {};
        getrusage(RUSAGE_SELF, &now);
        return now.ru_maxrss; // KiB
    };
    static const std::clock_t clockBefore = std::clock();
    static const long residentBefore = resident();
    std::atexit([] {
        const bool slow = std::clock() - clockBefore > limit;
        if (slow || resident() - residentBefore > 65536 * kSanitizing) {
            _exit(1);
        }
    });
}

TEST(PictureFileDeathTest, AHugePictureThatTheFileLacksCostsNothing)
{
    for (const unsigned type : {2U, 10U}) {
        for (const unsigned bits : {8U, 16U, 24U, 32U}) {
            const TemporaryFile file{
                makeTga({.type = type, .width = 32767, .height = 32767, .bits = bits}, {})};
            for (const unsigned bpp : {bits, 32U}) {
                EXPECT_EXIT((watchCosts(50), Bitmap{}.load(file.path(), bpp)), kStatus0,
                            "^\n\nError allocating memory for .*!\n\n$");
            }
        }
        // May still be a file that was cut short.
        const TemporaryFile cut{makeTga({.type = type, .width = 2048, .height = 2048}, {})};
        EXPECT_EXIT((watchCosts(500), Bitmap{}.load(cut.path(), 32), std::exit(0)), kStatus0, "^$");
    }
    // A 64th of the picture is enough.
    const TgaShape shape = {.type = 3, .width = 3000, .height = 3000, .bits = 8};
    const TemporaryFile enough{makeTga(shape, makePixels(3000 * 3000 / 64 + 1, 1, 0))};
    EXPECT_EXIT((Bitmap{}.load(enough.path(), 32), std::exit(0)), kStatus0, "^$");
    const TemporaryFile tooLittle{makeTga(shape, makePixels(3000 * 3000 / 64 - 1, 1, 0))};
    EXPECT_EXIT(Bitmap{}.load(tooLittle.path(), 32), kStatus0, "^\n\nError allocating memory for ");
    for (const unsigned colours : {0U, 1U}) {
        const TemporaryFile file{makeHsiRaw(65535, 65535, colours, {})};
        EXPECT_EXIT((watchCosts(50), Bitmap{}.loadHsiRaw(file.path(), 32)), kStatus0,
                    "^\n\nMemory allocation failed!!\n\n$");
    }
}

} // namespace
