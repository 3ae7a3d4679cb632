// The whole show, recorded: the real program with real OpenGL, frame by frame and sample by sample.

#include "base/window_and_view.h"
#include "sound/mixer.h"
#include "tests/whole_show/files.h"
#include "tests/whole_show/golden.h"
#include "tests/whole_show/scripted_module.h"
#include "tests/whole_show/studio.h"
#include "virtual/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;
using Lines = std::vector<FrameLine>;

// With the last one, frames come a fraction of a sample before rows, then more and more of them.
constexpr FrameRate kRates[] = {
    {24,    1    },
    {60000, 1001 },
    {60,    1    },
    {144,   1    },
    {88200, 10583},
};

// A word for each row: the scene's number, 8 for the end, or "-" for nothing new.
XmModule scenes(const std::string& rows)
{
    std::vector<Cue> cues;
    std::istringstream words(rows);
    std::string word;
    for (int row = 0; words >> word; ++row) {
        if (word != "-") {
            cues.push_back({0, row, 0, std::stoi(word)});
        }
    }
    return scriptedModule(1, cues);
}

// A letter for each frame of the rows, as many as begin during them.
std::string perFrame(const std::string& letterOfRow, const FrameRate& rate)
{
    std::string text;
    for (std::size_t row = 0; row < letterOfRow.size(); ++row) {
        text.resize(frameThatHears(0, static_cast<int>(row) + 1, rate), letterOfRow[row]);
    }
    return text;
}

std::string whereBlack(const Lines& lines, const std::string& black)
{
    std::string text;
    for (const FrameLine& line : lines) {
        text += line.picture == black ? '.' : '#';
    }
    return text;
}

// A saw that climbs from row to row.
void addSound(XmModule& module)
{
    XmSample& saw = module.instruments.emplace_back().samples.emplace_back();
    for (; saw.loopLength < 64; ++saw.loopLength) {
        saw.data.push_back(static_cast<std::int16_t>(500 * (saw.loopLength - 32)));
    }
    XmPattern& pattern = module.patterns.front();
    for (int row = 0; row < pattern.rows(); ++row) {
        pattern.at(row, 1).note = static_cast<std::uint8_t>(kXmNoteC4 + row % 12);
        pattern.at(row, 1).instrument = 1;
    }
}

// What a module sounds like, as the bytes of 16-bit pairs.
std::string soundOf(const fs::path& file, std::size_t pairs)
{
    std::unique_ptr<FMUSIC_MODULE> module;
    EXPECT_EQ(loadModule(file.c_str(), module), SoundError::none);
    Mixer mixer;
    mixer.setGain(*module, 255.0F / 256.0F);
    mixer.play(*module);
    std::vector<std::int16_t> samples(pairs * kMixChannels);
    mixer.mix(samples);
    std::string bytes(samples.size() * sizeof samples[0], '\0');
    std::memcpy(bytes.data(), samples.data(), bytes.size());
    return bytes;
}

struct StartOrder {
    int scene; // as it stands on the command line
    int order;
};

// Written down a second time on purpose: a wrong order in the show cannot be wrong here too.
constexpr StartOrder kStartOrders[] = {
    {2, 3 },
    {3, 6 },
    {4, 10},
    {5, 13},
    {6, 18},
    {7, 26},
};

} // namespace

// Every scene twice, a row each, after a black one; some rows begin with a frame, most do not. (The
// closing scene's blending would leave the opening black.) The sound is the module's and ends with
// the picture.
TEST(Recorded, ShowsEveryChangeOnItsFrameAndHearsEverySample)
{
    XmModule module = scenes("7 0 7 1 7 0 7 2 7 1 7 3 7 2 7 4 7 3 7 5 7 4 7 6 7 5 7 6 8");
    addSound(module);
    const Studio studio(module);
    for (const FrameRate& rate : kRates) {
        const Lines lines = studio.list(fps(rate) + "-o sound.wav");
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(whereBlack(lines, lines.front().picture),
                  perFrame(".#.#.#.#.#.#.#.#.#.#.#.#.#.#", rate));
        EXPECT_EQ(lines.back().number, lines.size() - 1);

        ASSERT_EQ(studio.run("ffmpeg -v error -i sound.wav -f s16le -y sound").status, 0);
        const std::size_t pairs = lines.size() * rate.seconds * 44100 / rate.frames;
        const std::string wanted = soundOf(studio.folder() / "data/olvu.xm", pairs);
        const std::string heard = contents(studio.folder() / "sound");
        EXPECT_EQ(heard.size(), wanted.size());
        EXPECT_TRUE(heard == wanted) << fps(rate);
    }
}

// An event draws from its frame on, and what no scene draws is the last picture.
TEST(Recorded, ShowsEveryEventOnItsFrame)
{
    const XmModule plain = scenes("1 - - 9 63 7 8");
    XmModule eventful = plain;
    eventful.patterns[0].at(1, 1) = {.effect = kXmEffectZxx, .parameter = 128}; // a title
    const Studio plainStudio(plain);
    const Studio eventfulStudio(eventful);
    for (const FrameRate& rate : kRates) {
        const Lines without = plainStudio.list(fps(rate));
        const Lines with = eventfulStudio.list(fps(rate));
        ASSERT_EQ(without.size(), with.size());
        std::string drawn;
        for (std::size_t i = 0; i < with.size(); ++i) {
            const bool isChanged = with[i].picture != without[i].picture;
            const bool isHeld = i > 0 && with[i].picture == with[i - 1].picture;
            drawn += !isChanged ? '.' : isHeld ? 'h' : '#';
        }
        EXPECT_EQ(drawn, perFrame(".##hh.", rate));
    }
    // The last frame shows nothing, the one after it would.
    EXPECT_EQ(plainStudio.list("--fps 60 --to 0.6").size(), 36);
}

TEST(Recorded, EndsAtAKeyOrAClosedWindowAfterAWholeFrame)
{
    const Studio studio(scenes("2 - - - - - - 8"));
    constexpr const char* kKeyDown = "2"; // SDL's numbers for the events
    constexpr const char* kQuit = "12";
    for (const char* event : {kKeyDown, kQuit}) {
        ::setenv("CAPTURE_CLOSE", event, 1);
        EXPECT_EQ(studio.list("--fps 24 --to 0.5").size(), 12U) << event;
    }
    ::unsetenv("CAPTURE_CLOSE");
}

// Only the orders where start scenes begin are black. Each order ends after its own number of rows
// and one more, so the length tells which one it was.
TEST(Recorded, BeginsWithTheStartScene)
{
    std::vector<Cue> cues;
    for (int order = 0; order < 27; ++order) {
        const bool isStart = std::ranges::count(kStartOrders, order, &StartOrder::order) > 0;
        cues.push_back({order, 0, 0, isStart ? 7 : 1});
        cues.push_back({order, order + 1, 0, 8});
    }
    const Studio studio(scriptedModule(27, cues));
    const std::string black = studio.list("--fps 10 -- 7").back().picture;
    EXPECT_NE(studio.list("--fps 10").front().picture, black);
    for (const auto& [scene, order] : kStartOrders) {
        const Lines lines = studio.list("--fps 10 -- " + std::to_string(scene));
        const auto rows = static_cast<std::size_t>(order) + 1;
        EXPECT_EQ(whereBlack(lines, black), perFrame(std::string(rows, '.'), {10, 1})) << scene;
    }
}

// Up to row 4 the pictures depend on the time alone; then on the number of frames and on random
// numbers too.
TEST(Recorded, IsTheSameEachTimeAtAnyRateAndFromAnywhere)
{
    const Studio studio(scenes("2 - 1 - 3 - 6 - 5 4 0 - 8"));
    const Lines all = studio.list("--fps 60");
    EXPECT_EQ(studio.list("--fps 60"), all);
    const Lines part = studio.list("--fps 60 --from 0.3333 --to 1.2");
    EXPECT_EQ(part, Lines(all.begin() + 20, all.begin() + 72));
    const Lines thrice = studio.list("--fps 180 --to 0.5");
    for (std::size_t i = 0; i < frameThatHears(0, 4, {60, 1}); ++i) {
        EXPECT_EQ(thrice.at(3 * i).picture, all.at(i).picture) << i;
    }
    // The show's own music, with all that a player rounds.
    EXPECT_EQ(studio
                  .run("$RECORD --fps 24 --to 2 -o 24.wav -- 5 && "
                       "$RECORD --fps 60 --to 2 -o 60.wav -- 5 && cmp 24.wav 60.wav")
                  .status,
              0);
}

// Every scene, once after each kind of cut, and stretches where none is shown; rows are 2.4 frames
// long. A frame that is recorded alone is drawn without those before it.
TEST(Recorded, DrawsAFrameAloneAsAmongAllOthers)
{
    XmModule module =
        scenes("0 - 1 - 2 - 9 - 3 5 63 0 4 2 6 - 9 - 2 - 5 - 4 - 3 1 6 0 - 9 - - 7 6 - 63 2 5 8");
    addSound(module);
    for (int row = 0; row < 40; ++row) {
        module.patterns[0].at(row, 2) = {.effect = kXmEffectZxx,
                                         .parameter = static_cast<std::uint8_t>(128 + row % 4)};
    }
    const Studio studio(module);
    const std::string options = " --size 160x68 --fps 20 ";
    const std::string alone = "$RECORD --show . --stills alone" + options + "--at ";
    const std::string shared = options + "--jobs ";
    constexpr std::size_t kEvery = 3;
    constexpr std::size_t kFrames = 90;
    const auto timeOf = [](std::size_t frame) {
        return text("%.2f", static_cast<double>(frame) / 20.0);
    };
    std::array<std::string, kEvery> moments;
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        moments[frame % kEvery].append(frame < kEvery ? "" : ",").append(timeOf(frame));
    }
    const Lines all = studio.list(options + "--stills all --at " + moments[0] + ',' + moments[1] +
                                  ',' + moments[2]);
    for (const std::string& some : moments) {
        const Result result = studio.run(alone + some);
        EXPECT_EQ(result.status, 0) << result.errors;
    }
    EXPECT_EQ(studio.run("diff -rq all alone").output, "");
    for (std::size_t first = 0; first < kFrames; first += 11) {
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
        EXPECT_EQ(studio.list(options + "--from " + timeOf(first) + " --to " + timeOf(first + 2)),
                  Lines(begin, begin + 2))
            << first;
    }
    // Several shows draw by turns; one of them may hold what another has drawn.
    for (const std::string jobs : {"2", "3"}) {
        EXPECT_EQ(studio.list(shared + jobs), all) << jobs;
        EXPECT_EQ(studio.list(shared + jobs + " --from 1.2 --to 1.5"),
                  Lines(all.begin() + 24, all.begin() + 30));
    }
    const Result result = studio.run("$RECORD --show . -o a.mkv" + options +
                                     "&& $RECORD --show . --jobs 2 -o b.mkv" + options +
                                     "&& for film in a b; do ffmpeg -v error -i $film.mkv "
                                     "-f framemd5 - | sort >$film; done && cmp a b");
    EXPECT_EQ(result.status, 0) << result.errors;
}

// Parts that were recorded in any order make the film that one recording makes.
TEST(Recorded, JoinsPartsIntoTheSameFilm)
{
    XmModule module = scenes("1 - 2 - - 3 - 5 - 4 - 8");
    addSound(module);
    const Studio studio(module);
    const std::string options = " --show . --size 160x68 --fps 59.94 ";
    Result result = studio.run(
        "$RECORD -o one.mp4" + options + "&& $RECORD --hashes one" + options +
        "&& for part in 3 1 2; do $RECORD --part $part/3" + options +
        "|| exit; done && $RECORD --join --hashes joined --stills . --at 0.3 && cmp one joined "
        "&& ls 0.3.png && for film in one kso; do "
        "ffmpeg -v error -i $film.mp4 -f framemd5 - | sort >$film.sums; done; cmp one.sums "
        "kso.sums");
    ASSERT_EQ(result.output, "0.3.png\n") << result.errors;

    struct Row {
        const char* before;
        const char* errors;
    };
    constexpr Row kRows[] = {
        {"rm kso.2-of-3.mkv",                "there is no kso.2-of-3.mkv\n"                         },
        {"rm kso.*-of-*",                    "there is no kso.1-of-2.mkv or the like to join\n"     },
        {"truncate -s -9K kso.1-of-3.mkv",   "kso.1-of-3.mkv is not whole; record this part again\n"},
        {"truncate -s -9K kso.3-of-3.mkv",   "kso.3-of-3.mkv is not whole; record this part again\n"},
        {"mark '1/3 0-9 0/0 160x68'",        "kso.1-of-3.mkv is not a part of a film\n"             },
        {"mark '1/3 0-9 60/1 0x68'",         "kso.1-of-3.mkv is not a part of a film\n"             },
        {"truncate -s 100 kso.3-of-3.mkv",   "kso.3-of-3.mkv is not a part of a film: "             },
        {"cp one.mp4 kso.3-of-3.mkv",        "kso.3-of-3.mkv is not a part of a film\n"             },
        {"cp kso.1-of-3.mkv kso.2-of-3.mkv",
         "kso.2-of-3.mkv was recorded with other options than the part before it\n"                 },
        {"cp kso.1-of-3.mkv kso.1-of-1.mkv", "there are both kso.1-of-1.mkv and kso.1-of-3.mkv; "   },
    };
    for (const auto& [before, errors] : kRows) {
        result = studio.run("mark() { ffmpeg -v error -y -i ../kso.1-of-3.mkv -map 0 -c copy "
                            "-metadata KSO_PART=\"$1\" kso.1-of-3.mkv; }\n"
                            "rm -rf torn && mkdir torn && cp *-of-* one.mp4 torn && cd torn && " +
                            std::string(before) + " && $RECORD --join");
        EXPECT_EQ(result.status, 1) << before;
        EXPECT_THAT(result.errors, HasSubstr(errors)) << before;
    }
    // A part is whole or not there.
    result = studio.run(
        "timeout --foreground --preserve-status --signal INT 1 $RECORDER --part 1/2 -o long.mp4; "
        "echo $?; ls long.*");
    EXPECT_EQ(result.output, "130\n") << result.errors;
}

TEST(Recorded, TriesOutAnEncoderFirst)
{
    const Studio studio(scenes("1 - 8"));
    Result result =
        studio.run("$RECORD --show . --fps 10 --encoder x265 -o a.mp4 && "
                   "ffprobe -v error -show_entries stream=codec_name -of csv=p=0 a.mp4");
    EXPECT_EQ(result.output, "hevc\naac\n") << result.errors;
    result =
        studio.run("mkdir bin && printf '#!/bin/sh\necho no card >&2\nexit 1\n' >bin/ffmpeg && "
                   "chmod +x bin/ffmpeg && PATH=$PWD/bin:$PATH $RECORD --show . "
                   "--encoder nvenc -o b.mp4; echo $?; ls b.*");
    EXPECT_EQ(result.output, "1\n");
    EXPECT_THAT(result.errors, StartsWith("kso: the encoder nvenc does not work here: no card\n"));
}

// The show's own music, with all that a player carries over.
TEST(Recorded, HearsAStretchAloneAsAmongAllOthers)
{
    const Studio studio({});
    ASSERT_EQ(studio.run("$RECORD --to 15 -o all.wav -- 5").status, 0);
    for (const std::string from : {"0.7", "4.1", "9.3", "13.9"}) {
        const Result result = studio.run("$RECORD --to 15 -o alone.wav --from " + from +
                                         " -- 5 && bytes=$(($(stat -c %s alone.wav) - 100)) && "
                                         "tail -c $bytes all.wav >all && "
                                         "tail -c $bytes alone.wav >alone && cmp all alone");
        EXPECT_EQ(result.status, 0) << from << result.errors;
    }
}

TEST(Recorded, DrawsTheSamePictureInEverySize)
{
    const Studio studio(scenes("1 - - - 4"));
    const auto pictures = [&](const std::string& size) {
        const Result result = studio.run("$RECORD --show . --fps 20 --stills " + size +
                                         " --at 0.4,0.5 --size " + size);
        EXPECT_EQ(result.status, 0) << result.errors;
        return std::array{readPng(studio.folder() / size / "0.4.png"),
                          readPng(studio.folder() / size / "0.5.png")};
    };
    const auto window = pictures("640x480");
    const auto bare = pictures("640x272");
    const auto large = pictures("1280x544");
    for (std::size_t i = 0; i < bare.size(); ++i) { // quads, lines
        Picture banded = bare[i];
        const int bandRows = (kWindowHeight - kViewHeight) / 2;
        const std::vector<std::uint8_t> band(std::size_t{3} * kWindowWidth * bandRows);
        banded.bytes.insert(banded.bytes.begin(), band.begin(), band.end());
        banded.bytes.insert(banded.bytes.end(), band.begin(), band.end());
        EXPECT_LT(differenceBetween(window[i], banded).mean, 0.1) << i;
        EXPECT_LT(differenceBetween(scaledDown(large[i], 2), bare[i]).mean, 3.0) << i;
    }
}

TEST(Recorded, GivesThePixelsOfEachFrame)
{
    const Studio studio(scenes("1 - 5 - 8"));
    const Result result = studio.run("mkfifo pipe; cat pipe >pixels & $RECORD --show . --fps 10 "
                                     "--size 320x136 --pixels pipe --stills . --at 0.3 && wait");
    ASSERT_EQ(result.status, 0) << result.errors;
    const std::string pixels = contents(studio.folder() / "pixels");
    constexpr std::size_t kFrameBytes = std::size_t{320} * 136 * 3;
    EXPECT_EQ(pixels.size(), 5 * kFrameBytes);
    const std::vector<std::uint8_t> still = readPng(studio.folder() / "0.3.png").bytes;
    EXPECT_EQ(pixels.substr(3 * kFrameBytes, kFrameBytes), std::string(still.begin(), still.end()));
}

// The show's own failures keep their message and stream.
TEST(Recorded, SaysWhyThereIsNoRecording)
{
    struct Row {
        const char* before;
        const char* options;
        int status;
        const char* errors; // among them
        const char* output = "";
    };
    // clang-format off
    constexpr Row kRows[] = {
        {"rm data/olvu.xm;", "--to 1", 1, "kso: the show failed\n", "Error!\nFile not found\n"},
        {"rm -r data;", "--to 1", 1, "kso: the show failed\n", "Error!\nFile not found\n"},
        {"rm data/by.tga;", "--jobs 3", 1, "\n\nError opening data/by.tga!\n\nkso: the show failed\n"},
        {"rm data/by.tga;", "", 1, "\n\nError opening data/by.tga!\n\nkso: the show failed\n"},
        {"", "--show nowhere", 2, "kso: there is no folder \"nowhere\"\n"},
        {"", "--shows .", 2, "kso: there is no option \"--shows\"; "},
        {"", "--stills . --at 0.2,9", 1, "\nkso: the show ended before the still 9.png\n"},
        {"", "--from 9 --hashes list", 1, "\nkso: the show ended before --from\n"},
        {"", "--hashes /dev/full", 1, "\nkso: cannot write /dev/full: No space left on device\n"},
        {"", "--pixels /dev/full", 1, "\nkso: cannot write /dev/full: No space left on device\n"},
        {"", "--stills data/by.tga --at 0", 1, "kso: cannot make data/by.tga: "},
        {"", "-o nowhere/film.mp4", 1, "kso: cannot write nowhere/film.mp4: No such file"},
        {"ulimit -f 1;", "-o film.mp4", 1, "film.part.mp4: File too large\n"},
        {"ulimit -f 1;", "--pixels list", 1, "\nkso: cannot write list: File too large\n"},
        {"mkfifo a.mp4;", "-o a.mp4", 1, "kso: cannot write a.mp4: it is not a regular file\n"},
        {"mkdir a.mp4;", "-o a.mp4", 1, "kso: cannot write a.mp4: it is not a regular file\n"},
        {"mkfifo list;", "--hashes list", 1, "cannot write list: it is not a regular file\n"},
        {"mkfifo 0.png;", "--stills . --at 0", 1, "cannot write ./0.png: it is not a regular"},
        {"PATH=/nowhere", "", 1, "kso: ffmpeg does not start: No such file or directory; "},
    };
    // clang-format on
    for (const Row& row : kRows) {
        const Studio studio(scenes("- - - 8"));
        const Result result =
            studio.run(std::string(row.before) + " $RECORD --show . --fps 10 " + row.options);
        EXPECT_EQ(result.status, row.status) << row.options;
        EXPECT_EQ(result.output, row.output) << row.options;
        EXPECT_THAT(result.errors, HasSubstr(row.errors));
        EXPECT_FALSE(fs::exists(studio.folder() / "film.mp4"));
        EXPECT_FALSE(fs::exists(studio.folder() / "film.part.mp4"));
    }
}

TEST(Recorded, MakesAFilmThatPlays)
{
    const Studio studio(scenes("- 7 2"));
    const std::string probe =
        "ffprobe -v warning -count_frames -of csv=p=0 -show_entries "
        "stream=codec_name,r_frame_rate,duration,nb_read_frames film.mp4 2>&1";
    const std::string play = "ffmpeg -v warning -i film.mp4 -f null - 2>&1";
    ASSERT_EQ(studio.run("$RECORD --show . --fps 59.94 --to 1 -o film.mp4").status, 0);
    EXPECT_THAT(studio.run(probe).output,
                StartsWith("h264,60000/1001,1.001000,60\naac,0/0,1.000998,"));
    EXPECT_EQ(studio.run(play).output, "");

    // Stopped, it is as long as it was by then.
    const Result stopped =
        studio.run("rm film.mp4; $RECORD --show . -o film.mp4 & "
                   "while kill -0 $! && [ ! -s film.part.mp4 ]; do sleep 0.05; done; "
                   "kill -INT $!; wait $!");
    EXPECT_EQ(stopped.status, 130) << stopped.errors;
    EXPECT_THAT(studio.run(probe).output,
                MatchesRegex("h264,60/1,[0-9.]+,[1-9][0-9]*\naac,0/0,[0-9.]+,[1-9][0-9]*\n"));
    EXPECT_EQ(studio.run(play).output, "");
}

// What a recording leaves where files of its outputs' names stand already.
TEST(Recorded, KeepsWhatIsNotItsOwn)
{
    const Studio studio(scenes("2 - 5 - 8"));
    Result result = studio.run("echo mine >a.part.mp4 && mkdir a.part-2.mp4 && "
                               "$RECORD --show . --fps 10 -o a.mp4 && ls -d a.*");
    EXPECT_EQ(result.output, "a.mp4\na.part-2.mp4\na.part.mp4\n") << result.errors;
    EXPECT_EQ(contents(studio.folder() / "a.part.mp4"), "mine\n");

    // Two of one name do not meet.
    result = studio.run("$RECORD --show . --fps 30 -o b.mp4 & $RECORD --show . --fps 30 -o b.mp4 "
                        "&& wait $! && ffmpeg -v warning -xerror -i b.mp4 -f null - && ls b.*");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "b.mp4\n");
    result = studio.run("flock list $RECORD --show . --hashes list --fps 10");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("kso: cannot write list: another recording writes it\n"));

    // Only a film that is whole takes the place of an older one. A recorder that is killed takes
    // its children with it.
    struct Row {
        const char* kill;
        int status;
        const char* errors;
        const char* left;
        const char* options = "";
    };
    constexpr const char* kStays = "kso: c.mp4 stays as it was; what was recorded now is in /";
    // clang-format off
    constexpr Row kRows[] = {
        {"kill $recorder", 130, kStays, "c.mp4\nc.part.mp4\n"},
        {"kill -ABRT $(child kso)", 1, kStays, "c.mp4\nc.part.mp4\n"},
        {"kill -ABRT $(child kso | tail -n 1)", 1, kStays, "c.mp4\nc.part.mp4\n", "--jobs 2"},
        {"kill -KILL $recorder", 137, "", "c.mp4\nc.part.mp4\nkso ffmpeg\n"},
    };
    // clang-format on
    for (const auto& [kill, status, errors, left, options] : kRows) {
        result = studio.run(
            "child() { for each in $(cat /proc/$recorder/task/$recorder/children); do "
            "[ $(cat /proc/$each/comm) != $1 ] || echo $each; done; }\n"
            "rm -f c.*; echo older >c.mp4; $RECORDER --to 60 -o c.mp4 " +
            std::string(options) +
            " & recorder=$!\n"
            "until [ -s c.part.mp4 ]; do sleep 0.05; done\n"
            "kso=$(child kso | head -n 1); ffmpeg=$(child ffmpeg)\n" +
            kill +
            "; wait $recorder; status=$?; grep -x older c.mp4 >/dev/null || "
            "echo c.mp4 is new; ls c.*; sleep 0.3; "
            "[ $status != 137 ] || [ \"$(cat /proc/$kso/cmdline /proc/$ffmpeg/cmdline | "
            "tr -d '\\0')\" ] || echo kso ffmpeg; "
            "[ $status = 137 ] || ffmpeg -v warning -i c.part.mp4 -f null - 2>&1; exit $status");
        EXPECT_EQ(result.status, status) << kill;
        EXPECT_THAT(result.errors, HasSubstr(errors)) << kill;
        EXPECT_EQ(result.output.substr(0, 500), left) << kill;
    }
}

// Three moments of each scene of the show, averaged 4 x 4, below each other. What is allowed is
// about twice what Mesa's other, slower software renderer differs by, which shares little with the
// usual one.
TEST(Recorded, LooksAsItDid)
{
    struct Row {
        const char* name;
        const char* startScene;
        std::array<const char*, 3> moments;
        Difference allowed;
    };
    // clang-format off
    constexpr Row kRows[] = {
        {"opening",         "0", {"1", "5", "12.5"},     {8, 0.1}},
        {"twister",         "2", {"2.1", "6", "17"},     {8, 0.3}},
        {"image_trail",     "3", {"0.5", "2.4", "6.8"},  {24, 0.8}},
        {"logo_and_jitter", "4", {"0.5", "3.5", "7.2"},  {12, 0.5}},
        {"wire_cubes",      "5", {"0.3", "1.4", "7.7"},  {64, 1.5}},
        {"tube",            "6", {"1", "4.5", "12.5"},   {48, 0.5}},
        {"closing",         "7", {"1", "12", "20"},      {24, 0.3}},
    };
    // clang-format on
    const Studio studio({});
    for (const auto& [name, startScene, moments, allowed] : kRows) {
        const auto [first, second, third] = moments;
        const std::string times = std::string(first) + ',' + second + ',' + third;
        const Result result = studio.run("$RECORD --size 640x272 --fps 10 --stills . --at " +
                                         times + " -- " + startScene);
        ASSERT_EQ(result.status, 0) << result.errors;
        Picture strip;
        for (const std::string moment : moments) {
            const Picture still = scaledDown(readPng(studio.folder() / (moment + ".png")), 4);
            strip.width = still.width;
            strip.height += still.height;
            strip.bytes.insert(strip.bytes.end(), still.bytes.begin(), still.bytes.end());
        }
        expectGolden(name, strip, allowed);
    }
}
