#include "tests/whole_show/pictures.h"

#include "reference/picture_files.h"

#include <algorithm>
#include <random>

const std::vector<Loaded> kAllLoaded = {
    {"",                         512,  256,  kOpaque | kThenSeeds   },
    {"kso.tga",                  256,  128,  kBlackIsClear          },
    {"by.tga",                   64,   32,   kBlackIsClear          },
    {"velmorant.tga",            512,  64,   kBlackIsClear          },
    {"the.tga",                  128,  32,   kBlackIsClear          },
    {"end.tga",                  256,  64,   kBlackIsClear          },
    {"tokapart_tausta.tga",      64,   32,   kAsItIs                },
    {"",                         512,  256,  kAsItIs                },
    {"texture2.tga",             256,  256,  kOpaque                },
    {"additiivinen_aivo.tga",    64,   64,   kBlackIsClear          },
    {"quentalogo.tga",           32,   16,   kBlackIsClear          },
    {"koira.tga",                16,   32,   kBlackIsClear          },
    {"muljumap.tga",             1024, 1024, kGrey | kThenSeeds     },
    {"valo.tga",                 32,   32,   kOpaque                },
    {"oranssipallotexture2.tga", 64,   16,   kOpaque                },
    {"greet.tga",                16,   64,   kAsItIs                },
    {"",                         256,  128,  kOpaque                },
    {"",                         256,  128,  kOpaque | kThenSeeds   },
    {"kso.tga",                  256,  128,  kOpaque | kBlackIsClear},
    {"outohalko4_tumma.tga",     16,   16,   kAsItIs                },
};

std::vector<std::uint8_t> pixelsOf(const Loaded& picture)
{
    std::mt19937 random(static_cast<unsigned>(std::hash<std::string>()(picture.file)));
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < picture.width * picture.height; ++i) {
        auto pixel = static_cast<std::uint32_t>(random());
        const bool black = pixel % 4 == 0;
        pixel &= black ? 0xFF000000U : 0xFFFFFFFFU;
        pixel |= (picture.how & kOpaque) != 0 ? 0xFF000000U : 0U;
        pixel &= black && (picture.how & kBlackIsClear) != 0 ? 0U : 0xFFFFFFFFU;
        for (int channel = 0; channel < ((picture.how & kGrey) != 0 ? 1 : 4); ++channel) {
            bytes.push_back(static_cast<std::uint8_t>(pixel >> (8 * channel)));
        }
    }
    return bytes;
}

std::vector<std::uint8_t> pixelsOf(const std::string& file)
{
    return pixelsOf(*std::find_if(kAllLoaded.begin(), kAllLoaded.end(),
                                  [&](const Loaded& picture) { return picture.file == file; }));
}

std::vector<std::uint8_t> tgaOf(Loaded picture)
{
    picture.how &= kGrey;
    const bool grey = picture.how != kAsItIs;
    std::vector<std::uint8_t> pixels = pixelsOf(picture);
    for (std::size_t i = 0; !grey && i < pixels.size(); i += 4) {
        std::swap(pixels[i], pixels[i + 2]); // the file has blue first
    }
    return makeTga({.type = grey ? 3U : 2U,
                    .width = static_cast<unsigned>(picture.width),
                    .height = static_cast<unsigned>(picture.height),
                    .bits = grey ? 8U : 32U,
                    .descriptor = grey ? 0x20U : 0x28U}, // top row first
                   pixels);
}
