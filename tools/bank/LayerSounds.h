// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a layer for its instrument: which one, bank and program, its own parameters, Easy mappings.
#pragma once

#include "SoundWriter.h"

namespace quorel::bank
{

/** Loads the instruments of all layers, and waits for them. */
void loadInstruments(SoundWriter& sound, const std::vector<TextSection>& text);

/** Chooses program, parameters and Easy mappings of a layer's instrument. */
void chooseSounds(SoundWriter& sound, int layer, const TextSection& section);

/** True for a line that the two above take. */
bool isSoundLine(const TextLine& line);

} // namespace quorel::bank
