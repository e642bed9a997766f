// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RawVst2Host.h"
#include "StarterInstruments.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace quorel::test
{

/** The built binary of a name. */
std::string binaryOf(const std::string& name);

/** An instrument's name as a test's. */
std::string testName(const testing::TestParamInfo<StarterInstrument>& info);

/** The name that the bank-name parameters spell, read the way the family's hosts do. */
std::string bankNameOf(RawVst2Host& host, const StarterInstrument& info);

MidiEvent noteOn(int sample, int note, int velocity = 100);
MidiEvent noteOff(int sample, int note);
MidiEvent controller(int sample, int number, int value);
MidiEvent programChange(int sample, int program);

float peakOf(const StereoBuffer& audio, int from = 0, int to = -1);

/** Settings and factory banks in a folder of their own (with an awkward name), gone with the object. */
class TemporaryBanks
{
public:
    /** Without banks the settings are empty, so that the user's own don't come in. */
    explicit TemporaryBanks(bool withBanks);
    ~TemporaryBanks();

    std::filesystem::path folder(const std::string& name) const { return banks / name; }

private:
    std::filesystem::path root;
    std::filesystem::path banks;
};

} // namespace quorel::test
