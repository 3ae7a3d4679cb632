// Where a program of the house finds the show, the library that it is to be loaded with, and the
// data: in the tree that it was installed into, which may have been moved as a whole, or else in
// the build folder.
#pragma once

#include <filesystem>

struct Places {
    std::filesystem::path program; // the show
    std::filesystem::path library; // the stage's, or the recorder's
    std::filesystem::path folder;  // the show's, with data/ in it
    std::filesystem::path icon;    // the window's, a BMP file
};

// Looks relative to this process's own program file, through symbolic links. Nothing else is
// checked: who opens or starts what is named here says what is wrong with it. A target that calls
// this is given it by kso_finds_its_places (cmake/kso_targets.cmake).
Places findPlaces();
