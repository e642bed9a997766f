// SPDX-License-Identifier: GPL-3.0-or-later
#include "Instrument.h"

#include "PlatformFiles.h"

#include <algorithm>
#include <cmath>

namespace quorel
{

static FormatOwner ownerOf(const std::string& name)
{
    const auto& info = instrumentFor(name);
    return {name, info.programsByMidi ? 1 : programsPerList, info.parametersPerProgram, &info};
}

Instrument::Instrument(const std::string& ownName)
    : owner(ownerOf(ownName))
    , store(owner.numPrograms)
    , synth(owner.info->engine, owner.info->voicing, owner.info->level)
{
    events.reserve(mostEvents);
    library.load(owner, {});
    useBank(library.initial());
}

void Instrument::open()
{
    library.load(owner, readUserSetting(owner.info->registryKey, owner.info->bankValue));
    useBank(library.initial());
}

float Instrument::parameter(int hostIndex) const
{
    if (const int live = liveParameterAt(info(), hostIndex); live >= 0)
        return store.value(live);
    const int letter = hostIndex - info().firstBankNameParameter;
    if (letter < 0 || letter >= bankNameLength)
        return 0.0f;
    // Hosts read the letter back as int(value * 255.9); the middle of its step is safe from rounding.
    const auto c = static_cast<unsigned char>(store.bankName()[static_cast<std::size_t>(letter)]);
    return c == 0 ? 0.0f : (static_cast<float>(c) + 0.5f) / 255.9f;
}

void Instrument::setParameter(int hostIndex, float value)
{
    const int live = liveParameterAt(info(), hostIndex);
    if (live >= 0 && std::isfinite(value))
        store.setValue(live, std::clamp(value, 0.0f, 1.0f));
}

std::string Instrument::parameterName(int hostIndex) const
{
    if (const int live = liveParameterAt(info(), hostIndex); live >= 0)
        return parameterSpecs(info().engine)[static_cast<std::size_t>(live)].name;
    const int letter = hostIndex - info().firstBankNameParameter;
    if (letter < 0 || letter >= bankNameLength)
        return {};
    return "Bank Name " + std::to_string(letter + 1);
}

std::string Instrument::parameterText(int hostIndex) const
{
    if (const int live = liveParameterAt(info(), hostIndex); live >= 0)
        return quorel::parameterText(parameterSpecs(info().engine)[static_cast<std::size_t>(live)],
                                     store.value(live));
    const int letter = hostIndex - info().firstBankNameParameter;
    if (letter < 0 || letter >= bankNameLength)
        return {};
    const char c = store.bankName()[static_cast<std::size_t>(letter)];
    return c > ' ' && c < 127 ? std::string(1, c) : std::string();
}

std::string Instrument::parameterUnit(int hostIndex) const
{
    const int live = liveParameterAt(info(), hostIndex);
    return live >= 0 ? parameterSpecs(info().engine)[static_cast<std::size_t>(live)].unit : std::string();
}

void Instrument::selectProgram(int index)
{
    if (index < 0 || index >= store.size() || index == store.current())
        return;
    store.setCurrent(index);
    displayChanged.store(true, std::memory_order_relaxed);
}

Bytes Instrument::state(bool programOnly) const
{
    return programOnly ? writeProgram(owner, store.program(store.current()))
                       : writeState(owner, store.snapshot());
}

bool Instrument::setState(const std::uint8_t* data, std::size_t size, bool programOnly)
{
    if (programOnly)
    {
        Program program;
        if (!readProgram(owner, data, size, program))
            return false;
        store.setProgram(store.current(), program);
        return true;
    }
    InstrumentState state;
    if (!readState(owner, data, size, state))
        return false;
    store.restore(state);
    // The sound comes from the state alone. The bank, if it still exists, is for the next program change.
    if (const auto* found = library.find(state.bankName))
        bank.store(found, std::memory_order_relaxed);
    else
        bank.store(&library.initial(), std::memory_order_relaxed);
    return true;
}

void Instrument::silence()
{
    events.clear();
    synth.reset();
}

void Instrument::queueMidi(int sample, const unsigned char* bytes)
{
    if (events.size() == mostEvents)
        flushEvents();
    const Event event{std::max(sample, 0), bytes[0], static_cast<std::uint8_t>(bytes[1] & 0x7f),
                      static_cast<std::uint8_t>(bytes[2] & 0x7f)};
    // Hosts send events in order. One that comes late is sorted in, behind those of its own time.
    auto place = events.end();
    while (place != events.begin() && (place - 1)->sample > event.sample)
        --place;
    events.insert(place, event);
}

void Instrument::flushEvents()
{
    for (const auto& event : events)
        play(event);
    events.clear();
}

void Instrument::play(const Event& event)
{
    const int kind = event.status & 0xf0;
    if (kind == 0xc0)
        changeProgram(event.data1);
    else if (kind == 0xb0 && event.data1 == 32)
        changeBank(event.data2);
    else
        synth.handleMidi(event.status, event.data1, event.data2);
}

void Instrument::changeBank(int index)
{
    const auto* chosen = library.at(index);
    if (chosen == nullptr || chosen->programs.empty())
        return;
    useBank(*chosen);
    displayChanged.store(true, std::memory_order_relaxed);
}

void Instrument::useBank(const Bank& chosen)
{
    const auto count = std::min(store.size(), static_cast<int>(chosen.programs.size()));
    for (int i = 0; i < count; ++i)
    {
        const auto& program = chosen.programs[static_cast<std::size_t>(i)];
        if (program.usable)
            store.setProgram(i, program);
    }
    store.setCurrent(0);
    store.setBankName(chosen.name);
    bank.store(&chosen, std::memory_order_relaxed);
    synth.setTargets(store.values());
}

void Instrument::changeProgram(int index)
{
    if (!info().programsByMidi)
    {
        selectProgram(index);
    }
    else
    {
        const auto* source = bank.load(std::memory_order_relaxed);
        if (source == nullptr || index >= static_cast<int>(source->programs.size()))
            return;
        const auto& program = source->programs[static_cast<std::size_t>(index)];
        if (!program.usable)
            return;
        store.setProgram(0, program);
        store.setBankName(source->name);
        displayChanged.store(true, std::memory_order_relaxed);
    }
    synth.setTargets(store.values());
}

void Instrument::process(float* left, float* right, int n, bool add)
{
    float bufferLeft[chunkLength], bufferRight[chunkLength];
    std::size_t next = 0;
    synth.setTargets(store.values());
    for (int position = 0; position < n;)
    {
        while (next < events.size() && events[next].sample <= position)
            play(events[next++]);
        int length = std::min(n - position, chunkLength);
        if (next < events.size())
            length = std::min(length, events[next].sample - position);
        std::fill_n(bufferLeft, length, 0.0f);
        std::fill_n(bufferRight, length, 0.0f);
        synth.render(bufferLeft, bufferRight, length);
        const auto deliver = [&](float* out, const float* buffer)
        {
            for (int i = 0; out != nullptr && i < length; ++i)
                out[position + i] = add ? out[position + i] + buffer[i] : buffer[i];
        };
        deliver(left, bufferLeft);
        deliver(right, bufferRight);
        position += length;
    }
    // Events for a time past this block play in the next one.
    events.erase(events.begin(), events.begin() + static_cast<std::ptrdiff_t>(next));
    for (auto& event : events)
        event.sample = std::max(0, event.sample - n);
}

} // namespace quorel
