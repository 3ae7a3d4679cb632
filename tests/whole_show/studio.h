// Records the real program in a folder of its own, with the show's pictures and a scripted module.
#pragma once

#include "art/music/xm.h"
#include "virtual/timing.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

struct Result {
    int status = -1;
    std::string output; // standard output
    std::string errors; // standard error
};

// A line of a list of hashes.
struct FrameLine {
    std::size_t number = 0;
    std::string picture;
    std::string sound;

    bool operator==(const FrameLine&) const = default;
};

class Studio {
public:
    // An empty module leaves the file out.
    explicit Studio(const XmModule& module);
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;
    ~Studio();

    // Runs a command of the shell in the folder; "$RECORD" is the recorder, with a time
    // limit, and "$RECORDER" the same without.
    [[nodiscard]] Result run(const std::string& command) const;

    // Records the folder's show and reads what was listed; a failure is reported.
    [[nodiscard]] std::vector<FrameLine> list(const std::string& options) const;

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

std::string fps(const FrameRate& rate); // as an option
