// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Candidate.h"

#include <memory>
#include <string>

namespace quorel::peers
{
/** JUCE's own effects: "Reverb", "Chorus", "Chorus as flanger", "Phaser", "Compressor", "NoiseGate",
    "LadderFilter", "LadderFilter pair", "StateVariableTPTFilter", "IIR peaks" (three). Null for any other
    name. */
std::unique_ptr<Candidate> makeJucePeer(const std::string& name, int blockLength);
} // namespace quorel::peers
