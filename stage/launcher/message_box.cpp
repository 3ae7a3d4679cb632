#include "stage/launcher/message_box.h"

#include "stage/sdl2.h"

#include <array>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Words = std::vector<std::string>;

bool showWithSdl(const std::string& text)
{
    const Sdl2* const sdl = loadSdl2();
    return sdl != nullptr &&
           sdl->showSimpleMessageBox(SDL_MESSAGEBOX_ERROR, "kso", text.c_str(), nullptr) == 0;
}

// Runs a program of the desktop to its end. False if it is not there or fails.
bool showWith(Words words)
{
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    return ::posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0 &&
           ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

bool showMessage(const std::string& text)
{
    // SDL's box needs fonts of the X server, which not all of them have.
    return showWithSdl(text) ||
           showWith({"zenity", "--error", "--no-markup", "--title=kso", "--text=" + text}) ||
           showWith({"kdialog", "--title", "kso", "--error", text}) ||
           showWith({"notify-send", "--", "kso", text}) || showWith({"xmessage", "-center", text});
}
