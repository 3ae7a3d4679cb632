// What becomes of a show in the virtual world: a film, or a log of its calls.
//
// A library that takes SDL's place derives its own and gives it to the world
// (virtual/virtual_world.h). All operations are called on the program's main thread, from within
// the call of the program that they are about, and in the order in which these come. What is left
// as it is here does nothing.
#pragma once

#include <cstdint>
#include <span>
#include <string>

class Sink {
public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    // The program calls SDL or time(): the call's name, then its arguments, before it has any
    // effect. SDL_GetTicks and SDL_PollEvent are left out, since they only move the world on, and
    // so is SDL_VideoDriverName, which changes nothing. False makes the call fail, if it is one
    // that can.
    virtual bool call(const std::string& /*words*/) { return true; }

    // The program opens its window, in pixels. False makes that fail.
    virtual bool openWindow(int /*width*/, int /*height*/) { return true; }

    // What OpenGL has drawn is the picture of `frame`. This comes once a frame, in order: with the
    // pass's first swap, or when a pass swaps nothing and leaves the picture before it on screen,
    // with the next look at the clock. So a pass in which the program ends without a swap is no
    // frame.
    virtual void picture(std::uint64_t /*frame*/) {}

    // The program was heard: left and right in turn, from the sample `first` on, counted from the
    // first frame's. Each look at the clock brings the samples up to the frame's own, so sound runs
    // one sample ahead of its frame. Sample 0 comes with every look until the first frame is over;
    // the last one counts, and what came before it is forgotten.
    virtual void sound(std::uint64_t /*first*/, std::span<const std::int16_t> /*samples*/) {}

    // A pass of the main loop is over.
    virtual void passEnds(std::uint64_t /*frame*/) {}
};
