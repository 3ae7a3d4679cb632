#pragma once

#include "scenes/part.h"

// Scene 7, the empty one: black frames. Events do nothing.
class Tyhjapart : public Part {
public:
    void syncEvent(int value) override;
    void drawFrame(float seconds) override;
};
