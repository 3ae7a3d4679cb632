#include "tests/image/picture_checks.h"

namespace {

// Files are cut anywhere, even inside a palette.
TEST(HsiRawReader, TakesWhatAShortFileLacksForZeros)
{
    for (const unsigned colours : {0U, 1U, 256U}) {
        Bytes file = makeHsiRaw(4, 3, colours, makePixels(colours == 0 ? 36 : 12, 1, 0));
        for (; file.size() > 14; file.pop_back()) {
            compareWithPlain(file, &Bitmap::loadHsiRaw, plainReadHsiRaw);
        }
    }
}

// clang-format off
TEST(HsiRawReaderDeathTest, RefusesWhatItCannotRead)
{
    expectRefusals(makeHsiRaw(1, 1, 2, {1}), &Bitmap::loadHsiRaw, {
        {{{1, 'n'}}, "Error! Not valid HSIRAW!!\n\n"},
        {{{2, 'x'}, {12, 1}}, "Error! Not valid HSIRAW!!\n\n"},
        {{{12, 1}, {13, 1}}, "Error! Too many colors!!\n\n"}, // 257
    });
}
// clang-format on

} // namespace
