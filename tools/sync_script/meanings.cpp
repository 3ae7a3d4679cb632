#include "tools/sync_script/meanings.h"

#include <array>
#include <cstdio>

const cues::Event* meaningOf(const PlayedCue& cue)
{
    return cues::eventOf(cue.scene, cue.value);
}

const char* sceneName(int scene)
{
    const cues::Scene* const found = cues::sceneOf(scene);
    if (found != nullptr) {
        return found->name;
    }
    return scene == cues::kEndOfShow ? "-" : "freeze";
}

bool isPictured(int scene)
{
    return cues::sceneOf(scene) != nullptr && scene != cues::kEmpty;
}

std::string inWords(const PlayedCue& cue)
{
    if (cues::sceneOf(cue.value) != nullptr) {
        return "selects scene " + std::to_string(cue.value) + ", " + sceneName(cue.value);
    }
    if (cue.value == cues::kEndOfShow) {
        return "the show ends";
    }
    if (!cues::isEvent(cue.value)) {
        return "no scene: the picture freezes";
    }
    const cues::Event* const meaning = meaningOf(cue);
    return meaning == nullptr ? "nothing here" : meaning->words;
}

std::string asEffect(int value)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "Z%02X", static_cast<unsigned>(value));
    return text.data();
}
