// SDL 1.2 as far as the show's display and clock call it, in a page: there, the page's own frame
// loop says what time it is and shows what was drawn.
#pragma once

#include <stdint.h> // NOLINT(modernize-deprecated-headers): a C header

// Names, types and values are SDL's own.
// NOLINTBEGIN(modernize-use-using)
#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t Uint8;
typedef uint32_t Uint32;

typedef struct SDL_Surface SDL_Surface;
typedef enum { SDL_GL_DOUBLEBUFFER = 5 } SDL_GLattr;

#define SDL_INIT_VIDEO 0x00000020
#define SDL_OPENGL 0x00000002
#define SDL_FULLSCREEN 0x80000000U

// These succeed and do nothing: the page has made its canvas. The surface has no pixels.
int SDL_Init(Uint32 flags);
void SDL_Quit(void);
int SDL_GL_SetAttribute(SDL_GLattr attribute, int value);
SDL_Surface* SDL_SetVideoMode(int width, int height, int bitsPerPixel, Uint32 flags);
int SDL_ShowCursor(int toggle);

// No driver has a name here: null.
char* SDL_VideoDriverName(char* name, int size);

// Ends the frame's list; the page draws it.
void SDL_GL_SwapBuffers(void);

// The moment of this frame, in milliseconds.
Uint32 SDL_GetTicks(void);

#ifdef __cplusplus
}
#endif
// NOLINTEND(modernize-use-using)
