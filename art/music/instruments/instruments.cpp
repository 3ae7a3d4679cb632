#include "art/music/instruments/instruments.h"

#include <array>
#include <stdexcept>
#include <string_view>

namespace {

struct Player {
    std::string_view name;
    XmInstrument (*make)();
};

constexpr std::array kPlayers = {
    Player{"heart",           makeHeart        },
    Player{"kick",            makeKick         },
    Player{"hard-kick",       makeHardKick     },
    Player{"snare",           makeSnare        },
    Player{"hard-snare",      makeHardSnare    },
    Player{"ghost",           makeGhost        },
    Player{"hard-snare-left", makeHardSnareLeft},
    Player{"clap",            makeClap         },
    Player{"rim",             makeRim          },
    Player{"hat",             makeHat          },
    Player{"open-hat",        makeOpenHat      },
    Player{"hat-tip",         makeHatTip       },
    Player{"ride",            makeRide         },
    Player{"shaker",          makeShaker       },
    Player{"tick",            makeTick         },
    Player{"tom",             makeTom          },
    Player{"sub",             makeSub          },
    Player{"round-bass",      makeRoundBass    },
    Player{"growl",           makeGrowl        },
    Player{"bell",            makeBell         },
    Player{"pluck",           makePluck        },
    Player{"skank",           makeSkank        },
    Player{"brass",           makeBrass        },
    Player{"drone",           makeDrone        },
    Player{"pad",             makePad          },
    Player{"choir",           makeChoir        },
    Player{"strings",         makeStrings      },
    Player{"lead",            makeLead         },
    Player{"touch",           makeTouch        },
    Player{"flute",           makeFlute        },
    Player{"wind",            makeWind         },
    Player{"crash",           makeCrash        },
    Player{"riser",           makeRiser        },
    Player{"reverse",         makeReverse      },
    Player{"boom",            makeBoom         },
    Player{"sparks",          makeSparks       },
    Player{"second-hat",      makeSecondHat    },
    Player{"second-shaker",   makeSecondShaker },
    Player{"drive-bass",      makeDriveBass    },
    Player{"pluck-far",       makePluckFar     },
    Player{"skank-far",       makeSkankFar     },
    Player{"brass-far",       makeBrassFar     },
    Player{"bark",            makeBark         },
    Player{"bark-far",        makeBarkFar      },
    Player{"second-pad",      makeSecondPad    },
    Player{"second-choir",    makeSecondChoir  },
    Player{"second-strings",  makeSecondStrings},
    Player{"lead-far",        makeLeadFar      },
    Player{"second-wind",     makeSecondWind   },
    Player{"second-crash",    makeSecondCrash  },
    Player{"metal",           makeMetal        },
    Player{"second-sparks",   makeSecondSparks },
    Player{"blink",           makeBlink        },
};

} // namespace

XmInstrument makeInstrumentByName(const std::string& name)
{
    for (const Player& player : kPlayers) {
        if (player.name == name) {
            return player.make();
        }
    }
    throw std::invalid_argument("no instrument is called \"" + name + "\"");
}
