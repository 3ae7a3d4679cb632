// What the recorder tells the capture library, through environment variables.
#pragma once

namespace setting {

constexpr const char* kPipe = "CAPTURE_PIPE";   // file descriptor for the packets
constexpr const char* kRate = "CAPTURE_RATE";   // frames/seconds, "60000/1001"
constexpr const char* kSize = "CAPTURE_SIZE";   // WIDTHxHEIGHT of the pictures
constexpr const char* kFrom = "CAPTURE_FROM";   // the first frame to send
constexpr const char* kSound = "CAPTURE_SOUND"; // "yes": its sound too, and that of all after it
constexpr const char* kTo = "CAPTURE_TO";       // the show is closed before this frame; "" never
constexpr const char* kClose = "CAPTURE_CLOSE"; // by an event of this type, for tests; "" SDL_QUIT
constexpr const char* kWanted = "CAPTURE_WANTED"; // "all" pictures, or frames in order: "30,744"
constexpr const char* kTurn = "CAPTURE_TURN";   // "1/4": of them only the frames 1, 5, 9...; "" all
constexpr const char* kDrawn = "CAPTURE_DRAWN"; // frames to draw besides, in the same way

} // namespace setting
