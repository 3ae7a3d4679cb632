// The band: one function for each instrument, by families.
#pragma once

#include "art/music/xm.h"

#include <string>

// Drums, played at C-4.
XmInstrument makeHeart();
XmInstrument makeKick();
XmInstrument makeHardKick();
XmInstrument makeSnare();
XmInstrument makeGhost();
XmInstrument makeHardSnare();
XmInstrument makeHardSnareLeft();
XmInstrument makeClap();
XmInstrument makeRim();
XmInstrument makeHat();
XmInstrument makeHatTip();
XmInstrument makeOpenHat();
XmInstrument makeRide();
XmInstrument makeShaker();
XmInstrument makeTick();
XmInstrument makeTom();

// Basses.
XmInstrument makeSub();
XmInstrument makeRoundBass();
XmInstrument makeGrowl();

// Struck and plucked.
XmInstrument makeBell();
XmInstrument makePluck();
XmInstrument makeSkank();
XmInstrument makeBrass();

// Sustained.
XmInstrument makeDrone();
XmInstrument makePad();
XmInstrument makeChoir();
XmInstrument makeStrings();
XmInstrument makeLead();
XmInstrument makeTouch();
XmInstrument makeFlute();
XmInstrument makeWind();

// Events, played at C-4.
XmInstrument makeCrash();
XmInstrument makeRiser();
XmInstrument makeReverse();
XmInstrument makeBoom();
XmInstrument makeSparks();

// The instrument of that name, as scores write it ("open-hat"). Throws std::invalid_argument if
// there is no such instrument.
XmInstrument makeInstrumentByName(const std::string& name);
