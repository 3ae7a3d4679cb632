// The picture that the show draws, in a framebuffer of OpenGL: it has a size of its own, keeps what
// was drawn while nothing new comes, and is shown by a copy to the window.
#pragma once

#include "stage/picture_size.h"

#include <GL/gl.h>

class PictureBuffer {
public:
    using Loader = void* (*)(const char* function); // as SDL_GL_GetProcAddress

    // Makes the buffer, black, and has everything drawn into it from now on. False if this OpenGL
    // cannot do it: it needs version 3.0. Then nothing has changed. The context has to be
    // current as long as the buffer is used, and takes it with itself.
    bool open(Loader loader, PictureSize size);

    // What has been drawn stays, in the new size.
    void resize(PictureSize size);
    [[nodiscard]] PictureSize size() const { return size_; }

    // Copies the picture into the window's back buffer, in the middle and as large as fits, with
    // black around it.
    void copyToWindow(PictureSize window) const;

private:
    struct Functions {
        PFNGLGENFRAMEBUFFERSPROC genFramebuffers = nullptr;
        PFNGLDELETEFRAMEBUFFERSPROC deleteFramebuffers = nullptr;
        PFNGLBINDFRAMEBUFFERPROC bindFramebuffer = nullptr;
        PFNGLBLITFRAMEBUFFERPROC blitFramebuffer = nullptr;
        PFNGLFRAMEBUFFERRENDERBUFFERPROC framebufferRenderbuffer = nullptr;
        PFNGLCHECKFRAMEBUFFERSTATUSPROC checkFramebufferStatus = nullptr;
        PFNGLGENRENDERBUFFERSPROC genRenderbuffers = nullptr;
        PFNGLDELETERENDERBUFFERSPROC deleteRenderbuffers = nullptr;
        PFNGLBINDRENDERBUFFERPROC bindRenderbuffer = nullptr;
        PFNGLRENDERBUFFERSTORAGEPROC renderbufferStorage = nullptr;
        PFNGLCLEARBUFFERFVPROC clearBufferfv = nullptr;
    };
    struct Storage {
        GLuint framebuffer = 0;
        GLuint colour = 0;
        GLuint depth = 0;
    };

    bool load(Loader loader);
    bool make(PictureSize size, Storage& made) const;
    void remove(const Storage& storage) const;

    Functions gl_;
    Storage storage_;
    PictureSize size_;
};
