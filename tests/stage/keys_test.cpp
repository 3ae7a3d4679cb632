#include "stage/keys.h"

#include <gtest/gtest.h>

// A sample of each kind: it is easy to let a viewer's Alt key end the show.
TEST(Keys, EndTheShowUnlessTheyArePressedForSomethingElse)
{
    for (const SDL_Scancode key :
         {SDL_SCANCODE_ESCAPE, SDL_SCANCODE_RETURN, SDL_SCANCODE_SPACE, SDL_SCANCODE_A,
          SDL_SCANCODE_F12, SDL_SCANCODE_KP_0, SDL_SCANCODE_LEFT, SDL_SCANCODE_TAB,
          SDL_SCANCODE_PAUSE, SDL_SCANCODE_NONUSBACKSLASH}) {
        EXPECT_TRUE(isForTheShow(key)) << key;
    }
    for (const SDL_Scancode key :
         {SDL_SCANCODE_LSHIFT, SDL_SCANCODE_RALT, SDL_SCANCODE_LGUI, SDL_SCANCODE_CAPSLOCK,
          SDL_SCANCODE_PRINTSCREEN, SDL_SCANCODE_VOLUMEUP, SDL_SCANCODE_AUDIOMUTE,
          SDL_SCANCODE_BRIGHTNESSDOWN, SDL_SCANCODE_UNKNOWN}) {
        EXPECT_FALSE(isForTheShow(key)) << key;
    }
}
