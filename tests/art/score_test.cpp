// From a score's text to a module's patterns.
#include "art/music/score/arrange.h"
#include "art/music/score/score_reader.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* kHead = "channel kick 02\n"
                              "channel bell 18 pan 30\n"
                              "channel echo pan D0 echo bell 3 50\n"
                              "channel sync\n"
                              "order one a\n";

XmModule arranged(const std::string& body)
{
    return arrange(readScoreText(kHead + body, "song.trk"));
}

XmCell cellOf(const std::string& body, int row, int channel)
{
    return arranged(body).patterns.at(0).at(row, channel);
}

struct CellText {
    const char* text;
    XmCell cell;
};

// One row for each shape of word, and for what a cell leaves out.
constexpr std::array kCellTexts = {
    CellText{"C-4",            {49, 2, 0, 0, 0}          },
    CellText{"x",              {49, 2, 0, 0, 0}          },
    CellText{"B-7",            {96, 2, 0, 0, 0}          },
    CellText{"A#3",            {47, 2, 0, 0, 0}          },
    CellText{"Bb3",            {47, 2, 0, 0, 0}          },
    CellText{"C-4 1F v40 A0F", {49, 31, 0x38, 0x0A, 0x0F}},
    CellText{"C-4 .. v00",     {49, 0, 0x10, 0, 0}       },
    CellText{"===",            {97, 0, 0, 0, 0}          },
    CellText{"c4",             {0, 0, 0x74, 0, 0}        },
    CellText{"... .. ... Z80", {0, 0, 0, 0x23, 0x80}     },
    CellText{"E01",            {0, 0, 0, 0x0E, 0x01}     },
};

struct Overlay {
    const char* below;
    const char* above;
    XmCell cell;
};

constexpr std::array kOverlays = {
    Overlay{"D-4 0D v20",     "x",     {49, 2, 0, 0, 0}          },
    Overlay{"D-4 0D v20",     "x 05",  {49, 5, 0, 0, 0}          },
    Overlay{"D-4 0D v20",     "x v40", {49, 2, 0x38, 0, 0}       },
    Overlay{"D-4 0D v20 A01", "x",     {49, 2, 0, 0x0A, 0x01}    },
    Overlay{"D-4 0D v20",     "===",   {97, 0, 0, 0, 0}          },
    Overlay{"D-4 0D v20",     "v40",   {51, 13, 0x38, 0, 0}      },
    Overlay{"D-4 0D v20",     "05",    {51, 5, 0x24, 0, 0}       },
    Overlay{"D-4 0D v20",     "A01",   {51, 13, 0x24, 0x0A, 0x01}},
    Overlay{"D-4 0D v20",     "--- x", {49, 2, 0, 0, 0}          },
};

struct Fault {
    const char* complaint;
    const char* line; // the seventh of its file
};

constexpr std::array kFaults = {
    Fault{"no statement \"wobble\"",         "wobble 3"                    },
    Fault{"expected: tempo BEATS",           "tempo"                       },
    Fault{"expected: tempo BEATS",           "tempo 130 6"                 },
    Fault{"tempo: \"fast\" is not a number", "tempo fast"                  },
    Fault{"tempo: \"31\" is out of range",   "tempo 31"                    },
    Fault{"\"a\" is there already",          "pattern a"                   },
    Fault{"channels come before",            "channel late"                },
    Fault{"no block \"nothing\"",            "play nothing 00"             },
    Fault{"rows: \"257\" is out of range",   "pattern long 257"            },
    Fault{"no pattern \"b\"",                "order two b"                 },
    Fault{"cannot play itself",              "play a 00"                   },
    Fault{"row: \"64\" is out of range",     "kick: 64 x"                  },
    Fault{"no channel \"drum\"",             "drum: 00 x"                  },
    Fault{"expected a row and its cell",     "kick: 00"                    },
    Fault{"more cells than named columns",   "00 | x"                      },
    Fault{"\"H-4\" is no note",              "kick: 00 H-4"                },
    Fault{"\"Z8\" is no note",               "kick: 00 Z8"                 },
    Fault{"\"C-8\" is out of range",         "kick: 00 C-8"                },
    Fault{"volume column: \"65\"",           "kick: 00 x v65"              },
    Fault{"no command \"q\"",                "kick: 00 x q10"              },
    Fault{"instrument: \"00\"",              "kick: 00 x 00"               },
    Fault{"cannot read gone.trk",            "include gone.trk"            },
    Fault{"swing: two rows have 12 ticks",   "swing 7 6"                   },
    Fault{"includes go round in a circle",   "include tests/art/circle.trk"},
};

} // namespace

TEST(Score, ReadsCells)
{
    for (const CellText& row : kCellTexts) {
        EXPECT_EQ(cellOf(std::string("pattern a\nkick: 05 ") + row.text, 5, 0), row.cell)
            << row.text;
    }
}

// A stroke is not as soft as the ghost note that it covers.
TEST(Score, LaysCellsOverEachOther)
{
    for (const Overlay& row : kOverlays) {
        const std::string body = std::string("block under 1\nkick: 00 ") + row.below +
                                 "\nblock over 1\nkick: 00 " + row.above +
                                 "\npattern a\nplay under 05\nplay over 05\n";
        EXPECT_EQ(cellOf(body, 5, 0), row.cell) << row.below << " under " << row.above;
    }
}

TEST(Score, PutsBlocksIntoPatterns)
{
    const std::string body = "block hit 4\n"
                             "| kick | bell\n"
                             "00 | C-4 v40 |\n"
                             "03 | D-4 A01\n"
                             "pattern a\n"
                             "play hit 00\n"
                             "play hit up 12 level 50 08 16 ; twice\n"
                             "kick: 03 v20, 08 ---\n"
                             "play hit on sync 32\n";
    EXPECT_EQ(cellOf(body, 0, 0), (XmCell{49, 2, 0x38, 0, 0}));
    EXPECT_EQ(cellOf(body, 3, 0), (XmCell{51, 2, 0x24, 0x0A, 0x01})) << "overlaid by column";
    EXPECT_EQ(cellOf(body, 8, 0), XmCell()) << "taken away";
    EXPECT_EQ(cellOf(body, 16, 0), (XmCell{61, 2, 0x24, 0, 0})) << "moved and softened";
    EXPECT_EQ(cellOf(body, 19, 0), (XmCell{63, 2, 0x30, 0x0A, 0x01})) << "a bare note is at 64";
    EXPECT_EQ(cellOf(body, 32, 3).note, 49) << "on another channel";
}

TEST(Score, GivesPatternsTheirLengths)
{
    EXPECT_EQ(arranged("pattern a\n").patterns.at(0).rows(), 64);
    EXPECT_EQ(arranged("pattern a 24\n").patterns.at(0).rows(), 24);
    EXPECT_EQ(arranged("pattern a 128\nkick: 127 x\n").patterns.at(0).rows(), 128);
}

TEST(Score, PansNotesInWhicheverColumnIsFree)
{
    const std::string body = "pattern a\nbell: 00 C-4, 01 C-4 A01, 02 C-4 v20 A01, 03 v20";
    EXPECT_EQ(cellOf(body, 0, 1), (XmCell{49, 24, 0, 0x08, 0x30}));
    EXPECT_EQ(cellOf(body, 1, 1), (XmCell{49, 24, 0xC3, 0x0A, 0x01}));
    EXPECT_EQ(cellOf(body, 2, 1), (XmCell{49, 24, 0x24, 0x0A, 0x01}));
    EXPECT_EQ(cellOf(body, 3, 1), (XmCell{0, 0, 0x24, 0, 0}));
}

TEST(Score, EchoesRingOnIntoTheNextOrder)
{
    const std::string body = "order two b a\n"
                             "pattern a\nbell: 62 C-4 v40 A01, 63 ===\n"
                             "pattern b\necho: 02 D-4 19\n";
    const XmModule module = arranged(body);
    ASSERT_EQ(module.orders, (std::vector<std::uint8_t>{0, 1, 0}));
    const XmPattern& second = module.patterns[1];
    EXPECT_EQ(second.at(1, 2), (XmCell{49, 24, 0x24, 0x08, 0xD0}));
    EXPECT_EQ(second.at(2, 2), (XmCell{51, 25, 0, 0x08, 0xD0})) << "what is written goes first";
    EXPECT_EQ(module.patterns[0].at(1, 2), XmCell()) << "nothing rings at the beginning";
}

TEST(Score, SwingsBetweenTheSpeedsOfEvenAndOddRows)
{
    const std::string body = "order two b\n"
                             "pattern a\nswing 7 5\nkick: 00 x F06, 01 x A01, 02 F7D\n"
                             "pattern b\n";
    const XmModule module = arranged(body);
    const XmPattern& swung = module.patterns.at(0);
    EXPECT_EQ(swung.at(0, 0), (XmCell{49, 2, 0, 0x0F, 7})) << "in place of another speed";
    EXPECT_EQ(swung.at(1, 1), (XmCell{0, 0, 0, 0x0F, 5})) << "beside another effect";
    EXPECT_EQ(swung.at(2, 0), (XmCell{0, 0, 0, 0x0F, 0x7D})) << "a tempo is no speed";
    EXPECT_EQ(swung.at(2, 1), (XmCell{0, 0, 0, 0x0F, 7}));
    EXPECT_EQ(module.patterns.at(1).at(0, 0), (XmCell{0, 0, 0, 0x0F, 6})) << "straight again";
    EXPECT_EQ(module.patterns.at(1).at(1, 0), XmCell());
}

TEST(Score, SaysWhereAFaultIs)
{
    for (const Fault& fault : kFaults) {
        try {
            arranged(std::string("pattern a\n") + fault.line + "\n");
            ADD_FAILURE() << "accepted: " << fault.line;
        } catch (const ScoreError& error) {
            const std::string message = error.what();
            EXPECT_NE(message.find(fault.complaint), std::string::npos) << message;
            EXPECT_TRUE(message.find("song.trk:7: ") == 0 ||
                        message.find("circle.trk:2: ") != std::string::npos)
                << message;
        }
    }
}

// Opening one would wait until somebody writes into it.
TEST(Score, ReadsNoPipe)
{
    const std::string pipe = testing::TempDir() + "kso_score_" + std::to_string(::getpid());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ::alarm(20); // ends what hangs
    EXPECT_THROW(readScore(pipe), ScoreError);
    EXPECT_THROW(readScoreText("include " + pipe + "\n", "song.trk"), ScoreError);
    ::alarm(0);
    std::filesystem::remove(pipe);
}
