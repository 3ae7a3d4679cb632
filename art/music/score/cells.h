// A cell as it is written, and what blocks do with it.
#pragma once

#include "art/music/score/score.h"

#include <string>

// Puts a cell's text over what is there.
void putCell(const std::string& text, ScoreCell& cell);

// Puts a cell over another one, column by column: what it leaves out stays as it is, but a note or
// a release takes the covered note's instrument and volume away.
void overlay(ScoreCell& below, const ScoreCell& above);

bool isEmpty(const ScoreCell& cell);

ScoreCell transposed(ScoreCell cell, int semitones);

// Multiplies the cell's volume; a note that sets no volume plays at 64.
ScoreCell softened(ScoreCell cell, int percent);
