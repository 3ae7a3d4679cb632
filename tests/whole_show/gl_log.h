// OpenGL that draws nothing and tells what it would draw, line by line: the stand-in for the
// program, and the model's paper.
//
// Until the first glClear every call becomes a line. From then on what only sets OpenGL's state is
// told with the primitives that it shapes, so that it does not matter which calls set it.
#pragma once

#include "virtual/text.h"

#include <string>

// Where the lines go; the program that uses this log defines it.
void tell(const std::string& line);

// Forgets all state.
void resetGl();
