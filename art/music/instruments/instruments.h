// The band: one function for each instrument, by families.
//
// A second player of an instrument differs from the first in all that is left to chance, so that
// the two, left and right, are wide. What is far is the instrument as an echo has it: duller.
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
XmInstrument makeSecondHat();
XmInstrument makeHatTip();
XmInstrument makeOpenHat();
XmInstrument makeRide();
XmInstrument makeShaker();
XmInstrument makeSecondShaker();
XmInstrument makeTick();
XmInstrument makeTom();

// Basses.
XmInstrument makeSub();
XmInstrument makeRoundBass();
XmInstrument makeGrowl();
XmInstrument makeDriveBass();

// Struck and plucked.
XmInstrument makeBell();
XmInstrument makePluck();
XmInstrument makePluckFar();
XmInstrument makeSkank();
XmInstrument makeSkankFar();
XmInstrument makeBrass();
XmInstrument makeBrassFar();
XmInstrument makeBark();
XmInstrument makeBarkFar();

// Sustained.
XmInstrument makeDrone();
XmInstrument makePad();
XmInstrument makeSecondPad();
XmInstrument makeChoir();
XmInstrument makeSecondChoir();
XmInstrument makeStrings();
XmInstrument makeSecondStrings();
XmInstrument makeLead();
XmInstrument makeLeadFar();
XmInstrument makeTouch();
XmInstrument makeFlute();
XmInstrument makeWind();
XmInstrument makeSecondWind();

// Events, played at C-4.
XmInstrument makeCrash();
XmInstrument makeSecondCrash();
XmInstrument makeMetal();
XmInstrument makeRiser();
XmInstrument makeReverse();
XmInstrument makeBoom();
XmInstrument makeSparks();
XmInstrument makeSecondSparks();
XmInstrument makeBlink();

// The instrument of that name, as scores write it ("open-hat"). Throws std::invalid_argument if
// there is no such instrument.
XmInstrument makeInstrumentByName(const std::string& name);
