// Makes the program's music cheap while nobody wants to hear it: libopenmpt then takes the nearest
// sample of an instrument instead of filtering many, in a quarter of the time. The filter remembers
// nothing, so the music goes on as it would have, and what is heard later is the same.
//
// When this is loaded before libopenmpt, it takes the place of the function that renders.
#pragma once

// From now on, until it is called again.
void skipSound(bool isSkipped);
