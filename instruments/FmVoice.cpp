// SPDX-License-Identifier: GPL-3.0-or-later
// Frequency modulation: a modulator with feedback drives two carriers, one for each side; a second, short
// pair adds the tine of a struck bar or the bite of a reed.
#include "VoiceEngine.h"

namespace quorel
{

namespace
{

struct FmVoicing
{
    float carrier;     ///< ratio of the main carriers
    float tineCarrier; ///< ratio of the short pair's carrier
    float tineDecay;   ///< seconds
    float tineIndex;   ///< modulation of the short pair
    float keyDamping;  ///< octaves of modulation lost per octave of pitch above middle C
};

// Hexley, Hexley2, Hexley-Mini
constexpr FmVoicing voicings[] = {
    {1.0f, 1.0f, 0.5f, 0.9f, 0.35f},
    {1.0f, 2.0f, 3.0f, 1.6f, 0.2f},
    {1.0f, 3.0f, 0.08f, 2.5f, 0.1f},
};

class FmVoice
{
public:
    explicit FmVoice(int voicing)
        : fixed(voicings[voicing])
    {
    }

    void prepare(float) {}

    bool start(const NoteStart& note, const Controls& controls)
    {
        frequency = noteFrequency(static_cast<float>(note.note));
        velocity = note.velocity;
        keyScale = std::exp2(-fixed.keyDamping * static_cast<float>(note.note - 60) / 12.0f);
        gain = velocityGain(velocity, controls.value[fm::velocity]);
        // Carriers start anywhere, so that the notes of a chord don't all peak at once.
        Noise random{note.seed};
        leftPhase = rightPhase = random.uniform();
        modulatorPhase = tinePhase = tineModulatorPhase = 0.0f;
        lastModulator = 0.0f;
        modulatorLevel = tineLevel = 1.0f;
        envelope.start();
        started = true;
        control(controls);
        return true;
    }

    void release() { envelope.release(); }

    void control(const Controls& c)
    {
        if (c.changed || started)
        {
            envelope.setTimes(c.value[fm::attack], c.value[fm::decay], c.value[fm::sustain],
                              c.value[fm::release], c.rate);
            modulatorFactor = decayFactor(c.value[fm::modDecay], c.rate, controlInterval);
            tineFactor = decayFactor(fixed.tineDecay, c.rate, controlInterval);
            spread = std::exp2(0.5f * c.value[fm::detune] / 1200.0f);
        }
        const float step = frequency * c.pitchRatio / c.rate;
        leftStep = std::min(step * fixed.carrier * spread, highestFrequency);
        rightStep = std::min(step * fixed.carrier / spread, highestFrequency);
        modulatorStep = std::min(step * c.value[fm::ratio], highestFrequency);
        tineStep = step * fixed.tineCarrier;
        tineModulatorStep = std::min(step * c.value[fm::tineRatio], highestFrequency);

        const float touch = 1.0f + c.value[fm::velocity] * (1.4f * velocity - 1.0f);
        const float shape = c.value[fm::modSustain] + (1.0f - c.value[fm::modSustain]) * modulatorLevel;
        const float index = c.value[fm::brightness] * touch * keyScale * shape * (1.0f + 0.5f * c.modWheel);
        // Carson's rule: sidebands reach out by about index + 1 times the modulator's frequency. The index is
        // limited to what fits.
        const float room = std::max(0.0f, (highestFrequency - leftStep) / modulatorStep - 1.0f);
        const float tineRoom = std::max(0.0f, (highestFrequency - tineStep) / tineModulatorStep - 1.0f);
        const float tineIndex = std::min(fixed.tineIndex * (0.4f + velocity), tineRoom);
        const bool tineFits = tineStep < highestFrequency;
        const auto set = [this](Ramp& ramp, float target) { started ? ramp.jump(target) : ramp.aim(target); };
        set(depth, std::min(index, room) / twoPi);
        set(tineDepth, tineIndex / twoPi);
        set(tineGain, tineFits ? 0.7f * c.value[fm::tine] * tineLevel * (0.3f + 0.7f * velocity) : 0.0f);
        set(feedback, 0.18f * c.value[fm::feedback]);
        set(leftGain, 1.0f + 0.45f * c.value[fm::tremolo] * c.tremolo);
        set(rightGain, 1.0f - 0.45f * c.value[fm::tremolo] * c.tremolo);
        decayBy(modulatorLevel, modulatorFactor);
        decayBy(tineLevel, tineFactor);
        started = false;
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            lastModulator =
                0.5f * (lastModulator + sineOfTurns(modulatorPhase + feedback.next() * lastModulator));
            const float modulation = 2.0f * depth.next() * lastModulator;
            const float tine =
                tineGain.next() * sineOfTurns(tinePhase + tineDepth.next() * sineOfTurns(tineModulatorPhase));
            const float level = envelope.next() * gain;
            outLeft[s] = level * leftGain.next() * (sineOfTurns(leftPhase + modulation) + tine);
            outRight[s] = level * rightGain.next() * (sineOfTurns(rightPhase + modulation) + tine);
            advance(leftPhase, leftStep);
            advance(rightPhase, rightStep);
            advance(modulatorPhase, modulatorStep);
            advance(tinePhase, std::min(tineStep, highestFrequency));
            advance(tineModulatorPhase, tineModulatorStep);
        }
        return envelope.active();
    }

private:
    FmVoicing fixed;
    Envelope envelope;
    float frequency = 440.0f, velocity = 0.0f, keyScale = 1.0f, gain = 0.0f, spread = 1.0f;
    float leftPhase = 0.0f, rightPhase = 0.0f, modulatorPhase = 0.0f, tinePhase = 0.0f,
          tineModulatorPhase = 0.0f;
    float leftStep = 0.0f, rightStep = 0.0f, modulatorStep = 0.1f, tineStep = 0.0f, tineModulatorStep = 0.1f;
    float lastModulator = 0.0f, modulatorLevel = 0.0f, modulatorFactor = 0.0f, tineLevel = 0.0f,
          tineFactor = 0.0f;
    Ramp depth, tineDepth, tineGain, feedback, leftGain, rightGain;
    bool started = false;
};

} // namespace

std::unique_ptr<VoiceEngine> makeFmEngine(int voicing)
{
    return std::make_unique<VoiceRow<FmVoice>>(voicing);
}

} // namespace quorel
