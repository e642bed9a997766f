// SPDX-License-Identifier: GPL-3.0-or-later
#include "Programs.h"

#include <algorithm>

namespace quorel
{

void setText(char* target, std::size_t size, const std::string& text)
{
    std::size_t length = std::min(size, text.size());
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80)
        --length;
    std::fill(target, target + size, '\0');
    std::copy_n(text.data(), length, target);
}

std::string getText(const char* text, std::size_t size)
{
    return std::string(text, std::find(text, text + size, '\0'));
}

ProgramStore::ProgramStore(int programCount)
    : numPrograms(programCount)
    , programs(static_cast<std::size_t>(programCount))
{
}

const ProgramStore::SharedProgram& ProgramStore::at(int index) const
{
    return programs[static_cast<std::size_t>(std::clamp(index, 0, numPrograms - 1))];
}

ProgramStore::SharedProgram& ProgramStore::at(int index)
{
    return programs[static_cast<std::size_t>(std::clamp(index, 0, numPrograms - 1))];
}

void ProgramStore::setCurrent(int index)
{
    if (index >= 0 && index < numPrograms)
        currentIndex.store(index, std::memory_order_relaxed);
}

float ProgramStore::value(int live) const
{
    return at(current()).values[static_cast<std::size_t>(live)].load(std::memory_order_relaxed);
}

void ProgramStore::setValue(int live, float normalised)
{
    at(current()).values[static_cast<std::size_t>(live)].store(normalised, std::memory_order_relaxed);
}

std::array<float, numLiveParameters> ProgramStore::values() const
{
    std::array<float, numLiveParameters> result{};
    const auto& source = at(current());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = source.values[i].load(std::memory_order_relaxed);
    return result;
}

std::string ProgramStore::programName(int index) const
{
    const auto copy = program(index);
    return getText(copy.name.data(), copy.name.size());
}

void ProgramStore::setProgramName(int index, const std::string& name)
{
    auto copy = program(index);
    setText(copy.name.data(), copy.name.size(), name);
    setProgram(index, copy);
}

void ProgramStore::setProgram(int index, const Program& source)
{
    auto& target = at(index);
    for (std::size_t i = 0; i < programNameSize; ++i)
        target.name[i].store(source.name[i], std::memory_order_relaxed);
    for (std::size_t i = 0; i < source.values.size(); ++i)
        target.values[i].store(source.values[i], std::memory_order_relaxed);
}

Program ProgramStore::program(int index) const
{
    Program result;
    const auto& source = at(index);
    for (std::size_t i = 0; i < programNameSize; ++i)
        result.name[i] = source.name[i].load(std::memory_order_relaxed);
    for (std::size_t i = 0; i < result.values.size(); ++i)
        result.values[i] = source.values[i].load(std::memory_order_relaxed);
    return result;
}

BankName ProgramStore::bankName() const
{
    BankName result{};
    for (std::size_t i = 0; i < bankNameSize; ++i)
        result[i] = bank[i].load(std::memory_order_relaxed);
    return result;
}

void ProgramStore::setBankName(const BankName& name)
{
    for (std::size_t i = 0; i < bankNameSize; ++i)
        bank[i].store(name[i], std::memory_order_relaxed);
}

InstrumentState ProgramStore::snapshot() const
{
    InstrumentState state;
    state.currentProgram = current();
    state.bankName = bankName();
    for (int i = 0; i < numPrograms; ++i)
        state.programs.push_back(program(i));
    return state;
}

void ProgramStore::restore(const InstrumentState& state)
{
    const auto count = std::min(numPrograms, static_cast<int>(state.programs.size()));
    for (int i = 0; i < count; ++i)
        setProgram(i, state.programs[static_cast<std::size_t>(i)]);
    setBankName(state.bankName);
    setCurrent(state.currentProgram);
}

} // namespace quorel
