// The catalogue of cues: everything that the music tells the show.
//
// A cue is the parameter of the module's effect Zxx: 0 to 63 choose the current scene or end the
// show, 64 to 255 are events for the current scene. The show, its tools and its tests take the
// values and the names from here. A new scene is one block here and one row of kScenes.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace cues {

// The show's module, relative to the folder that the show is started in.
constexpr const char* kModulePath = "data/olvu.xm";

// Cues below this are the number of a scene, or end the show. After a number that does neither, the
// last frame stays on the screen.
constexpr int kFirstEvent = 64;
constexpr int kEndOfShow = 8;

// How long an event can be seen.
enum class Lasting {
    kHit,    // over in a moment
    kFades,  // dies away within seconds
    kBegins, // lasts until an event of the same name ends it
    kEnds,   // ends it
};
using enum Lasting;

// An event of a scene. Events of the same name belong together: what begins and what ends it, or
// two values for the same thing.
struct Event {
    int value;
    const char* name;
    Lasting lasting;
    const char* words; // what it does
};

struct Scene {
    int number;
    const char* name;
    unsigned colour;               // 0xRRGGBB, of the scene in a drawing of the script
    std::optional<int> startOrder; // where its music starts; none: it cannot be started with
    std::span<const Event> events; // that it reacts to, by value
};

// The opening: a wire figure, kicked.
namespace opening {

enum Value : int { kSpin = 128, kGlide, kSwellAndGlide, kNear, kNearest };

constexpr auto kEvents = std::to_array<Event>({
    {kSpin,          "spin",            kHit, "the figure spins, drawn thick, back at its place"    },
    {kGlide,         "glide",           kHit, "the figure glides toward the viewer, drawn thin"     },
    {kSwellAndGlide, "swell and glide", kHit, "the figure glides toward the viewer, drawn thick"    },
    {kNear,          "near",            kHit, "the figure is brought near; it spins, drawn thick"   },
    {kNearest,       "nearest",         kHit, "the figure is brought nearest; it spins, drawn thick"},
});

} // namespace opening

// The twister: titles come and go.
namespace twister {

enum Value : int {
    kTheAppears = 128,
    kTheGoes,
    kEndAppears,
    kEndGoes,
    kKsoAppears,
    kKsoGoes,
    kByAppears,
    kByGoes,
    kVelmorantAppears,
    kVelmorantGoes,
};

constexpr auto kEvents = std::to_array<Event>({
    {kTheAppears,       "THE",       kBegins, "titles: THE appears; the column jolts"      },
    {kTheGoes,          "THE",       kEnds,   "titles: THE goes; the column jolts"         },
    {kEndAppears,       "END",       kBegins, "titles: END appears; the column jolts"      },
    {kEndGoes,          "END",       kEnds,   "titles: END goes; the column jolts"         },
    {kKsoAppears,       "KSO",       kBegins, "titles: KSO appears; the column jolts"      },
    {kKsoGoes,          "KSO",       kEnds,   "titles: KSO goes; the column jolts"         },
    {kByAppears,        "BY",        kBegins, "titles: BY appears; the column jolts"       },
    {kByGoes,           "BY",        kEnds,   "titles: BY goes; the column jolts"          },
    {kVelmorantAppears, "VELMORANT", kBegins, "titles: VELMORANT appears; the column jolts"},
    {kVelmorantGoes,    "VELMORANT", kEnds,   "titles: VELMORANT goes; the column jolts"   },
});

} // namespace twister

// The image trail: how far its steps go.
namespace image_trail {

enum Value : int { kSmallSteps = 128, kWideSteps, kWidestSteps, kPush };

constexpr auto kEvents = std::to_array<Event>({
    {kSmallSteps,  "small steps",  kHit, "the trail goes on in small steps"      },
    {kWideSteps,   "wide steps",   kHit, "the trail goes on in wide steps"       },
    {kWidestSteps, "widest steps", kHit, "the trail goes on in the widest steps" },
    {kPush,        "push",         kHit, "the background jumps two seconds ahead"},
});

} // namespace image_trail

// Logo and jitter: only the background is moved.
namespace logo_and_jitter {

enum Value : int { kPush = 131 };

constexpr auto kEvents = std::to_array<Event>({
    {kPush, "push", kHit, "the background jumps two seconds ahead"},
});

} // namespace logo_and_jitter

// The wire cubes: pulled back, blown apart.
namespace wire_cubes {

enum Value : int { kPull = 128, kSmallBlow, kLargeBlow, kPullToo };

constexpr auto kEvents = std::to_array<Event>({
    {kPull,      "pull",       kHit, "the cubes are pulled to the viewer, the background flares"},
    {kSmallBlow, "small blow", kHit, "the cubes are blown apart a little"                       },
    {kLargeBlow, "large blow", kHit, "the cubes are blown far apart"                            },
    {kPullToo,   "pull",       kHit, "the cubes are pulled to the viewer, the background flares"},
});

} // namespace wire_cubes

// The tube: greetings, one event each, in the order of their bands in the picture.
namespace tube {

enum Value : int { kFirstGreeting = 128 };

constexpr auto kEvents = std::to_array<Event>({
    {kFirstGreeting,     "the night shift",     kFades, "greetings: THE NIGHT SHIFT lights up"    },
    {kFirstGreeting + 1, "slow readers",        kFades, "greetings: SLOW READERS lights up"       },
    {kFirstGreeting + 2, "bell ringers",        kFades, "greetings: BELL RINGERS lights up"       },
    {kFirstGreeting + 3, "people who hum",      kFades, "greetings: PEOPLE WHO HUM lights up"     },
    {kFirstGreeting + 4, "tunnel diggers",      kFades, "greetings: TUNNEL DIGGERS lights up"     },
    {kFirstGreeting + 5, "late bloomers",       kFades, "greetings: LATE BLOOMERS lights up"      },
    {kFirstGreeting + 6, "menders of radios",   kFades, "greetings: MENDERS OF RADIOS lights up"  },
    {kFirstGreeting + 7, "friends of old dogs", kFades, "greetings: FRIENDS OF OLD DOGS lights up"},
    {kFirstGreeting + 8, "the last to leave",   kFades, "greetings: THE LAST TO LEAVE lights up"  },
    {kFirstGreeting + 9, "all who stay awake",  kFades, "greetings: ALL WHO STAY AWAKE lights up" },
});

} // namespace tube

// Scene numbers, in the order of kScenes.
enum Number : int {
    kOpening,
    kTwister,
    kImageTrail,
    kLogoAndJitter,
    kWireCubes,
    kTube,
    kClosing,
    kEmpty,
};

// Colours go from cold to warm. The show plays from its beginning unless it is told to start with a
// scene that has a start order. The empty scene is black.
constexpr auto kScenes = std::to_array<Scene>({
    {kOpening,       "opening",         0x8CCBFF, {}, opening::kEvents        },
    {kTwister,       "twister",         0x4FB3A6, 3,  twister::kEvents        },
    {kImageTrail,    "image trail",     0xB585DD, 6,  image_trail::kEvents    },
    {kLogoAndJitter, "logo and jitter", 0xCFA266, 10, logo_and_jitter::kEvents},
    {kWireCubes,     "wire cubes",      0xD63A5B, 13, wire_cubes::kEvents     },
    {kTube,          "tube",            0xF59A23, 18, tube::kEvents           },
    {kClosing,       "closing",         0xFF5F33, 26, {}                      },
    {kEmpty,         "black",           0x55555C, {}, {}                      },
});

// One more than the largest scene number.
constexpr std::size_t kSceneNumbers = [] {
    int largest = 0;
    for (const Scene& scene : kScenes) {
        largest = scene.number > largest ? scene.number : largest;
    }
    return static_cast<std::size_t>(largest) + 1;
}();

constexpr bool isEvent(int cue)
{
    return cue >= kFirstEvent;
}

// Null if no scene has this number.
constexpr const Scene* sceneOf(int number)
{
    for (const Scene& scene : kScenes) {
        if (scene.number == number) {
            return &scene;
        }
    }
    return nullptr;
}

// Null if there is no such scene or if it does not react to this value.
constexpr const Event* eventOf(int sceneNumber, int value)
{
    if (const Scene* const scene = sceneOf(sceneNumber); scene != nullptr) {
        for (const Event& event : scene->events) {
            if (event.value == value) {
                return &event;
            }
        }
    }
    return nullptr;
}

// Where the music starts for a scene of the command line, which counts scenes from 1. None: at the
// module's beginning.
constexpr std::optional<int> startOrderOf(int startScene)
{
    const Scene* const scene = sceneOf(startScene - 1);
    return scene != nullptr ? scene->startOrder : std::nullopt;
}

} // namespace cues
