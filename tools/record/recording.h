// One recording from start to end.
#pragma once

#include "tools/record/encoder.h"
#include "tools/record/ensemble.h"
#include "tools/record/frames.h"
#include "tools/record/hash_list.h"
#include "tools/record/pixel_stream.h"
#include "tools/record/progress.h"
#include "tools/record/record_options.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

class Recording {
public:
    explicit Recording(const RecordOptions& options);

    // Makes everything that the options ask for and returns true. When a signal can be read from
    // `signals`, a signalfd, it completes what there is so far and returns false. Throws
    // RecordError; what has been made until then stays.
    bool run(const FileDescriptor& signals);

private:
    [[nodiscard]] Wanted wanted() const;
    void play(const FileDescriptor& signals);
    bool startsAgain();
    void startShows();
    void readShows();
    [[nodiscard]] bool showPlays() const { return shows_ && shows_->isOpen(); }
    void takeFrame(Frame frame);
    void serve(const FileDescriptor& signals);
    void interrupt(const FileDescriptor& signals);
    void finish(const FileDescriptor& signals);
    void completeFilm();
    void checkOutputs() const;
    void report();

    const RecordOptions& options_;
    bool needsSound_;
    bool needsAllPictures_;                            // or those of the stills alone
    std::multimap<std::uint64_t, std::string> stills_; // file names of those to come, by frame
    std::uint64_t taken_ = 0;                          // frames
    std::uint64_t next_;                               // frame, for all but the stills
    std::set<std::uint64_t> missing_;                  // frames that wanted ones depend on
    int runs_ = 0;                                     // of the show, before this one
    bool isInterrupted_ = false;
    bool isWhole_ = false;            // the show has come to the end that was wanted
    std::filesystem::path filmPlace_; // where the film is, once it is complete
    std::optional<HashList> hashes_;
    std::optional<PixelStream> pixels_;
    std::optional<Encoder> encoder_; // none if there is no film to make
    Progress progress_;
    std::optional<Ensemble> shows_;
};
