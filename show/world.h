#pragma once

// Fills the objects that the scenes share, builds the eight scenes into the scene table and starts
// the demo clock. Once, after the display and the music are up; all pictures are read here.
void buildWorld();
