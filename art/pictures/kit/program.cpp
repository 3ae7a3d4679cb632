#include "art/pictures/kit/program.h"

#include "art/pictures/kit/lighting.h"
#include "art/pictures/kit/tga_writer.h"

#include <cstdio>
#include <exception>
#include <glm/common.hpp>

namespace {

void report(const GreyPicture& brightness, const std::string& name)
{
    double sum = 0.0;
    float peak = 0.0F;
    for (int y = 0; y < brightness.height(); ++y) {
        for (int x = 0; x < brightness.width(); ++x) {
            const float value = glm::clamp(brightness.at(x, y), 0.0F, 1.0F);
            sum += static_cast<double>(value);
            peak = glm::max(peak, value);
        }
    }
    const double mean = sum / brightness.width() / brightness.height();
    std::printf("%-29s %4d x %4d  mean %.3f  peak %.3f\n", name.c_str(), brightness.width(),
                brightness.height(), mean, static_cast<double>(peak));
}

} // namespace

void OutputFolder::write(const Picture& picture, int depth, const std::string& name) const
{
    writeTga(picture, depth, path_ + "/" + name);
    GreyPicture brightness(picture.width(), picture.height());
    brightness.fill([&](int x, int y) { return brightest(glm::vec3(picture.at(x, y))); });
    report(brightness, path_ + "/" + name);
}

void OutputFolder::write(const GreyPicture& picture, const std::string& name) const
{
    writeTga(picture, path_ + "/" + name);
    report(picture, path_ + "/" + name);
}

void OutputFolder::keepStage(const Picture& picture, const std::string& name) const
{
    if (!stages_.empty()) {
        writeTga(picture, 24, stages_ + "/" + name);
    }
}

void OutputFolder::keepStage(const GreyPicture& picture, const std::string& name) const
{
    if (!stages_.empty()) {
        writeTga(picture, stages_ + "/" + name);
    }
}

int runPictureProgram(int argc, char** argv, void (*makePictures)(const OutputFolder&))
{
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s OUTPUT_FOLDER [STAGES_FOLDER]\n", argv[0]);
        return 2;
    }
    try {
        makePictures(OutputFolder(argv[1], argc == 3 ? argv[2] : ""));
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s: %s\n", argv[0], fault.what());
        return 1;
    }
    return 0;
}
