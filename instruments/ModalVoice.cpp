// SPDX-License-Identifier: GPL-3.0-or-later
// Bells and glasses: a handful of partials, each with a decay of its own, struck or bowed.
#include "VoiceEngine.h"

namespace quorel
{

namespace
{

constexpr int numPartials = 8;

struct ModalVoicing
{
    float tuned[numPartials]; ///< partial ratios at Material 0
    float free[numPartials];  ///< and at Material 1
    float tilt;               ///< exponent by which higher partials get weaker
};

// Glasson: from tuned bars to a cast bell. Glasson2: from a harmonic series to the modes of a glass's rim,
// whose frequencies grow with the square of their number.
constexpr ModalVoicing voicings[] = {
    {{1.0f, 2.0f, 4.0f, 3.0f, 6.0f, 8.0f, 10.0f, 12.0f},
     {1.0f, 2.0f, 2.4f, 3.0f, 4.2f, 5.43f, 6.8f, 8.21f},
     0.75f},
    {{1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f},
     {1.0f, 2.32f, 4.25f, 6.63f, 9.38f, 12.22f, 15.6f, 19.1f},
     1.6f},
};

class ModalVoice
{
public:
    explicit ModalVoice(int voicing)
        : fixed(voicings[voicing])
    {
    }

    void prepare(float) {}

    bool start(const NoteStart& note, const Controls& c)
    {
        noise.state = note.seed;
        frequency = noteFrequency(static_cast<float>(note.note));
        gain = velocityGain(note.velocity, c.value[modal::velocity]);
        const float hard = c.value[modal::hardness] * (0.4f + 0.6f * note.velocity);
        for (int k = 0; k < numPartials; ++k)
        {
            leftPhases[k] = rightPhases[k] = 0.0f;
            bowTilts[k] = std::pow(1.0f / (1.0f + static_cast<float>(k)), 1.5f + fixed.tilt);
            strikes[k] = std::pow(1.0f / (1.0f + static_cast<float>(k)), fixed.tilt + 1.6f * (1.0f - hard));
        }
        humPhase = 0.0f;
        humLevel = 1.0f;
        bowLevel = 0.0f;
        noiseLevel = 0.35f * c.value[modal::noise] * hard;
        noiseFactor = decayFactor(0.03f, c.rate);
        noiseFilter.clear();
        envelope.start();
        started = true;
        control(c);
        return true;
    }

    void release() { envelope.release(); }

    void control(const Controls& c)
    {
        const float pitch = frequency * c.pitchRatio;
        if (c.changed || started)
        {
            envelope.setTimes(c.value[modal::attack], 1.0f, 1.0f, c.value[modal::release], c.rate);
            spread = std::exp2(0.5f * c.value[modal::shimmer] / 1200.0f);
            for (int k = 0; k < numPartials; ++k)
            {
                ratios[k] = fixed.tuned[k] + c.value[modal::material] * (fixed.free[k] - fixed.tuned[k]);
                const float seconds = c.value[modal::decay] /
                                      (1.0f + 1.5f * c.value[modal::damping] * (ratios[k] - 1.0f)) *
                                      std::sqrt(261.6f / std::max(frequency, 30.0f));
                factors[k] = decayFactor(seconds, c.rate, controlInterval);
                colours[k] = std::pow(0.35f + 0.65f * c.value[modal::brightness], static_cast<float>(k));
            }
            noiseGain = StateVariableFilter::gainFor(std::min(4.0f * frequency, 9000.0f), c.rate);
        }
        const auto set = [this](Ramp& ramp, float target) { started ? ramp.jump(target) : ramp.aim(target); };
        const float bow = c.value[modal::bow];
        bowLevel += (bow - bowLevel) * (started ? 0.0f : bowShare(c));
        for (int k = 0; k < numPartials; ++k)
        {
            const float step = pitch * ratios[k] / c.rate;
            leftSteps[k] = std::min(step * spread, 0.5f);
            rightSteps[k] = std::min(step / spread, 0.5f);
            const float bowed = bowLevel * bowTilts[k];
            const float level = colours[k] * ((1.0f - 0.8f * bow) * strikes[k] + bowed);
            const float side =
                0.7f * c.value[modal::width] * (k % 2 == 0 ? -1.0f : 1.0f) * (k == 0 ? 0.2f : 1.0f);
            // A partial fades out over the last tenth below the limit, rather than stop there.
            const float fits = std::clamp((highestFrequency - step) / (0.1f * highestFrequency), 0.0f, 1.0f);
            set(leftLevels[k], fits * level * (1.0f - side));
            set(rightLevels[k], fits * level * (1.0f + side));
            decayBy(strikes[k], factors[k]);
        }
        humStep = 0.5f * std::min(pitch / c.rate, highestFrequency);
        set(hum, 0.6f * c.value[modal::octave] * humLevel);
        decayBy(humLevel, factors[0]);
        const float depth = 0.45f * std::min(1.0f, c.value[modal::tremolo] + c.modWheel);
        set(leftGain, 1.0f + depth * c.tremolo);
        set(rightGain, 1.0f + depth * c.tremoloSide);
        silent = !(bow > 0.0f) && strikes[0] < 1.0e-4f && strikes[1] < 1.0e-4f;
        started = false;
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            float scrape = 0.0f;
            if (noiseLevel > 1.0e-4f)
            {
                noiseFilter.process(noise.next(), noiseGain, 0.8f);
                scrape = noiseFilter.band * noiseLevel;
                noiseLevel *= noiseFactor;
            }
            const float centre = scrape + hum.next() * sineOfTurns(humPhase);
            advance(humPhase, humStep);
            float l = centre, r = centre;
            for (int k = 0; k < numPartials; ++k)
            {
                l += leftLevels[k].next() * sineOfTurns(leftPhases[k]);
                r += rightLevels[k].next() * sineOfTurns(rightPhases[k]);
                advance(leftPhases[k], leftSteps[k]);
                advance(rightPhases[k], rightSteps[k]);
            }
            const float level = envelope.next() * gain;
            outLeft[s] = l * level * leftGain.next();
            outRight[s] = r * level * rightGain.next();
        }
        return envelope.active() && !silent;
    }

private:
    /** How far the bow's level goes towards its aim in one control interval: a time constant of 0.15 s. */
    static float bowShare(const Controls& c)
    {
        return std::min(1.0f, static_cast<float>(controlInterval) / (0.15f * c.rate));
    }

    ModalVoicing fixed;
    Noise noise;
    Envelope envelope;
    StateVariableFilter noiseFilter;
    float frequency = 440.0f, gain = 0.0f, spread = 1.0f;
    float ratios[numPartials]{}, factors[numPartials]{}, colours[numPartials]{}, strikes[numPartials]{};
    float bowTilts[numPartials]{};
    float leftPhases[numPartials]{}, rightPhases[numPartials]{}, leftSteps[numPartials]{},
        rightSteps[numPartials]{};
    float humPhase = 0.0f, humStep = 0.0f, humLevel = 0.0f, bowLevel = 0.0f;
    float noiseLevel = 0.0f, noiseFactor = 0.0f, noiseGain = 0.1f;
    Ramp leftLevels[numPartials], rightLevels[numPartials], hum, leftGain, rightGain;
    bool silent = false, started = false;
};

} // namespace

std::unique_ptr<VoiceEngine> makeModalEngine(int voicing)
{
    return std::make_unique<VoiceRow<ModalVoice>>(voicing);
}

} // namespace quorel
