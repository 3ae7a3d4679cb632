// Turns a score into a module's patterns: fills in what the cells leave to their channels, writes
// the echoes, and puts every note where its channel sits.
#pragma once

#include "art/music/score/score.h"
#include "art/music/xm.h"

// The module without its instruments. The orders are walked in the order of playing, so an echo
// rings on into the pattern that follows; orders that come out the same share a pattern.
//
// A channel's panning goes into the effect column of each note or, if that is taken, into its
// volume column. If both are taken, the note sounds from the middle.
//
// A pattern that swings has a speed in each row, in the first effect column that is free.
//
// Throws ScoreError for a row of such a pattern in which no effect column is free.
XmModule arrange(const Score& score);

// Throws ScoreError for a note whose instrument the score does not name.
void checkPlayers(const Score& score);
