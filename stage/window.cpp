#include "stage/window.h"

#include "stage/enlarged_view.h"
#include "stage/keys.h"
#include "stage/letterbox.h"
#include "stage/proportions.h"
#include "stage/sdl2.h"

#include <algorithm>
#include <array>

namespace {

constexpr const char* kTitle = "kso";
constexpr int kBitsOfAColour = 8;
constexpr PictureSize kProgramWindow;

} // namespace

struct Window::Handles {
    const Sdl2* sdl = nullptr; // once it is loaded
    SDL_Window* window = nullptr;
    SDL_GLContext context = nullptr;
    bool hasVideo = false;
};

Window::Window() : handles_(std::make_unique<Handles>())
{
}

Window::~Window()
{
    close();
}

bool Window::isOpen() const
{
    return handles_->context != nullptr;
}

bool Window::isDisplayMissing() const
{
    return handles_->sdl != nullptr && !handles_->hasVideo && !isSet("SDL_VIDEODRIVER");
}

std::string Window::connect()
{
    handles_->sdl = loadSdl2();
    if (handles_->sdl == nullptr) {
        return "SDL 2 is not installed";
    }
    std::string problem = openVideo(*handles_->sdl);
    handles_->hasVideo = problem.empty();
    return problem;
}

std::string Window::open(const WindowWishes& wishes)
{
    wishes_ = wishes;
    std::string problem = openWindow();
    if (!problem.empty()) {
        close();
    }
    return problem;
}

std::string Window::openWindow()
{
    const Sdl2& sdl = *handles_->sdl;
    const int displays = sdl.getNumVideoDisplays();
    int display = wishes_.display - 1;
    if (display < 0 || display >= displays) {
        remark_ = "there is no display " + std::to_string(wishes_.display) + ", only " +
                  std::to_string(displays) + "; the show is on the first";
        display = 0;
    }

    const int centre =
        static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(static_cast<unsigned>(display)));
    SDL_Rect desktop{};
    SDL_Rect place{centre, centre, 0, 0};
    if (wishes_.isFullScreen) {
        // Where there is no window manager, it stays as large as it is made.
        sdl.getDisplayBounds(display, &place);
    } else {
        if (sdl.getDisplayUsableBounds(display, &desktop) != 0) {
            sdl.getDisplayBounds(display, &desktop);
        }
        const PictureSize usable{desktop.w, desktop.h};
        const PictureSize start =
            wishes_.picture ? windowFor(*wishes_.picture, usable) : comfortableWindow(usable);
        place.w = start.width;
        place.h = start.height;
    }

    sdl.glSetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    sdl.glSetAttribute(SDL_GL_RED_SIZE, kBitsOfAColour);
    sdl.glSetAttribute(SDL_GL_GREEN_SIZE, kBitsOfAColour);
    sdl.glSetAttribute(SDL_GL_BLUE_SIZE, kBitsOfAColour);
    sdl.glSetAttribute(SDL_GL_DEPTH_SIZE, 0); // the picture has its own
    const Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_ALLOW_HIGHDPI |
                         (wishes_.isFullScreen ? SDL_WINDOW_FULLSCREEN_DESKTOP
                                               : SDL_WINDOW_RESIZABLE | SDL_WINDOW_HIDDEN);
    handles_->window = sdl.createWindow(kTitle, place.x, place.y, place.w, place.h, flags);
    if (handles_->window == nullptr) {
        return sdl.getError();
    }
    handles_->context = sdl.glCreateContext(handles_->window);
    if (handles_->context == nullptr) {
        return sdl.getError();
    }
    renderer_ = reinterpret_cast<const char*>(glGetString(GL_RENDERER));

    if (!wishes_.isFullScreen) {
        if (drawsInSoftware() && !wishes_.picture) {
            sdl.setWindowSize(handles_->window, kProgramWindow.width, kProgramWindow.height);
            sdl.setWindowPosition(handles_->window, centre, centre);
        }
        keepProportions(sdl, handles_->window, wishes_.picture.value_or(kProgramWindow));
    }
    loadIcon();
    sdl.disableScreenSaver();
    sdl.showWindow(handles_->window);

    if (!picture_.open(sdl.glGetProcAddress, pictureFor(size()))) {
        return "this OpenGL cannot draw a picture of its own size";
    }
    enlarge(kProgramWindow, picture_.size(), wishes_.picture ? Fit::view : Fit::window);
    show();
    return "";
}

void Window::loadIcon()
{
    const Sdl2& sdl = *handles_->sdl;
    SDL_RWops* const file = sdl.rwFromFile(wishes_.icon.c_str(), "rb");
    if (file == nullptr) {
        return;
    }
    constexpr int kClosesFile = 1;
    if (SDL_Surface* const icon = sdl.loadBMP_RW(file, kClosesFile); icon != nullptr) {
        sdl.setWindowIcon(handles_->window, icon);
        sdl.freeSurface(icon);
    }
}

void Window::close()
{
    const Sdl2* const sdl = handles_->sdl;
    if (handles_->context != nullptr) {
        sdl->glDeleteContext(handles_->context);
    }
    if (handles_->window != nullptr) {
        sdl->destroyWindow(handles_->window);
    }
    if (handles_->hasVideo) {
        sdl->quitSubSystem(SDL_INIT_VIDEO);
    }
    *handles_ = {};
}

void Window::show()
{
    picture_.copyToWindow(size());
    handles_->sdl->glSwapWindow(handles_->window);
    isStale_ = false;
}

void Window::setRefreshesPerSwap(int refreshes)
{
    if (handles_->sdl->glSetSwapInterval(refreshes) < 0) {
        handles_->sdl->glSetSwapInterval(1);
    }
}

Happening Window::next()
{
    SDL_Event event;
    while (handles_->sdl->pollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) {
            return Happening::close;
        }
        if (event.type == SDL_KEYDOWN && isForTheShow(event.key.keysym.scancode)) {
            return Happening::key;
        }
        if (event.type == SDL_WINDOWEVENT && (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED ||
                                              event.window.event == SDL_WINDOWEVENT_EXPOSED)) {
            adapt();
        }
    }
    return Happening::none;
}

void Window::adapt()
{
    const PictureSize wanted = pictureFor(size());
    if (wanted != picture_.size()) {
        picture_.resize(wanted);
        enlarge(kProgramWindow, picture_.size(), wishes_.picture ? Fit::view : Fit::window);
    }
    isStale_ = true;
}

void Window::showPointer(bool isShown)
{
    handles_->sdl->showCursor(isShown ? SDL_ENABLE : SDL_DISABLE);
}

double Window::refreshesPerSecond() const
{
    SDL_DisplayMode mode{};
    const int display = handles_->sdl->getWindowDisplayIndex(handles_->window);
    return handles_->sdl->getCurrentDisplayMode(display, &mode) == 0 ? mode.refresh_rate : 0.0;
}

bool Window::drawsInSoftware() const
{
    return isSoftware(renderer_);
}

PictureSize Window::size() const
{
    PictureSize size;
    handles_->sdl->glGetDrawableSize(handles_->window, &size.width, &size.height);
    return {std::max(size.width, 1), std::max(size.height, 1)};
}

PictureSize Window::pictureFor(PictureSize window) const
{
    if (wishes_.picture) {
        return *wishes_.picture;
    }
    if (drawsInSoftware()) {
        return kProgramWindow;
    }
    const Area area = letterbox(kProgramWindow, window);
    return {std::max(area.width, 1), std::max(area.height, 1)};
}

bool isSoftware(const std::string& renderer)
{
    constexpr std::array kNames = {"llvmpipe", "softpipe", "swrast", "Software Rasterizer"};
    return std::ranges::any_of(
        kNames, [&](const char* name) { return renderer.find(name) != std::string::npos; });
}
