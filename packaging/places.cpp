#include "packaging/places.h"

#include <system_error>

namespace {

// The folder of this process's program; empty where the system does not tell.
std::filesystem::path ownFolder()
{
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

} // namespace

// The build passes all paths relative to the program, so that the same program comes out of every
// folder that it is built in.
Places findPlaces()
{
    const std::filesystem::path here = ownFolder();
    const auto from = [&](const char* way) { return (here / way).lexically_normal(); };

    Places places{from(KSO_INSTALLED_PROGRAM), from(KSO_INSTALLED_LIBRARY),
                  from(KSO_INSTALLED_FOLDER), from(KSO_INSTALLED_FOLDER "/window.bmp")};
    std::error_code ignored;
    if (!std::filesystem::exists(places.program, ignored)) {
        places = {from(KSO_BUILT_PROGRAM), from(KSO_BUILT_LIBRARY), from(KSO_SOURCE_FOLDER),
                  from(KSO_SOURCE_FOLDER "/packaging/icons/window.bmp")};
    }
    return places;
}
