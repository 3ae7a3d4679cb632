#include "stage/launcher/message_box.h"

#include "stage/sdl2.h"

bool showMessage(const std::string& text)
{
    const Sdl2* const sdl = loadSdl2();
    return sdl != nullptr &&
           sdl->showSimpleMessageBox(SDL_MESSAGEBOX_ERROR, "kso", text.c_str(), nullptr) == 0;
}
