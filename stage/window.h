// The show's window on the display, made by SDL 2: full screen at the desktop's own size, or one
// that can be resized, with a picture of its own size inside.
#pragma once

#include "stage/picture_buffer.h"
#include "stage/picture_size.h"

#include <memory>
#include <optional>
#include <string>

struct WindowWishes {
    bool isFullScreen = true;
    std::optional<PictureSize> picture; // none: as large as the window lets it be
    int display = 1;                    // the first is 1
    std::string icon;                   // a BMP file; may be missing
};

enum class Happening { none, key, close };

class Window {
public:
    Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window();

    // Finds the display. Returns why there is none, or nothing.
    std::string connect();

    // Opens the window, with a current OpenGL context and a black picture that everything is drawn
    // into (stage/picture_buffer.h), enlarged (stage/enlarged_view.h). Returns why it cannot, after
    // which the display is let go, or nothing.
    std::string open(const WindowWishes& wishes);
    [[nodiscard]] bool isOpen() const;
    // connect() has found SDL 2 but no display, and nobody has asked for a driver that is not SDL
    // 2's.
    [[nodiscard]] bool isDisplayMissing() const;

    // Takes the window away and lets the display go.
    void close();

    // Copies the picture into the window, and waits as long as the display wants it to.
    void show();
    // True after the window's size has changed, or something has uncovered it, until it is shown.
    [[nodiscard]] bool isStale() const { return isStale_; }
    // From now on a swap waits for so many of the display's refreshes, if its driver can do it.
    void setRefreshesPerSwap(int refreshes);

    // What the user does next that concerns the show; none: nothing more at present. Changes of the
    // window's size are followed on the way.
    Happening next();

    void showPointer(bool isShown);

    // How many refreshes a second the display has by its own account, 0 if that is not known.
    [[nodiscard]] double refreshesPerSecond() const;
    [[nodiscard]] const std::string& renderer() const { return renderer_; }
    [[nodiscard]] bool drawsInSoftware() const;
    [[nodiscard]] PictureSize picture() const { return picture_.size(); }
    [[nodiscard]] PictureSize size() const; // in pixels
    // What could not be done as wished, in a sentence; mostly nothing.
    [[nodiscard]] const std::string& remark() const { return remark_; }

private:
    struct Handles;

    [[nodiscard]] PictureSize pictureFor(PictureSize window) const;
    std::string openWindow();
    void loadIcon();
    void adapt();

    std::unique_ptr<Handles> handles_;
    WindowWishes wishes_;
    std::string renderer_;
    std::string remark_;
    PictureBuffer picture_;
    bool isStale_ = false;
};

// Whether a renderer of this name draws with the processor.
bool isSoftware(const std::string& renderer);
