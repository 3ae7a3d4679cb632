#include "stage/launcher/launch_options.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

const char* const kLaunchHelp =
    "usage: kso [OPTION...] [-window] [-nosound] [START SCENE]\n"
    "\n"
    "Plays the show, full screen and with sound. Any key ends it.\n"
    "\n"
    "  -window          in a window, which can be resized\n"
    "  -nosound         without sound\n"
    "  START SCENE      a number from 2 to 7: begin at this scene\n"
    "\n"
    "  --size WxH       draw the picture at this size, and show it as large as fits; else it is "
    "as\n"
    "                   large as the display, or 640x480 where the processor draws\n"
    "  --display N      on the second display, the third, ...\n"
    "  --refresh HZ     the display's refreshes a second, where it tells a wrong number\n"
    "  --pace time      60 frames a second by the clock, for displays of variable rate\n"
    "  --verbose        tell who draws, at which size and pace, and what frames took\n"
    "  --plain          without the stage: 640x480 as SDL shows it\n"
    "  --menu           show errors in a box\n"
    "  --version        print the version\n"
    "  --help           print this\n"
    "\n"
    "Exit status: 1 when the show has ended, 0 when it failed, 2 for a bad command line.\n";

namespace {

constexpr int kMaxSide = 16384;
constexpr double kMaxRefresh = 1000.0;

// Takes the next argument as this option's value.
class Arguments {
public:
    explicit Arguments(std::span<const char* const> all) : rest_(all) {}

    [[nodiscard]] bool areLeft() const { return !rest_.empty(); }
    std::string_view next()
    {
        const char* const taken = rest_.front();
        rest_ = rest_.subspan(1);
        return taken;
    }
    std::string_view valueOf(std::string_view option)
    {
        if (rest_.empty()) {
            throw UsageError(std::string(option) + " needs a value");
        }
        return next();
    }

private:
    std::span<const char* const> rest_;
};

// The whole text as a number, or none.
template <typename Number>
std::optional<Number> number(std::string_view text)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

PictureSize readSize(std::string_view text)
{
    const std::size_t cross = text.find('x');
    const int width = number<int>(text.substr(0, cross)).value_or(0);
    const int height = cross < text.size() ? number<int>(text.substr(cross + 1)).value_or(0) : 0;
    if (width < 1 || width > kMaxSide || height < 1 || height > kMaxSide) {
        throw UsageError("--size takes WIDTHxHEIGHT, like 1920x1080, up to 16384 each");
    }
    return {width, height};
}

int readDisplay(std::string_view text)
{
    const auto display = number<int>(text);
    if (!display || *display < 1) {
        throw UsageError("--display takes a number from 1 on");
    }
    return *display;
}

double readRefresh(std::string_view text)
{
    const auto refresh = number<double>(text);
    if (!refresh || !(*refresh >= 1.0 && *refresh <= kMaxRefresh)) {
        throw UsageError("--refresh takes a number of refreshes a second, like 144");
    }
    return *refresh;
}

bool readPace(std::string_view text)
{
    if (text != "time" && text != "display") {
        throw UsageError(R"(--pace takes "time" or "display")");
    }
    return text == "time";
}

} // namespace

LaunchOptions readLaunchOptions(std::span<const char* const> arguments)
{
    LaunchOptions options;
    Arguments rest(arguments);
    while (rest.areLeft()) {
        const std::string_view word = rest.next();
        if (!word.starts_with("--")) {
            options.forTheShow.emplace_back(word);
        } else if (word == "--size") {
            options.size = readSize(rest.valueOf(word));
        } else if (word == "--display") {
            options.display = readDisplay(rest.valueOf(word));
        } else if (word == "--refresh") {
            options.refresh = readRefresh(rest.valueOf(word));
        } else if (word == "--pace") {
            options.pacesByTime = readPace(rest.valueOf(word));
        } else if (word == "--plain") {
            options.isPlain = true;
        } else if (word == "--verbose") {
            options.isVerbose = true;
        } else if (word == "--menu") {
            options.isFromMenu = true;
        } else if (word == "--try-display") {
            options.onlyTriesDisplay = true;
        } else if (word == "--version") {
            options.version = true;
        } else if (word == "--help") {
            options.help = true;
        } else {
            throw UsageError("there is no option " + std::string(word) + "; --help lists them");
        }
    }
    return options;
}
