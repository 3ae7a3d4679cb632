// Watches the show's player, to measure how long after the sound the picture comes: a row's events
// are known as soon as its first samples have been mixed, and are seen when the next frame that
// begins is shown.
//
// It stands in the place of one function of libopenmpt, which the show's mixer calls after each
// piece that it mixes.
#pragma once

#include "stage/durations.h"

// From now on rows are noticed, on whichever thread mixes them.
void watchRows();

// A frame begins; it has the events of all rows that have been noticed. To be called on the main
// thread, as the next one.
void frameBegins();
// That frame is shown: adds to `delays` how long each of its rows took to be seen.
void frameIsShown(Durations& delays);
