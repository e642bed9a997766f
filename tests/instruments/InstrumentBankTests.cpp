// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstrumentTestTools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

namespace quorel::test
{

static std::vector<float> liveValues(RawVst2Host& host, const StarterInstrument& info)
{
    std::vector<float> values;
    for (int live = 0; live < numLiveParameters; ++live)
        values.push_back(host.parameter(hostParameterOf(info, live)));
    return values;
}

/** Sorted names, without extension, of a folder's entries with this extension ("" for sub-folders). */
static std::vector<std::string> stemsIn(const fs::path& folder, const std::string& extension)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
    {
        if (entry.path().extension() == extension)
            names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class InstrumentBanks : public testing::TestWithParam<StarterInstrument>
{
protected:
    const StarterInstrument& info = GetParam();
};

TEST_P(InstrumentBanks, presents_itself_by_the_conventions)
{
    TemporaryBanks none(false);
    RawVst2Host host(binaryOf(info.name));
    EXPECT_EQ(host.text(effGetEffectName), info.name);
    EXPECT_EQ(host.text(effGetVendorString), "Ostrand");
    EXPECT_EQ(host.effect().numPrograms, info.programsByMidi ? 1 : 8);

    // Each Easy number is a parameter of its own with a name and a text; it can be set and read back.
    std::set<std::string> names;
    for (const int index : info.easyMapping)
    {
        names.insert(host.text(effGetParamName, index));
        EXPECT_FALSE(host.text(effGetParamDisplay, index).empty()) << index;
        EXPECT_LT(host.text(effGetParamDisplay, index).size(), 8u) << index;
        host.setParameter(index, 0.375f);
        EXPECT_EQ(host.parameter(index), 0.375f);
    }
    EXPECT_EQ(names.size(), 12u);
    EXPECT_EQ(names.count(""), 0u);

    // The bank name is there without any bank folder, and can't be written.
    const auto bank = bankNameOf(host, info);
    EXPECT_FALSE(bank.empty());
    host.setParameter(info.firstBankNameParameter, 0.9f);
    EXPECT_EQ(bankNameOf(host, info), bank);
    EXPECT_EQ(host.text(effGetParamName, info.parametersPerProgram - 1), "");
}

TEST_P(InstrumentBanks, changes_banks_and_programs_by_midi)
{
    TemporaryBanks banks(true);
    RawVst2Host host(binaryOf(info.name));
    const auto folder = banks.folder(info.name);
    auto menu = stemsIn(folder, info.programsByMidi ? "" : ".fxb");
    ASSERT_GE(menu.size(), 2u);
    if (info.programsByMidi)
        menu[0] = "Root Folder";
    std::set<std::string> seen;
    for (std::size_t bank = 0; bank < menu.size(); ++bank)
    {
        host.render(64, {controller(10, 32, static_cast<int>(bank))});
        EXPECT_EQ(bankNameOf(host, info), menu[bank]);
        for (int program = 0; program < 8; ++program)
        {
            host.render(64, {programChange(0, program)});
            const auto name = host.programName(info.programsByMidi ? 0 : program);
            if (info.programsByMidi)
            {
                EXPECT_EQ(name, stemsIn(bank == 0 ? folder : folder / menu[bank], ".fxp")
                                    .at(static_cast<std::size_t>(program)));
            }
            else
            {
                EXPECT_EQ(host.dispatch(effGetProgram), program);
            }
            EXPECT_EQ(host.text(effGetProgramName), name);
            seen.insert(name);
        }
    }
    EXPECT_EQ(seen.size(), 8 * menu.size());
    EXPECT_GT(host.displayUpdates, 0);

    // A number past the menu's end changes nothing.
    const auto before = liveValues(host, info);
    host.render(64, {controller(0, 32, 100), programChange(1, info.programsByMidi ? 120 : 99)});
    EXPECT_EQ(bankNameOf(host, info), menu.back());
    EXPECT_EQ(liveValues(host, info), before);
}

TEST_P(InstrumentBanks, state_comes_back_whole_after_the_banks_are_gone)
{
    std::vector<std::uint8_t> chunk, programChunk;
    std::vector<float> values;
    std::vector<std::string> names;
    std::string bank;
    {
        TemporaryBanks banks(true);
        RawVst2Host host(binaryOf(info.name));
        const auto size = host.chunk().size();
        host.render(64, {controller(0, 32, 1), programChange(1, 5)});
        host.setParameter(info.easyMapping[3], 0.123f);
        host.setParameter(402, 0.321f);
        char renamed[] = "My own sound";
        host.dispatch(effSetProgramName, 0, 0, renamed);
        chunk = host.chunk();
        programChunk = host.chunk(true);
        EXPECT_EQ(chunk.size(), size);
        EXPECT_GT(size, 0u);
        values = liveValues(host, info);
        bank = bankNameOf(host, info);
        for (int i = 0; i < host.effect().numPrograms; ++i)
            names.push_back(host.programName(i));
    }
    TemporaryBanks none(false);
    RawVst2Host host(binaryOf(info.name)), other(binaryOf(info.name));
    const auto untouched = liveValues(other, info);
    ASSERT_TRUE(host.setChunk(chunk));
    EXPECT_EQ(liveValues(host, info), values);
    EXPECT_EQ(bankNameOf(host, info), bank);
    EXPECT_EQ(host.dispatch(effGetProgram), info.programsByMidi ? 0 : 5);
    for (int i = 0; i < host.effect().numPrograms; ++i)
        EXPECT_EQ(host.programName(i), names[static_cast<std::size_t>(i)]);
    EXPECT_EQ(host.chunk(), chunk);

    // A second instance keeps its own sound, and takes the program alone where it stands.
    EXPECT_EQ(liveValues(other, info), untouched);
    ASSERT_TRUE(other.setChunk(programChunk, true));
    EXPECT_EQ(liveValues(other, info), values);
    EXPECT_EQ(other.text(effGetProgramName), "My own sound");
    EXPECT_NE(bankNameOf(other, info), bank);
}

TEST_P(InstrumentBanks, refuses_damaged_state)
{
    TemporaryBanks none(false);
    RawVst2Host host(binaryOf(info.name));
    for (const bool programOnly : {false, true})
    {
        host.setParameter(info.easyMapping[0], 0.25f);
        const auto good = host.chunk(programOnly);
        host.setParameter(info.easyMapping[0], 0.75f);
        const auto before = host.chunk();
        for (std::size_t i = 0; i < good.size(); ++i)
        {
            auto flipped = good;
            flipped[i] = static_cast<std::uint8_t>(flipped[i] ^ (1u << (i % 8)));
            EXPECT_FALSE(host.setChunk(flipped, programOnly)) << i;
            EXPECT_FALSE(
                host.setChunk({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(i)}, programOnly));
        }
        auto longer = good;
        longer.push_back(0);
        EXPECT_FALSE(host.setChunk(longer, programOnly));
        EXPECT_FALSE(host.setChunk(good, !programOnly));
        RawVst2Host stranger(binaryOf(info.name == std::string("Hexley") ? "Hexley-Mini" : "Hexley"));
        EXPECT_FALSE(host.setChunk(stranger.chunk(programOnly), programOnly));
        EXPECT_EQ(host.chunk(), before);
        EXPECT_TRUE(host.setChunk(good, programOnly));
        EXPECT_EQ(host.parameter(info.easyMapping[0]), 0.25f);
    }
}

INSTANTIATE_TEST_SUITE_P(All, InstrumentBanks, testing::ValuesIn(starterInstruments()), testName);

TEST(InstrumentFiles, damaged_ones_keep_their_number_and_the_old_sound)
{
    TemporaryBanks banks(true);
    const auto& lists = instrumentFor("Orlen");
    const auto& folders = instrumentFor("Fenn2");
    const auto bank = banks.folder("Orlen") / "Motion.fxb";
    fs::resize_file(bank, fs::file_size(bank) - 1);
    const auto programs = stemsIn(banks.folder("Fenn2") / "Rotor", ".fxp");
    std::ofstream(banks.folder("Fenn2") / "Rotor" / (programs[2] + ".fxp"), std::ios::trunc) << "CcnK";
    // Another instrument's files are no better.
    fs::copy_file(banks.folder("Tarn") / "Low End.fxb", banks.folder("Orlen") / "Alien.fxb");

    RawVst2Host orlen(binaryOf("Orlen"));
    const auto before = orlen.chunk();
    orlen.render(64, {controller(0, 32, 2)});
    orlen.render(64, {controller(0, 32, 0)});
    EXPECT_EQ(orlen.chunk(), before);
    orlen.render(64, {controller(0, 32, 1)});
    EXPECT_EQ(bankNameOf(orlen, lists), "Foundation");

    RawVst2Host fenn(binaryOf("Fenn2"));
    fenn.render(64, {controller(0, 32, 1), programChange(1, 1), programChange(2, 2)});
    EXPECT_EQ(bankNameOf(fenn, folders), "Rotor");
    EXPECT_EQ(fenn.programName(0), programs[1]);
    fenn.render(64, {programChange(0, 3)});
    EXPECT_EQ(fenn.programName(0), programs[3]);
}

TEST(InstrumentFiles, programs_of_plain_parameters_are_read)
{
    TemporaryBanks banks(true);
    const auto& info = instrumentFor("Glasson2");
    RawVst2Host first(binaryOf("Glasson2"));
    std::string file;
    const auto word = [&](std::uint32_t x)
    {
        for (int shift = 24; shift >= 0; shift -= 8)
            file += static_cast<char>(x >> shift);
    };
    file += "CcnK";
    word(0);
    file += "FxCk";
    word(1);
    word(static_cast<std::uint32_t>(first.effect().uniqueID));
    word(1);
    word(1024);
    file += std::string(28, 'x');
    for (int i = 0; i < 1024; ++i)
    {
        const float value = i == info.easyMapping[4] ? 0.8125f : 0.5f;
        std::uint32_t bits;
        std::memcpy(&bits, &value, 4);
        word(bits);
    }
    std::ofstream(banks.folder("Glasson2") / "Bowed Glass" / "0 Plain.fxp", std::ios::binary) << file;

    // The default bank is the folder of the factory bank's name, where the file now sorts first.
    RawVst2Host host(binaryOf("Glasson2"));
    EXPECT_EQ(host.programName(0), "0 Plain");
    EXPECT_EQ(host.parameter(info.easyMapping[4]), 0.8125f);
    EXPECT_EQ(host.parameter(info.easyMapping[5]), 0.5f);
}

TEST(InstrumentFiles, an_unknown_name_plays_the_first_voice_under_its_own)
{
    TemporaryBanks banks(true);
    const auto copy = banks.folder("Orlen") / (std::string("Stranger") + OSTRAND_SUFFIX);
    fs::copy_file(binaryOf("Orlen"), copy);
    RawVst2Host host(copy.string()), orlen(binaryOf("Orlen"));
    EXPECT_EQ(host.text(effGetEffectName), "Stranger");
    EXPECT_NE(host.effect().uniqueID, orlen.effect().uniqueID);
    EXPECT_EQ(host.effect().numParams, orlen.effect().numParams);
    EXPECT_EQ(host.render(4000, {noteOn(0, 60)}).left, orlen.render(4000, {noteOn(0, 60)}).left);
    EXPECT_FALSE(host.setChunk(orlen.chunk()));
}

TEST(InstrumentFiles, unique_ids_differ)
{
    std::set<std::int32_t> ids;
    for (const auto& info : starterInstruments())
        ids.insert(uniqueIdOf(info.name));
    EXPECT_EQ(ids.size(), starterInstruments().size());
}

} // namespace quorel::test
