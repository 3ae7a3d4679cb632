#include "tests/tools/text_script.h"
#include "tools/cutting/measures.h"
#include "tools/cutting/moments.h"
#include "tools/cutting/report.h"
#include "tools/cutting/sheet.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace {

constexpr FrameRate kRate{24, 1};

std::string textOf(const std::vector<Moment>& moments)
{
    std::ostringstream text;
    for (const Moment& moment : moments) {
        text << moment.order << ':' << moment.row << '@' << frameOf(moment, kRate) << ' '
             << moment.words << (moment.mark == Mark::kUnstruck ? " !" : "") << "; ";
    }
    return text.str();
}

std::string textOf(const std::vector<Run>& runs)
{
    std::ostringstream text;
    for (const Run& run : runs) {
        text << run.frames.begin << '-' << run.frames.end << '=' << run.level << ' ';
    }
    return text.str();
}

// A film of which only the changes count.
std::vector<FrameValues> filmOf(const std::vector<double>& changes)
{
    std::vector<FrameValues> film;
    for (const double change : changes) {
        film.push_back({change, 0.0, 0.0});
    }
    return film;
}

Moment at(std::int64_t frame)
{
    Moment moment;
    moment.sample =
        static_cast<std::int64_t>(kRate.samplesBefore(static_cast<std::uint64_t>(frame)));
    return moment;
}

} // namespace

// A row is 2.88 frames long.
TEST(Moments, AreTheCutsTheRowsWithEventsAndTheSeconds)
{
    const Script script = scriptOf("Z01 Z81 / Z86 Z87 ZFF / Z3F / Z80 | Z07 / Z84 / Z01 Z84 / Z08");
    EXPECT_EQ(textOf(cutsOf(script)),
              "0:2@6 twister to freeze !; 1:0@12 freeze to black; 1:2@18 black to twister !; ");
    EXPECT_EQ(textOf(eventsOf(script)),
              "0:0@0 Z81 titles: THE goes; the column jolts; "
              "0:1@3 Z86 titles: BY appears; the column jolts, Z87 titles: BY goes; the column "
              "jolts !; 1:2@18 Z84 titles: KSO appears; the column jolts !; ");
    EXPECT_EQ(textOf(momentsEvery(script, 0.3)), "0:0@0 twister; 0:2@8 freeze; 1:1@15 black; ");
}

TEST(Moments, BelongToAPartOfTheShow)
{
    const std::vector<ScoreSection> sections = {
        {"first",  0},
        {"second", 1},
        {"third",  3}
    };
    EXPECT_EQ(partOf(sections, "second").firstOrder, 1);
    EXPECT_EQ(partOf(sections, "second").lastOrder, 2);
    EXPECT_TRUE(partOf(sections, "third").has(99));
    EXPECT_THROW(partOf(sections, "fourth"), std::runtime_error);
    EXPECT_EQ(partOf("7").value().lastOrder, 7);
    EXPECT_EQ(partOf("7-12").value().lastOrder, 12);
    for (const char* wrong : {"", "-", "7-", "-7", "12-7", "7-x", "7 "}) {
        EXPECT_FALSE(partOf(wrong).has_value()) << wrong;
    }

    const Script script = scriptOf("Z01 / ... | Z05 / ... | Z06 / Z01 / Z08");
    std::vector<Moment> cuts = cutsOf(script);
    keepPart(cuts, {1, 1});
    EXPECT_EQ(textOf(cuts), "1:0@6 twister to tube !; ");
    struct Row {
        Part part;
        std::uint64_t begin;
        std::uint64_t end;
    };
    for (const auto& [part, begin, end] : {
             Row{{},       0,  18},
             Row{{1, 1},   6,  12},
             Row{{1, 200}, 6,  18},
             Row{{2, 2},   12, 18},
             Row{{3, 9},   0,  0 },
    }) {
        const FrameRange range = framesOf(script, part, kRate);
        EXPECT_EQ(range.begin, begin) << part.firstOrder;
        EXPECT_EQ(range.end, end) << part.firstOrder;
    }
}

TEST(Sheet, AsksForEachFrameOnceAndForNoneThatIsNotThere)
{
    const std::vector<Moment> moments = {at(0), at(5), at(40)};
    const FrameRange range{0, 44};
    EXPECT_EQ(framesOnSheet(moments, false, range, kRate),
              (std::vector<std::uint64_t>{0, 4, 5, 10, 20, 25, 39, 40}));
    EXPECT_EQ(framesOnSheet(moments, true, range, kRate), (std::vector<std::uint64_t>{0, 5, 40}));
    for (const FrameRate rate : {
             kRate, FrameRate{60,    1   },
              FrameRate{60000, 1001}
    }) {
        for (std::uint64_t frame = 0; frame < 500; ++frame) {
            const double seconds = std::stod(stillTime(frame, rate));
            const auto microseconds = static_cast<std::uint64_t>(std::llround(seconds * 1e6));
            EXPECT_EQ(rate.frameAt(microseconds), frame) << rate.frames;
        }
    }
}

TEST(Sheet, HasPagesEvenWithoutStills)
{
    const std::string prefix = pathFor("");
    const std::vector<Moment> moments(11, at(30));
    const std::vector<std::string> pages = drawMomentPages(prefix, "test", moments, "/no", kRate);
    EXPECT_EQ(pages, (std::vector<std::string>{prefix + "-01.png", prefix + "-02.png"}));
    EXPECT_EQ(drawFilmPages(prefix, "test", moments, "/no", kRate).size(), 1U);
    for (const std::string& page : pages) {
        EXPECT_GT(std::filesystem::file_size(page), 1000U);
        std::filesystem::remove(page);
    }
}

TEST(FrameValues, AreMeansOverAllColours)
{
    const std::vector<std::uint8_t> before = {0, 0, 0, 255, 255, 255, 10, 20, 30, 250, 249, 250};
    const std::vector<std::uint8_t> now = {255, 0, 0, 250, 250, 250, 30, 20, 10, 250, 250, 250};
    const FrameValues values = valuesOf(before, now);
    EXPECT_DOUBLE_EQ(values.change, (255.0 + 15.0 + 40.0 + 1.0) / 12.0);
    EXPECT_DOUBLE_EQ(values.mean, (255.0 + 750.0 + 60.0 + 750.0) / 12.0);
    EXPECT_DOUBLE_EQ(values.blownOut, 0.5);
    EXPECT_DOUBLE_EQ(valuesOf({}, now).change, 0.0);

    std::istringstream stream(std::string("\1\1\1\3\3\3\2\2", 8));
    const std::vector<FrameValues> film = readFrames(stream, 3);
    ASSERT_EQ(film.size(), 2U);
    EXPECT_DOUBLE_EQ(film[1].change, 2.0);
}

// The film's first frame has no change, and a cut is not a part of what was usual before it.
TEST(Impacts, CompareWithTheMedianOfTenFramesBefore)
{
    struct Row {
        const char* name;
        std::vector<double> changes;
        std::int64_t frame;
        double ratio;
    };
    const Row kRows[] = {
        {"a cut",                 {0, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 9, 2},       11, 4.5 },
        {"one cut among the ten", {0, 2, 2, 2, 90, 2, 2, 2, 2, 2, 2, 9},         11, 4.5 },
        {"what is further away",  {0, 8, 8, 8, 2, 2, 2, 2, 2, 4, 4, 4, 4, 4, 9}, 14, 3.0 },
        {"after a still picture", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5},          11, 50.0},
        {"nothing at all",        {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},          11, 0.0 },
        {"near the beginning",    {0, 4, 2, 12},                                 3,  4.0 },
        {"the second frame",      {0, 3},                                        1,  30.0},
    };
    for (const Row& row : kRows) {
        const std::vector<Moment> moments = {at(0), at(row.frame), at(100)};
        const std::vector<Impact> impacts = impactsOf(filmOf(row.changes), moments, kRate);
        ASSERT_EQ(impacts.size(), 1U) << row.name;
        EXPECT_DOUBLE_EQ(impacts[0].ratio, row.ratio) << row.name;
    }
}

TEST(Runs, AreFoundWhereTheFilmStandsStillOrIsDark)
{
    // A window of four frames has three changes; the jump into a still picture is not one of them.
    EXPECT_EQ(textOf(stillRuns(filmOf({0, 9, 9, 0, 0, 0, 9, 9, 0, 0, 9}), 4, 0.3)), "2-6=0 ");
    EXPECT_EQ(textOf(stillRuns(filmOf({0, 9, 0, 0, 0, 0, 0, 9}), 4, 0.3)), "1-7=0 ");
    EXPECT_EQ(textOf(stillRuns(filmOf({0, 0.5, 0.5, 0.5, 0.5}), 4, 0.3)), "");
    EXPECT_EQ(textOf(stillRuns(filmOf({0, 0}), 4, 0.3)), "");

    std::vector<FrameValues> film(9);
    const double kMeans[] = {1, 1, 1, 5, 1, 1, 5, 0, 1};
    for (std::size_t i = 0; i < film.size(); ++i) {
        film[i].mean = kMeans[i];
        film[i].blownOut = i == 6 ? 0.4 : 0.1;
    }
    EXPECT_EQ(textOf(darkRuns(film, 1, 2.0)), "0-3=1 4-6=1 7-9=0.5 ");
    EXPECT_EQ(textOf(darkRuns(film, 2, 2.0)), "0-3=1 ");
    EXPECT_EQ(mostBlownOut(film), 6U);
}

// Three seconds: the twister stands still, then the opening moves with one strong event of two, and
// a freeze, which is no cut for the eye.
TEST(Report, CountsWhatFallsShort)
{
    std::string rows = "Z01 / Z80";
    for (int row = 2; row < 25; ++row) {
        rows += row == 20 ? " / Z00" : row == 22 ? " / Z3F" : row == 18 ? " / Z82" : " / ...";
    }
    const Script script = scriptOf(rows + " / Z08");
    std::vector<FrameValues> film(framesOf(script, {}, kRate).end);
    const std::uint64_t cut = frameOf(cutsOf(script)[0], kRate);
    for (std::size_t i = 0; i < film.size(); ++i) {
        film[i] = {i > cut && i < cut + 6 ? 5.0 : 0.05, 80.0, 0.0};
    }
    film[frameOf(eventsOf(script)[1], kRate)].change = 1.0;
    film[cut].change = 0.2;
    film[70].blownOut = 0.5;
    std::ostringstream text;
    writeReport(text, script, {}, kRate, film);
    for (const char* wanted : {
             "cuts that change at least 3 times: 0 of 1 (0 %)",
             "twister that change at least 2 times: 1 of 2 ",
             "but freezes and the end: 1 ",
             "pixels blown out at most: 50.0 %, in freeze at 0:02.917",
             "shots: 3, mean 1.00 s",
             "longest shot: 2.40 s, twister at 0:00.000",
         }) {
        EXPECT_NE(text.str().find(wanted), std::string::npos) << wanted << "\n" << text.str();
    }
}
