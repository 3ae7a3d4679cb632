#include "tools/capture/offscreen.h"

#include "stage/enlarged_view.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

namespace {

constexpr std::size_t kBytesPerPixel = 3;
constexpr int kMaxDevices = 32;
constexpr int kMaxConfigs = 256;
constexpr std::array kColourSizes = {EGL_RED_SIZE, EGL_GREEN_SIZE, EGL_BLUE_SIZE};
constexpr EGLint kBitsOfAColour = 8;

PictureSize buffer;

template <typename Function>
Function extension(const char* name)
{
    // EGL hands every function out under one type.
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

bool softwareOnly()
{
    const char* const value = std::getenv("LIBGL_ALWAYS_SOFTWARE");
    return value != nullptr && (std::strcmp(value, "1") == 0 || std::strcmp(value, "true") == 0);
}

// The displays behind EGL's devices, GPUs before the processor.
std::vector<EGLDisplay> displays()
{
    const auto queryDevices = extension<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto queryString = extension<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    const auto getDisplay = extension<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    std::array<EGLDeviceEXT, kMaxDevices> devices{};
    EGLint count = 0;
    if (queryDevices == nullptr || queryString == nullptr || getDisplay == nullptr ||
        queryDevices(kMaxDevices, devices.data(), &count) == EGL_FALSE) {
        return {};
    }
    std::vector<EGLDisplay> found;
    for (EGLDeviceEXT device : std::span(devices).first(static_cast<std::size_t>(count))) {
        const char* const extensions = queryString(device, EGL_EXTENSIONS);
        const bool software =
            extensions != nullptr && std::strstr(extensions, "EGL_MESA_device_software") != nullptr;
        if (software || !softwareOnly()) {
            found.push_back(getDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
        }
    }
    return found;
}

bool openOn(EGLDisplay display)
{
    // clang-format off
    constexpr std::array kConfigAttributes = {
        EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
        EGL_DEPTH_SIZE, 24, EGL_SAMPLE_BUFFERS, 0, EGL_NONE};
    // clang-format on
    const std::array<EGLint, 5> size = {EGL_WIDTH, buffer.width, EGL_HEIGHT, buffer.height,
                                        EGL_NONE};
    std::array<EGLConfig, kMaxConfigs> configs{};
    EGLint count = 0;
    if (eglInitialize(display, nullptr, nullptr) == EGL_FALSE ||
        eglChooseConfig(display, kConfigAttributes.data(), configs.data(), kMaxConfigs, &count) ==
            EGL_FALSE) {
        return false;
    }
    // The deepest colours would come first; a window has eight bits of each.
    const auto found = std::span(configs).first(static_cast<std::size_t>(count));
    const auto config = std::ranges::find_if(found, [&](EGLConfig each) {
        return std::ranges::all_of(kColourSizes, [&](EGLint colour) {
            EGLint bits = 0;
            eglGetConfigAttrib(display, each, colour, &bits);
            return bits == kBitsOfAColour;
        });
    });
    if (config == found.end()) {
        return false;
    }
    EGLContext context = eglCreateContext(display, *config, EGL_NO_CONTEXT, nullptr);
    EGLSurface surface = eglCreatePbufferSurface(display, *config, size.data());
    return context != EGL_NO_CONTEXT && surface != EGL_NO_SURFACE &&
           eglMakeCurrent(display, surface, surface, context) == EGL_TRUE;
}

} // namespace

bool openOffscreen(PictureSize window, PictureSize bufferSize)
{
    buffer = bufferSize;
    enlarge(window, buffer, Fit::view);
    if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE || !std::ranges::any_of(displays(), openOn)) {
        std::fputs("kso: OpenGL does not draw without a window here (EGL finds no device for it)\n",
                   stderr);
        return false;
    }
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    return true;
}

std::string rendererName()
{
    return reinterpret_cast<const char*>(glGetString(GL_RENDERER));
}

void readPicture(std::vector<std::uint8_t>& pixels)
{
    const std::size_t rowBytes = static_cast<std::size_t>(buffer.width) * kBytesPerPixel;
    const auto rows = static_cast<std::size_t>(buffer.height);
    static std::vector<std::uint8_t> bottomUp;
    bottomUp.resize(rowBytes * rows);
    pixels.resize(rowBytes * rows);
    glReadPixels(0, 0, buffer.width, buffer.height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    for (std::size_t row = 0; row < rows; ++row) {
        std::memcpy(&pixels[row * rowBytes], &bottomUp[(rows - 1 - row) * rowBytes], rowBytes);
    }
}
