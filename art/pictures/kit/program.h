#pragma once

#include "art/pictures/kit/picture.h"

#include <string>

// Where a program's pictures go. Each one that is written is also reported on standard output: its
// size, and the mean and the peak of its pixels' brightest channel.
class OutputFolder {
public:
    // `stages` is the folder for pictures on the way to the finished one; if it is empty, none are
    // kept.
    explicit OutputFolder(std::string path, std::string stages = {})
        : path_(std::move(path)), stages_(std::move(stages))
    {
    }

    void write(const Picture& picture, int depth, const std::string& name) const;
    void write(const GreyPicture& picture, const std::string& name) const;

    // Show how a picture comes about. Values outside 0 to 1 are cut off.
    void keepStage(const Picture& picture, const std::string& name) const;
    void keepStage(const GreyPicture& picture, const std::string& name) const;

private:
    std::string path_;
    std::string stages_;
};

// What every picture program does in main: `make_NAME OUTPUT_FOLDER [STAGES_FOLDER]`. Returns its
// exit status.
int runPictureProgram(int argc, char** argv, void (*makePictures)(const OutputFolder&));
