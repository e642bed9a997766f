// SPDX-License-Identifier: GPL-3.0-or-later
// Subtractive voice: a bank of detuned oscillators, a second oscillator at an interval, a sub oscillator,
// noise, and a low-pass filter with an envelope of its own.
#include "VoiceEngine.h"

namespace quorel
{

namespace
{

constexpr int mostUnison = 7;

struct AnalogueVoicing
{
    int unison;     ///< oscillators of the first bank, 1..mostUnison
    float interval; ///< second oscillator, in semitones above
    float noise;    ///< level of the noise
    float drive;    ///< gain into the saturation before the filter, 0 for none
    float spread;   ///< stereo width, 0..1
    float drift;    ///< slow wander of each voice's pitch, in cents
};

// Orlen, Tarn, Tarn2, Tarn-Mini, Zeph
constexpr AnalogueVoicing voicings[] = {
    {1, 0.0f, 0.0f, 0.0f, 0.35f, 1.5f},  {1, 0.0f, 0.0f, 2.2f, 0.1f, 1.0f},
    {7, 12.0f, 0.02f, 0.0f, 0.9f, 1.0f}, {1, 7.02f, 0.0f, 4.0f, 0.0f, 0.0f},
    {5, 12.0f, 0.05f, 0.0f, 1.0f, 3.0f},
};

class AnalogueVoice
{
public:
    explicit AnalogueVoice(int voicing)
        : fixed(voicings[voicing])
    {
    }

    void prepare(float) {}

    bool start(const NoteStart& note, const Controls& controls)
    {
        noise.state = note.seed;
        frequency = noteFrequency(static_cast<float>(note.note));
        keyOctaves = static_cast<float>(note.note - 60) / 12.0f;
        gain = velocityGain(note.velocity, 0.75f);
        brightness = 0.55f + 0.45f * note.velocity;
        drift = std::exp2(noise.next() * fixed.drift / 1200.0f);
        for (auto& oscillator : oscillators)
            oscillator.phase = noise.uniform();
        second.phase = noise.uniform();
        subPhase = 0.0f;
        filterLevel = 1.0f;
        left.clear();
        right.clear();
        envelope.start();
        started = true;
        control(controls);
        return true;
    }

    void release() { envelope.release(); }

    void control(const Controls& c)
    {
        using namespace analogue;
        if (c.changed || started)
        {
            envelope.setTimes(c.value[attack], c.value[decay], c.value[sustain], c.value[release_], c.rate);
            filterDecayFactor = decayFactor(c.value[filterDecay], c.rate, controlInterval);
            const float count = static_cast<float>(fixed.unison);
            for (int i = 0; i < fixed.unison; ++i)
            {
                const float place =
                    fixed.unison > 1 ? 2.0f * static_cast<float>(i) / (count - 1.0f) - 1.0f : -0.5f;
                detunes[i] = std::exp2(place * c.value[detune] / 1200.0f);
                const float side = fixed.spread * (i % 2 == 0 ? place : -place);
                leftGains[i] = (1.0f - side) / std::sqrt(count);
                rightGains[i] = (1.0f + side) / std::sqrt(count);
            }
            secondDetune = std::exp2((100.0f * fixed.interval + 0.5f * c.value[detune]) / 1200.0f);
        }
        const float pitch = frequency * drift * c.pitchRatio / c.rate;
        for (int i = 0; i < fixed.unison; ++i)
            steps[i] = std::min(pitch * detunes[i], highestFrequency);
        secondStep = std::min(pitch * secondDetune, highestFrequency);
        subStep = std::min(0.5f * pitch, highestFrequency);

        const float octaves = c.value[filterEnv] * filterLevel * brightness +
                              c.value[keyFollow] * keyOctaves + 1.5f * c.modWheel;
        decayBy(filterLevel, filterDecayFactor);
        const float g = StateVariableFilter::gainFor(c.value[cutoff] * std::exp2(octaves), c.rate);
        const float k = 2.0f - 1.85f * c.value[resonance];
        const float mix = c.value[oscMix];
        const auto set = [this](Ramp& ramp, float target) { started ? ramp.jump(target) : ramp.aim(target); };
        set(filterGain, g);
        set(filterDamping, k);
        set(firstLevel, 1.0f - 0.7f * mix);
        set(secondLevel, mix);
        set(subLevel, c.value[sub]);
        set(waveShape, c.value[shape]);
        set(waveWidth, c.value[pulseWidth]);
        started = false;
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            const float shape = waveShape.next();
            const float width = waveWidth.next();
            const float first = firstLevel.next();
            float l = 0.0f, r = 0.0f;
            for (int i = 0; i < fixed.unison; ++i)
            {
                const float wave = oscillators[i].next(steps[i], shape, width) * first;
                l += wave * leftGains[i];
                r += wave * rightGains[i];
            }
            const float wave = second.next(secondStep, shape, width) * secondLevel.next();
            advance(subPhase, subStep);
            const float centre = fixed.noise * noise.next() + 1.2f * subLevel.next() * sineOfTurns(subPhase);
            l += wave * (1.0f + fixed.spread * 0.5f) + centre;
            r += wave * (1.0f - fixed.spread * 0.5f) + centre;
            if (fixed.drive > 0.0f)
            {
                l = saturate(0.5f * fixed.drive * l);
                r = saturate(0.5f * fixed.drive * r);
            }
            const float g = filterGain.next();
            const float k = filterDamping.next();
            left.process(l, g, k);
            right.process(r, g, k);
            const float level = envelope.next() * gain;
            outLeft[s] = left.low * level;
            outRight[s] = right.low * level;
        }
        return envelope.active();
    }

private:
    static constexpr int release_ = analogue::release;

    AnalogueVoicing fixed;
    Noise noise;
    Envelope envelope;
    StateVariableFilter left, right;
    Oscillator oscillators[mostUnison], second;
    float detunes[mostUnison]{}, steps[mostUnison]{}, leftGains[mostUnison]{}, rightGains[mostUnison]{};
    float frequency = 440.0f, drift = 1.0f, keyOctaves = 0.0f, gain = 0.0f, brightness = 1.0f;
    float secondDetune = 1.0f, secondStep = 0.0f, subPhase = 0.0f, subStep = 0.0f;
    float filterLevel = 0.0f, filterDecayFactor = 0.0f;
    Ramp filterGain, filterDamping, firstLevel, secondLevel, subLevel, waveShape, waveWidth;
    bool started = false;
};

} // namespace

std::unique_ptr<VoiceEngine> makeAnalogueEngine(int voicing)
{
    return std::make_unique<VoiceRow<AnalogueVoice>>(voicing);
}

} // namespace quorel
