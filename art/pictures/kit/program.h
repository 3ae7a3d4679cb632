#pragma once

#include "art/pictures/kit/picture.h"

#include <string>

// Where a program's pictures go. Each one that is written is also reported on standard output: its
// size, and the mean and the peak of its pixels' brightest channel.
class OutputFolder {
public:
    explicit OutputFolder(std::string path) : path_(std::move(path)) {}

    void write(const Picture& picture, int depth, const std::string& name) const;
    void write(const GreyPicture& picture, const std::string& name) const;

private:
    std::string path_;
};

// The frame of every picture program, `make_NAME OUTPUT_FOLDER`. Returns its exit status.
int runPictureProgram(int argc, char** argv, void (*makePictures)(const OutputFolder&));
