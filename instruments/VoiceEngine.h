// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp.h"
#include "ParameterSpecs.h"
#include "StarterInstruments.h"

#include <array>
#include <memory>
#include <vector>

namespace quorel
{

/** What all voices share, updated every `controlInterval` samples. */
struct Controls
{
    std::array<float, numLiveParameters> value{}; ///< physical values, smoothed
    float rate = 44100.0f;
    float pitchRatio = 1.0f;  ///< bend and vibrato
    float modWheel = 0.0f;    ///< 0..1
    float tremolo = 0.0f;     ///< the tremolo oscillator, -1..1
    float tremoloSide = 0.0f; ///< the same, a quarter turn ahead
    bool changed = true;      ///< some value differs from that of the last update
};

struct NoteStart
{
    int note = 60;          ///< 0..127
    float velocity = 0.8f;  ///< 0..1
    std::uint32_t seed = 1; ///< not 0
};

/** A row of voices of one kind. Everything but `prepare` runs on the audio thread and allocates nothing. */
class VoiceEngine
{
public:
    virtual ~VoiceEngine() = default;

    virtual void prepare(float rate) = 0;
    /** False if the note has no sound. */
    virtual bool start(int voice, const NoteStart& note, const Controls& controls) = 0;
    virtual void release(int voice) = 0;
    virtual void control(int voice, const Controls& controls) = 0;
    /** Overwrites n samples, at most `controlInterval`. False once the voice is silent for good. */
    virtual bool render(int voice, float* left, float* right, int n) = 0;

    /** Whether a new note cuts a sounding one short. */
    virtual bool cutsOff(int newNote, int soundingNote) const { return newNote == soundingNote; }
};

constexpr int numVoices = 32;

/** The engine of a voice type that has prepare, start, release, control and render of its own. */
template <typename Voice>
class VoiceRow : public VoiceEngine
{
public:
    explicit VoiceRow(int voicing)
        : voices(numVoices, Voice(voicing))
    {
    }

    void prepare(float rate) override
    {
        for (auto& voice : voices)
            voice.prepare(rate);
    }

    bool start(int voice, const NoteStart& note, const Controls& controls) override
    {
        return at(voice).start(note, controls);
    }

    void release(int voice) override { at(voice).release(); }

    void control(int voice, const Controls& controls) override { at(voice).control(controls); }

    bool render(int voice, float* left, float* right, int n) override
    {
        return at(voice).render(left, right, n);
    }

private:
    Voice& at(int voice) { return voices[static_cast<std::size_t>(voice)]; }

    std::vector<Voice> voices;
};

std::unique_ptr<VoiceEngine> makeAnalogueEngine(int voicing);
std::unique_ptr<VoiceEngine> makeFmEngine(int voicing);
std::unique_ptr<VoiceEngine> makeStringEngine(int voicing);
std::unique_ptr<VoiceEngine> makeModalEngine(int voicing);
std::unique_ptr<VoiceEngine> makeOrganEngine(int voicing);
std::unique_ptr<VoiceEngine> makeDrumEngine(int voicing);

std::unique_ptr<VoiceEngine> makeEngine(EngineKind kind, int voicing);

} // namespace quorel
