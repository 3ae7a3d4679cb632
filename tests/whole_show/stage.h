// Runs the real program on a stage of its own: a folder with a scripted module and test pictures,
// and the stand-in for SDL, OpenGL and the clock, which writes down every call.
#pragma once

#include "tests/whole_show/scripted_module.h"

#include <optional>
#include <string>
#include <vector>

// What a performance changes in the environment; no value takes the variable away.
struct Variable {
    std::string name;
    std::optional<std::string> value = {};
};

struct Performance {
    std::vector<std::string> arguments = {"-window"};
    std::optional<XmModule> module = scriptedModule(1, {}); // none: the file is missing
    int framesPerSecond = 60;
    int frameCount = 0;           // the window is closed after so many; 0 never
    std::string events = {};      // see stand_in.cpp
    std::string failingCall = {}; // see stand_in.cpp
    std::string exitingCall = {}; // see stand_in.cpp
    std::string moduleBytes = {}; // instead of `module`, if not empty
    std::string missingPicture = {};
    std::string wrongPicture = {}; // holds a small title instead
    bool standIn = true;           // else SDL and OpenGL themselves
    std::vector<Variable> environment = {};
};

struct Outcome {
    int status = -1;                  // exit status, or -1 when a signal ended the program
    std::string output;               // standard output
    std::string errors;               // standard error
    std::vector<std::string> startUp; // calls before the first frame
    std::vector<std::vector<std::string>> frames; // calls by pass of the main loop
    std::vector<std::string> shutDown;            // calls after the last pass
};

Outcome perform(const Performance& performance);
