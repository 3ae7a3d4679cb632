// The page's choice of an output, in place of sound/output.cpp: one that the page pulls. Without a
// sound device it is pulled all the same, and what it mixes is dropped.
#include "sound/ahead_output.h"
#include "sound/output.h"
#include "web/page_world.h"

std::unique_ptr<Output> openOutput(Mixer& mixer, bool /*silently*/)
{
    auto output = std::make_unique<AheadOutput>(mixer);
    pageWorld.output = output.get();
    return output;
}
