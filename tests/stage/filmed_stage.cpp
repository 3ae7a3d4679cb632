// The stage in the virtual world: loaded before SDL (LD_PRELOAD), it opens the stage's own window
// on a real display and puts each picture into a file, three bytes a pixel, the top row first.
//
//   FILMED_STAGE_FILE   the file
//   FILMED_STAGE_SIZE   WIDTHxHEIGHT of the picture; "" leaves it to the stage
//   FILMED_STAGE_END    the show is closed before this frame

#include "stage/window.h"
#include "virtual/environment.h"
#include "virtual/virtual_world.h"

#include <GL/gl.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kBytesPerPixel = 3;

class FilmedStage : public Sink {
public:
    bool openWindow(int /*width*/, int /*height*/) override
    {
        WindowWishes wishes;
        PictureSize size;
        if (std::sscanf(environmentText("FILMED_STAGE_SIZE"), "%dx%d", &size.width, &size.height) ==
            2) {
            wishes.picture = size;
        }
        std::string problem = window_.connect();
        if (problem.empty()) {
            problem = window_.open(wishes);
        }
        std::fputs(problem.c_str(), stderr);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        return problem.empty();
    }

    void picture(std::uint64_t /*frame*/) override
    {
        const PictureSize size = window_.picture();
        const std::size_t rowBytes = static_cast<std::size_t>(size.width) * kBytesPerPixel;
        std::vector<std::byte> row(rowBytes);
        for (int y = size.height - 1; y >= 0; --y) {
            glReadPixels(0, y, size.width, 1, GL_RGB, GL_UNSIGNED_BYTE, row.data());
            std::fwrite(row.data(), 1, rowBytes, file_);
        }
        std::fflush(file_);
        window_.show();
    }

private:
    Window window_;
    std::FILE* file_ = std::fopen(environmentText("FILMED_STAGE_FILE", "/dev/null"), "wb");
};

} // namespace

VirtualWorld& world()
{
    // Neither is ever taken down: the program calls to its very end.
    static auto* const kWorld = [] {
        WorldSettings settings;
        settings.rate.frames = 24;
        settings.end = environmentNumber("FILMED_STAGE_END", 1);
        return new VirtualWorld(settings, *new FilmedStage);
    }();
    return *kWorld;
}
