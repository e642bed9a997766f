// SPDX-License-Identifier: GPL-3.0-or-later
// Drawbar organ: nine sine partials, percussion on the second harmonic, key click and a rotor.
#include "VoiceEngine.h"

namespace quorel
{

namespace
{

constexpr int numDrawbars = 9;
constexpr float harmonics[numDrawbars] = {0.5f, 1.5f, 1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 8.0f};

class OrganVoice
{
public:
    explicit OrganVoice(int) {}

    void prepare(float) {}

    bool start(const NoteStart& note, const Controls& c)
    {
        noise.state = note.seed;
        frequency = noteFrequency(static_cast<float>(note.note));
        gain = velocityGain(note.velocity, 0.35f);
        for (float& phase : phases)
            phase = noise.uniform(); // as of tone wheels that never stop turning
        percussionPhase = 0.0f;
        percussionLevel = c.value[organ::percussion];
        clickLevel = 0.5f * c.value[organ::keyClick];
        clickFactor = decayFactor(0.012f, c.rate);
        clickSmooth = 0.0f;
        envelope.start();
        started = true;
        control(c);
        return true;
    }

    void release() { envelope.release(); }

    void control(const Controls& c)
    {
        if (c.changed || started)
        {
            envelope.setTimes(c.value[organ::attack], 1.0f, 1.0f, c.value[organ::release], c.rate);
            percussionFactor = decayFactor(0.9f, c.rate, controlInterval);
        }
        const float depth = std::min(1.0f, c.value[organ::rotorDepth] + c.modWheel);
        const float pitch = frequency * c.pitchRatio * (1.0f + 0.0035f * depth * c.tremoloSide) / c.rate;
        const auto set = [this](Ramp& ramp, float target) { started ? ramp.jump(target) : ramp.aim(target); };
        // The more bars are drawn, the less each counts: all nine together are 5 dB louder than one.
        float drawnInAll = 1.0f;
        for (std::size_t k = 0; k < numDrawbars; ++k)
            drawnInAll += 0.015625f * c.value[k] * c.value[k];
        for (int k = 0; k < numDrawbars; ++k)
        {
            const float step = pitch * harmonics[k];
            steps[k] = std::min(step, 0.5f);
            const float fits = std::clamp((highestFrequency - step) / (0.1f * highestFrequency), 0.0f, 1.0f);
            // Squared, the upper marks of a drawbar lie 2 to 3 dB apart, and mark 0 is silent.
            const float drawn = 0.125f * c.value[static_cast<std::size_t>(organ::firstDrawbar + k)];
            set(levels[k], fits * drawn * drawn * 2.0f / drawnInAll);
        }
        percussionStep = std::min(2.0f * pitch, highestFrequency);
        set(percussionGain, 0.9f * percussionLevel);
        decayBy(percussionLevel, percussionFactor);
        set(leftGain, 1.0f + 0.3f * depth * c.tremolo);
        set(rightGain, 1.0f - 0.3f * depth * c.tremolo);
        started = false;
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            float sum = percussionGain.next() * sineOfTurns(percussionPhase);
            advance(percussionPhase, percussionStep);
            for (int k = 0; k < numDrawbars; ++k)
            {
                sum += levels[k].next() * sineOfTurns(phases[k]);
                advance(phases[k], steps[k]);
            }
            if (clickLevel > 1.0e-4f)
            {
                clickSmooth += 0.25f * (noise.next() * clickLevel - clickSmooth);
                clickLevel *= clickFactor;
                sum += clickSmooth;
            }
            sum *= envelope.next() * gain;
            outLeft[s] = sum * leftGain.next();
            outRight[s] = sum * rightGain.next();
        }
        return envelope.active();
    }

private:
    Noise noise;
    Envelope envelope;
    float frequency = 440.0f, gain = 0.0f;
    float phases[numDrawbars]{}, steps[numDrawbars]{};
    float percussionPhase = 0.0f, percussionStep = 0.0f, percussionLevel = 0.0f, percussionFactor = 0.0f;
    float clickLevel = 0.0f, clickFactor = 0.0f, clickSmooth = 0.0f;
    Ramp levels[numDrawbars], percussionGain, leftGain, rightGain;
    bool started = false;
};

} // namespace

std::unique_ptr<VoiceEngine> makeOrganEngine(int voicing)
{
    return std::make_unique<VoiceRow<OrganVoice>>(voicing);
}

} // namespace quorel
