// The OpenGL calls of a frame, taken down and played back: what the frame costs without the work
// that the show's own code does for it.
//
// A program that links gl_tape.cpp draws through it; every call that the scenes make is there.
#pragma once

namespace gl_tape {

enum class Mode {
    forward, // calls go to the driver
    record,  // and onto the tape, which starts empty
    drop,    // calls go nowhere: what is left is the show's own work
};

void setMode(Mode mode);

// Makes the calls on the tape again; pictures and arrays are sent as they are now.
void play();

} // namespace gl_tape
