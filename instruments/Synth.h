// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "VoiceEngine.h"

#include <array>
#include <cstdint>
#include <memory>

namespace quorel
{

/** Plays MIDI on a voice engine: voice allocation, pedal, bend, wheel, smoothing of the live parameters. All
    of it runs on the audio thread except the constructor and `prepare`, for which audio has to be stopped.
    The output doesn't depend on how the stream is cut into blocks. */
class Synth
{
public:
    Synth(EngineKind kind, int voicing, float level);

    /** Sets the sample rate (Hz; at least 1000 is used) and resets. */
    void prepare(double rate);

    /** Falls silent at once and resets the controllers. */
    void reset();

    /** Where the live parameters are to go, 0..1 each. */
    void setTargets(const std::array<float, numLiveParameters>& normalised);

    /** A channel message; all channels play the same sound. Bit 7 of the data bytes is ignored. */
    void handleMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2);

    /** Adds n samples to both buffers. */
    void render(float* left, float* right, int n);

private:
    struct Slot
    {
        bool active = false;
        bool keyDown = false;
        bool pedalHeld = false;
        bool fading = false;
        int note = 0;
        std::uint64_t age = 0;
        float fade = 1.0f;
        float lastLeft = 0.0f, lastRight = 0.0f;
    };

    void noteOn(int note, int velocity);
    void noteOff(int note);
    void setPedal(bool down);
    void releaseAll();
    void fadeAll();
    void resetControllers();
    int takeSlot();
    void updateControls();
    void renderSegment(float* left, float* right, int n);

    static constexpr int polyphony = 24;

    EngineKind kind;
    std::unique_ptr<VoiceEngine> engine;
    const ParameterSpecs& specs;
    const float trim;
    Controls controls;
    std::array<Slot, numVoices> slots;
    std::array<float, numLiveParameters> targets{}, smoothed{};
    float smoothShare = 1.0f, fadeStep = 0.01f, residueFactor = 0.9f;
    float residueLeft = 0.0f, residueRight = 0.0f; ///< last values of voices that had to be cut, dying away
    float bend = 0.0f, wheel = 0.0f, smoothedBend = 0.0f, smoothedWheel = 0.0f;
    double vibratoPhase = 0.0, tremoloPhase = 0.0;
    Ramp volume;
    bool pedal = false;
    bool jumpNext = true; ///< nothing sounds: parameters take their targets at once
    int untilControl = 0;
    std::uint64_t noteCount = 0;
};

} // namespace quorel
