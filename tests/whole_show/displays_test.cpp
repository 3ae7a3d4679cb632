// How the program ends where SDL finds no display, or one without OpenGL.

#include "tests/whole_show/stage.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char* kNoVideo = "\nError initializing SDL!\n\n";
constexpr const char* kNoMode = "\nError swithing to 640x480! Please make sure you"
                                "\nHave 640x480 mode defined in your XF86Config!\n\n";

Outcome performOn(const std::string& display, const Variable& choice)
{
    return perform({
        .arguments = {"-window",                                                            "-nosound"},
        .module = scriptedModule(1, {{0, 0, 0, 8}                                                        }
          ), // over at once
        .standIn = false,
        .environment =
            {
                      {"WAYLAND_DISPLAY"},
                      {"DISPLAY", display.empty() ? std::nullopt : std::optional(display)},
                      choice, },
    });
}

// An X server, with or without what OpenGL needs of it.
class Server {
public:
    explicit Server(bool hasGlx)
    {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) {
            return;
        }
        process_ = ::fork();
        if (process_ == 0) {
            const std::string number = std::to_string(ends[1]);
            if (std::freopen("/dev/null", "w", stderr) != nullptr) {
                ::execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(),
                         hasGlx ? "+extension" : "-extension", "GLX", "-nolisten", "tcp",
                         "-noreset", nullptr);
            }
            ::_exit(126);
        }
        ::close(ends[1]);
        // The number and a line feed come when the server is ready.
        char letter = 0;
        while (::read(ends[0], &letter, 1) == 1 && letter != '\n') {
            display_ += letter;
        }
        ::close(ends[0]);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server()
    {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }

    [[nodiscard]] const std::string& display() const { return display_; }

private:
    pid_t process_ = -1;
    std::string display_ = ":";
};

} // namespace

// Who asks for a driver gets it, also one that nobody sees; "dummy" has no OpenGL.
TEST(Displays, NeverDrawUnseenUnlessAskedTo)
{
    struct Row {
        const char* display;
        Variable driver;
        int status;
        const char* errors;
    };
    const Row rows[] = {
        {"",         {"SDL_VIDEODRIVER"},              0, kNoVideo},
        {":no-such", {"SDL_VIDEODRIVER"},              0, kNoVideo},
        {"",         {"SDL_VIDEODRIVER", ""},          0, kNoVideo},
        {"",         {"SDL_VIDEODRIVER", "none"},      0, kNoVideo},
        {"",         {"SDL_VIDEODRIVER", "dummy"},     0, kNoMode },
        {"",         {"SDL_VIDEODRIVER", "offscreen"}, 1, ""      },
    };
    for (const Row& row : rows) {
        const Outcome outcome = performOn(row.display, row.driver);
        EXPECT_EQ(outcome.status, row.status) << row.display << row.driver.value.value_or("");
        EXPECT_THAT(outcome.errors, ::testing::EndsWith(row.errors));
        EXPECT_EQ(outcome.output, "");
    }
}

// Before the message stands what Mesa and Xlib write. Without its drivers or with a server that has
// to draw, Xlib ends the process while the mode is set.
TEST(Displays, WithoutOpenGlHaveNoMode)
{
    struct Row {
        bool hasGlx;
        Variable choice;
        const char* before;
    };
    const Row rows[] = {
        {false, {"SDL_VIDEODRIVER"},                "\n"        },
        {true,  {"LIBGL_DRIVERS_PATH", "/no/such"}, "X Error of"},
        {true,  {"LIBGL_ALWAYS_INDIRECT", "1"},     "X Error of"},
    };
    for (const Row& row : rows) {
        const Server server(row.hasGlx);
        ASSERT_NE(server.display(), ":") << "Xvfb did not start";
        const Outcome outcome = performOn(server.display(), row.choice);
        EXPECT_EQ(outcome.status, 0) << row.choice.name;
        EXPECT_THAT(outcome.errors, ::testing::EndsWith(kNoMode));
        EXPECT_THAT(outcome.errors, ::testing::HasSubstr(row.before)) << row.choice.name;
    }
}
