// SPDX-License-Identifier: GPL-3.0-or-later
// What the audio thread may not do, seen from inside: the instrument's code is linked here without its shell.
#include "Instrument.h"
#include "InstrumentTestTools.h"
#include "support/AllocationGuard.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quorel::test
{

class InstrumentThreads : public testing::TestWithParam<StarterInstrument>
{
protected:
    void play(int blocks, int eventsPerBlock)
    {
        unsigned seed = 1;
        for (int block = 0; block < blocks; ++block)
        {
            for (int i = 0; i < eventsPerBlock; ++i)
            {
                seed = seed * 1103515245u + 12345u;
                const auto value = static_cast<unsigned char>((seed >> 16) & 0x7f);
                const unsigned char messages[][3] = {{0x90, value, 100}, {0x80, value, 0},  {0xb0, 32, value},
                                                     {0xb0, 32, 1},      {0xc0, value, 0},  {0xe0, 0, value},
                                                     {0xb0, 64, value},  {0xb0, value, 127}};
                instrument.queueMidi(static_cast<int>(seed >> 24), messages[(seed >> 8) % 8]);
            }
            instrument.process(left.data(), right.data(), 256, block % 2 == 1);
        }
    }

    TemporaryBanks banks{true};
    Instrument instrument{GetParam().name};
    std::vector<float> left = std::vector<float>(256), right = left;
};

TEST_P(InstrumentThreads, playing_allocates_nothing)
{
    instrument.open();
    instrument.prepare(48000.0);
    const AllocationGuard guard;
    play(20, 30);
    play(1, 5000); // more than are ever queued at once
    EXPECT_EQ(guard.heapCalls(), 0);
}

TEST_P(InstrumentThreads, state_can_be_read_and_set_while_playing)
{
    // Programs and banks are the same code for all: one name with a list and one with files will do.
    if (GetParam().name != std::string("Orlen") && GetParam().name != std::string("Fenn2"))
        return;
    instrument.open();
    instrument.prepare(48000.0);
    const auto whole = instrument.state(false);
    const auto one = instrument.state(true);
    std::atomic<bool> done{false};
    std::thread audio(
        [&]
        {
            play(60, 10);
            done = true;
        });
    int rounds = 0;
    while (!done || rounds < 10)
    {
        instrument.setParameter(GetParam().easyMapping[2], static_cast<float>(rounds % 10) * 0.1f);
        instrument.selectProgram(rounds % 8);
        EXPECT_EQ(instrument.state(false).size(), whole.size());
        EXPECT_LE(instrument.programName(0).size(), programNameSize);
        EXPECT_TRUE(instrument.setState(whole.data(), whole.size(), false));
        EXPECT_TRUE(instrument.setState(one.data(), one.size(), true));
        ++rounds;
    }
    audio.join();
    EXPECT_TRUE(instrument.setState(whole.data(), whole.size(), false));
    EXPECT_EQ(instrument.state(false), whole);
}

INSTANTIATE_TEST_SUITE_P(All, InstrumentThreads, testing::ValuesIn(starterInstruments()), testName);

} // namespace quorel::test
