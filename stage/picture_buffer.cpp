#include "stage/picture_buffer.h"

#include "stage/letterbox.h"

#include <array>
#include <cstdlib>

namespace {

constexpr std::array<GLfloat, 4> kBlack = {0.0F, 0.0F, 0.0F, 1.0F};

template <typename Function>
bool find(PictureBuffer::Loader loader, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(loader(name));
    return function != nullptr;
}

// Functions are found even where the driver cannot do what they are for.
bool isVersion3()
{
    const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    return version != nullptr && std::atof(version) >= 3.0;
}

} // namespace

bool PictureBuffer::open(Loader loader, PictureSize size)
{
    if (!isVersion3() || !load(loader) || !make(size, storage_)) {
        return false;
    }
    size_ = size;
    gl_.bindFramebuffer(GL_FRAMEBUFFER, storage_.framebuffer);
    return true;
}

void PictureBuffer::resize(PictureSize size)
{
    Storage larger;
    if (size == size_ || !make(size, larger)) {
        return;
    }
    gl_.bindFramebuffer(GL_READ_FRAMEBUFFER, storage_.framebuffer);
    gl_.bindFramebuffer(GL_DRAW_FRAMEBUFFER, larger.framebuffer);
    gl_.blitFramebuffer(0, 0, size_.width, size_.height, 0, 0, size.width, size.height,
                        GL_COLOR_BUFFER_BIT, GL_LINEAR);
    remove(storage_);
    storage_ = larger;
    size_ = size;
    gl_.bindFramebuffer(GL_FRAMEBUFFER, storage_.framebuffer);
}

void PictureBuffer::copyToWindow(PictureSize window) const
{
    const Area area = letterbox(size_, window);
    const bool isSameSize = PictureSize{area.width, area.height} == size_;
    gl_.bindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    gl_.clearBufferfv(GL_COLOR, 0, kBlack.data());
    gl_.blitFramebuffer(0, 0, size_.width, size_.height, area.x, area.y, area.x + area.width,
                        area.y + area.height, GL_COLOR_BUFFER_BIT,
                        isSameSize ? GL_NEAREST : GL_LINEAR);
    gl_.bindFramebuffer(GL_FRAMEBUFFER, storage_.framebuffer);
}

bool PictureBuffer::load(Loader loader)
{
    return find(loader, "glGenFramebuffers", gl_.genFramebuffers) &&
           find(loader, "glDeleteFramebuffers", gl_.deleteFramebuffers) &&
           find(loader, "glBindFramebuffer", gl_.bindFramebuffer) &&
           find(loader, "glBlitFramebuffer", gl_.blitFramebuffer) &&
           find(loader, "glFramebufferRenderbuffer", gl_.framebufferRenderbuffer) &&
           find(loader, "glCheckFramebufferStatus", gl_.checkFramebufferStatus) &&
           find(loader, "glGenRenderbuffers", gl_.genRenderbuffers) &&
           find(loader, "glDeleteRenderbuffers", gl_.deleteRenderbuffers) &&
           find(loader, "glBindRenderbuffer", gl_.bindRenderbuffer) &&
           find(loader, "glRenderbufferStorage", gl_.renderbufferStorage) &&
           find(loader, "glClearBufferfv", gl_.clearBufferfv);
}

// Eight bits a colour and 24 of depth, as a window has. On return nothing is bound anew.
bool PictureBuffer::make(PictureSize size, Storage& made) const
{
    GLint maxSide = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &maxSide);
    if (size.width < 1 || size.height < 1 || size.width > maxSide || size.height > maxSide) {
        return false;
    }
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
    const auto addBuffer = [&](GLenum format, GLenum place) {
        GLuint name = 0;
        gl_.genRenderbuffers(1, &name);
        gl_.bindRenderbuffer(GL_RENDERBUFFER, name);
        gl_.renderbufferStorage(GL_RENDERBUFFER, format, size.width, size.height);
        gl_.framebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, name);
        return name;
    };
    gl_.genFramebuffers(1, &made.framebuffer);
    gl_.bindFramebuffer(GL_FRAMEBUFFER, made.framebuffer);
    made.colour = addBuffer(GL_RGBA8, GL_COLOR_ATTACHMENT0);
    made.depth = addBuffer(GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    const bool isMade = gl_.checkFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    if (isMade) {
        constexpr GLfloat kFar = 1.0F;
        gl_.clearBufferfv(GL_COLOR, 0, kBlack.data());
        gl_.clearBufferfv(GL_DEPTH, 0, &kFar);
    } else {
        remove(made);
    }
    gl_.bindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(bound));
    return isMade;
}

void PictureBuffer::remove(const Storage& storage) const
{
    gl_.deleteFramebuffers(1, &storage.framebuffer);
    gl_.deleteRenderbuffers(1, &storage.colour);
    gl_.deleteRenderbuffers(1, &storage.depth);
}
