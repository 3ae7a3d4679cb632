#pragma once

#include <string>

// Shows a text until the user has read it. False where nothing can show it.
bool showMessage(const std::string& text);
