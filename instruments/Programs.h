// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StarterInstruments.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace quorel
{

constexpr std::size_t programNameSize = 24; ///< bytes, zero-padded, not terminated when full
constexpr std::size_t bankNameSize = 40;    ///< bytes; the host sees the first 38

/** One sound: a name in UTF-8 and the live parameters, 0..1 each. */
struct Program
{
    std::array<char, programNameSize> name{};
    std::array<float, numLiveParameters> values{};
    bool usable = true; ///< false for a damaged file, which keeps its number but can't be chosen
};

using BankName = std::array<char, bankNameSize>;

/** Copies as much as fits without cutting a UTF-8 character. */
void setText(char* target, std::size_t size, const std::string& text);
std::string getText(const char* text, std::size_t size);

/** Everything that a state chunk holds. */
struct InstrumentState
{
    int currentProgram = 0;
    BankName bankName{};
    std::vector<Program> programs;
};

/** The sounds that ship with an instrument: two banks of eight. */
struct FactoryBank
{
    std::string name;
    std::vector<Program> programs;
};

const std::vector<FactoryBank>& factoryBanks(const StarterInstrument& info);

/** The programs in use, shared by the audio and the message thread without a lock: every word is atomic. A
    reader may see half of a program change, which the next block puts right. */
class ProgramStore
{
public:
    explicit ProgramStore(int programCount);

    int size() const { return numPrograms; }

    int current() const { return currentIndex.load(std::memory_order_relaxed); }

    void setCurrent(int index);

    float value(int live) const;
    void setValue(int live, float normalised);
    std::array<float, numLiveParameters> values() const;

    std::string programName(int index) const;
    void setProgramName(int index, const std::string& name);

    void setProgram(int index, const Program& source);
    Program program(int index) const;

    BankName bankName() const;
    void setBankName(const BankName& name);

    InstrumentState snapshot() const;
    void restore(const InstrumentState& state);

private:
    struct SharedProgram
    {
        std::array<std::atomic<char>, programNameSize> name{};
        std::array<std::atomic<float>, numLiveParameters> values{};
    };

    const SharedProgram& at(int index) const;
    SharedProgram& at(int index);

    const int numPrograms;
    std::vector<SharedProgram> programs;
    std::atomic<int> currentIndex{0};
    std::array<std::atomic<char>, bankNameSize> bank{};
};

} // namespace quorel
