// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BankLibrary.h"
#include "Programs.h"
#include "Synth.h"

#include <array>
#include <atomic>
#include <string>
#include <vector>

namespace quorel
{

/** One instrument of the family without its plug-in shell: parameters, programs, banks, state and sound.
    `queueMidi` and `process` belong to the audio thread; anything else may be called from any other thread.
    */
class Instrument
{
public:
    explicit Instrument(const std::string& ownName);

    const std::string& name() const { return owner.name; }

    const StarterInstrument& info() const { return *owner.info; }

    /** Reads the banks from the user's bank folder and starts with the first program. Not while processing.
        */
    void open();

    float parameter(int hostIndex) const;
    void setParameter(int hostIndex, float value);
    std::string parameterName(int hostIndex) const;
    std::string parameterText(int hostIndex) const;
    std::string parameterUnit(int hostIndex) const;

    int numPrograms() const { return store.size(); }

    int currentProgram() const { return store.current(); }

    void selectProgram(int index);

    std::string programName(int index) const { return store.programName(index); }

    void renameProgram(const std::string& newName) { store.setProgramName(store.current(), newName); }

    /** The state, or the current program alone. Each has a size that never changes. */
    Bytes state(bool programOnly) const;
    /** False, with nothing changed, for data that are damaged or another instrument's. */
    bool setState(const std::uint8_t* data, std::size_t size, bool programOnly);

    void prepare(double sampleRate) { synth.prepare(sampleRate); }

    void silence();

    /** A channel message at a sample of the next block. */
    void queueMidi(int sample, const unsigned char* bytes);
    /** Writes (or with `add` adds) n samples to each output. Null outputs are left out. */
    void process(float* left, float* right, int n, bool add);

    /** True once after MIDI or a program choice has changed programs and, with them, parameters. */
    bool takeDisplayChange() { return displayChanged.exchange(false, std::memory_order_relaxed); }

private:
    struct Event
    {
        int sample;
        std::uint8_t status, data1, data2;
    };

    void play(const Event& event);
    void changeBank(int index);
    void changeProgram(int index);
    void useBank(const Bank& chosen);
    void flushEvents();

    static constexpr std::size_t mostEvents = 4096;
    static constexpr int chunkLength = 256;

    FormatOwner owner;
    ProgramStore store;
    BankLibrary library;
    Synth synth;
    std::vector<Event> events;
    std::atomic<const Bank*> bank{nullptr}; ///< in the library; where program changes look
    std::atomic<bool> displayChanged{false};
};

} // namespace quorel
