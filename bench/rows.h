// The benchmarks as rows of forms: the same work done by the show's code, by a plain form of it and
// by other libraries, timed alternately in one run.
#pragma once

#include <functional>
#include <string>

// Adds a form of a row, `kso` for the show's own. One call of `work` is one frame's worth.
void addForm(const std::string& row, const std::string& form, std::function<void()> work);

// Ends the run with a message unless the forms came to the same result.
void requireSame(bool same, const char* row);

// Each effect's file adds its rows.
void addBitmapRows();
void addEffectRows();
void addLineSetRows();
void addPictureRows();
