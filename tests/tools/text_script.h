// Scripts of modules that are written as text.
#pragma once

#include "art/music/xm.h"
#include "tools/sync_script/script.h"

#include <string>

// The path of a temporary file that no other test has; the test that makes the file removes it.
std::string pathFor(const std::string& ending);

// What a module with these patterns tells the picture; tests/support/test_module.h says how they
// are written.
Script scriptOf(const std::string& patterns);

// What this module tells the picture.
Script scriptOf(const XmModule& module);
