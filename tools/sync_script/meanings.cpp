#include "tools/sync_script/meanings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

namespace {

using enum Lasting;

constexpr std::array<const char*, kSceneCount> kSceneNames = {
    "opening",    "twister", "image trail", "logo and jitter",
    "wire cubes", "tube",    "closing",     "black",
};

// By scene, then by value; each scene's syncEvent in scenes/ is where it happens. The greetings'
// lines are those of art/pictures/greetings.cpp.
constexpr auto kMeanings = std::to_array<Meaning>({
    {0, 128, "spin",                kHit,    "the figure spins, drawn thick, back at its place"     },
    {0, 129, "glide",               kHit,    "the figure glides toward the viewer, drawn thin"      },
    {0, 130, "swell and glide",     kHit,    "the figure glides toward the viewer, drawn thick"     },
    {0, 131, "near",                kHit,    "the figure is brought near; it spins, drawn thick"    },
    {0, 132, "nearest",             kHit,    "the figure is brought nearest; it spins, drawn thick" },

    {1, 128, "THE",                 kBegins, "titles: THE appears; the column jolts"                },
    {1, 129, "THE",                 kEnds,   "titles: THE goes; the column jolts"                   },
    {1, 130, "END",                 kBegins, "titles: END appears; the column jolts"                },
    {1, 131, "END",                 kEnds,   "titles: END goes; the column jolts"                   },
    {1, 132, "KSO",                 kBegins, "titles: KSO appears; the column jolts"                },
    {1, 133, "KSO",                 kEnds,   "titles: KSO goes; the column jolts"                   },
    {1, 134, "BY",                  kBegins, "titles: BY appears; the column jolts"                 },
    {1, 135, "BY",                  kEnds,   "titles: BY goes; the column jolts"                    },
    {1, 136, "VELMORANT",           kBegins, "titles: VELMORANT appears; the column jolts"          },
    {1, 137, "VELMORANT",           kEnds,   "titles: VELMORANT goes; the column jolts"             },

    {2, 128, "small steps",         kHit,    "the trail goes on in small steps"                     },
    {2, 129, "wide steps",          kHit,    "the trail goes on in wide steps"                      },
    {2, 130, "widest steps",        kHit,    "the trail goes on in the widest steps"                },
    {2, 131, "push",                kHit,    "the ground is pushed on by two seconds"               },

    {3, 131, "push",                kHit,    "the ground is pushed on by two seconds"               },

    {4, 128, "pull",                kHit,    "the cubes are pulled to the viewer, the ground flares"},
    {4, 129, "small blow",          kHit,    "the cubes are blown apart a little"                   },
    {4, 130, "large blow",          kHit,    "the cubes are blown far apart"                        },
    {4, 131, "pull",                kHit,    "the cubes are pulled to the viewer, the ground flares"},

    {5, 128, "the night shift",     kFades,  "greetings: THE NIGHT SHIFT lights up"                 },
    {5, 129, "slow readers",        kFades,  "greetings: SLOW READERS lights up"                    },
    {5, 130, "bell ringers",        kFades,  "greetings: BELL RINGERS lights up"                    },
    {5, 131, "people who hum",      kFades,  "greetings: PEOPLE WHO HUM lights up"                  },
    {5, 132, "tunnel diggers",      kFades,  "greetings: TUNNEL DIGGERS lights up"                  },
    {5, 133, "late bloomers",       kFades,  "greetings: LATE BLOOMERS lights up"                   },
    {5, 134, "menders of radios",   kFades,  "greetings: MENDERS OF RADIOS lights up"               },
    {5, 135, "friends of old dogs", kFades,  "greetings: FRIENDS OF OLD DOGS lights up"             },
    {5, 136, "the last to leave",   kFades,  "greetings: THE LAST TO LEAVE lights up"               },
    {5, 137, "all who stay awake",  kFades,  "greetings: ALL WHO STAY AWAKE lights up"              },
});

bool isScene(int number)
{
    return number >= 0 && number < kSceneCount;
}

} // namespace

std::span<const Meaning> meaningsIn(int scene)
{
    const auto* const first = std::ranges::lower_bound(kMeanings, scene, {}, &Meaning::scene);
    const auto* const last = std::ranges::upper_bound(kMeanings, scene, {}, &Meaning::scene);
    return {first, last};
}

const Meaning* meaningOf(const Cue& cue)
{
    const std::span<const Meaning> meanings = meaningsIn(cue.scene);
    const auto found = std::ranges::find(meanings, cue.value, &Meaning::value);
    return found == meanings.end() ? nullptr : &*found;
}

const char* sceneName(int scene)
{
    return isScene(scene) ? kSceneNames[static_cast<std::size_t>(scene)] : "-";
}

std::string inWords(const Cue& cue)
{
    if (isScene(cue.value)) {
        return "selects scene " + std::to_string(cue.value) + ", " + sceneName(cue.value);
    }
    if (cue.value == kEndValue) {
        return "the show ends";
    }
    if (cue.value < kFirstEvent) {
        return "no scene: nothing is drawn";
    }
    const Meaning* meaning = meaningOf(cue);
    return meaning == nullptr ? "nothing here" : meaning->words;
}

std::string asEffect(int value)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "Z%02X", static_cast<unsigned>(value));
    return text.data();
}
