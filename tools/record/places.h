// Where the recorder finds the show, the capture library and the data: in the tree that it was
// installed into, which may have been moved as a whole, or else in the build folder.
#pragma once

#include <filesystem>

struct Places {
    std::filesystem::path program; // the show
    std::filesystem::path captureLibrary;
    std::filesystem::path folder; // the show's, with data/ in it
};

// Looks relative to this process's own program file, through symbolic links. Nothing else is
// checked: who opens or starts what is named here says what is wrong with it.
Places findPlaces();
