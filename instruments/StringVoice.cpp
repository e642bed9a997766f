// SPDX-License-Identifier: GPL-3.0-or-later
// Plucked strings after Karplus and Strong: delay loops with a two-point average as the loss, a fractional
// delay by third-order Lagrange interpolation, a pickup comb and two body resonances. Two strings stand left
// and right, a third sounds an octave above them.
#include "VoiceEngine.h"

#include <vector>

namespace quorel
{

namespace
{

constexpr int numStrings = 3;

/** Lowest frequency in Hz that the lines have room for: note 0, bent down, at the bottom of its vibrato. */
constexpr float lowestFrequency = 6.5f;

struct StringLine
{
    std::vector<float> memory;
    int writeIndex = 0;
    float previous = 0.0f;
    Ramp delay;

    /** The string's sample `back` samples ago, back >= 1. */
    float at(int back) const
    {
        const int size = static_cast<int>(memory.size());
        int index = writeIndex - std::min(back, size);
        if (index < 0)
            index += size;
        return memory[static_cast<std::size_t>(index)];
    }

    float read(float back) const
    {
        const int whole = static_cast<int>(back);
        const float f = back - static_cast<float>(whole);
        const float a = at(whole - 1), b = at(whole), c = at(whole + 1), d = at(whole + 2);
        return -f * (f - 1.0f) * (f - 2.0f) / 6.0f * a + (f + 1.0f) * (f - 1.0f) * (f - 2.0f) / 2.0f * b -
               (f + 1.0f) * f * (f - 2.0f) / 2.0f * c + (f + 1.0f) * f * (f - 1.0f) / 6.0f * d;
    }

    void write(float x)
    {
        memory[static_cast<std::size_t>(writeIndex)] = x;
        if (++writeIndex == static_cast<int>(memory.size()))
            writeIndex = 0;
    }
};

class StringVoice
{
public:
    explicit StringVoice(int) {}

    void prepare(float rate)
    {
        for (auto& line : lines)
        {
            line.memory.assign(static_cast<std::size_t>(rate / lowestFrequency) + 8, 0.0f);
            line.writeIndex = 0;
        }
    }

    bool start(const NoteStart& note, const Controls& c)
    {
        noise.state = note.seed;
        frequency = noteFrequency(static_cast<float>(note.note));
        gain = velocityGain(note.velocity, c.value[pluck::velocity]);
        for (auto& line : lines)
        {
            std::fill(line.memory.begin(), line.memory.end(), 0.0f);
            line.writeIndex = 0;
            line.previous = 0.0f;
        }
        // The finger leaves a pulse on the string, brighter as it gets narrower: one turn of a sine under a
        // window, which is free of DC.
        const float hard =
            c.value[pluck::brightness] * (1.0f - c.value[pluck::velocityTone] * (1.0f - note.velocity));
        const float period = c.rate / std::min(frequency, highestFrequency * c.rate);
        const float width = period * (0.85f - 0.73f * hard) + c.value[pluck::softness] * 0.004f * c.rate;
        pulseStep = 1.0f / std::clamp(width, 3.0f, 0.05f * c.rate);
        pulsePhase = 0.0f;
        scrapeLevel = 0.5f * c.value[pluck::pickNoise];
        scrapeFactor = decayFactor(0.012f, c.rate);
        scrapeSmooth = 0.0f;
        released = false;
        started = true;
        peak = 1.0f;
        peakFactor = decayFactor(0.6f, c.rate);
        lowBody.clear();
        highBody.clear();
        dcState = 0.0f;
        control(c);
        return true;
    }

    void release()
    {
        released = true;
        releaseChanged = true;
    }

    void control(const Controls& c)
    {
        const float loss = 0.02f + 0.48f * c.value[pluck::damping];
        const float fullLoss = released ? std::max(loss, 0.35f) : loss;
        const auto set = [this](Ramp& ramp, float target) { started ? ramp.jump(target) : ramp.aim(target); };
        if (c.changed || started || releaseChanged || c.pitchRatio != lastPitch)
        {
            lastPitch = c.pitchRatio;
            releaseChanged = false;
            const float seconds =
                released ? std::min(c.value[pluck::release], c.value[pluck::decay]) : c.value[pluck::decay];
            const float spread = std::exp2(0.5f * c.value[pluck::detune] / 1200.0f);
            const float ratios[numStrings] = {spread, 1.0f / spread, 2.0f};
            for (int i = 0; i < numStrings; ++i)
            {
                const float f =
                    std::clamp(frequency * c.pitchRatio * ratios[i], lowestFrequency, 0.2f * c.rate);
                // The line is shorter by the phase delay of the loss filter, (1 - s) + s z^-1, at the
                // fundamental.
                const float w = twoPi * f / c.rate;
                const float filterDelay =
                    std::atan2(fullLoss * std::sin(w), 1.0f - fullLoss + fullLoss * std::cos(w)) / w;
                const float delay = std::max(c.rate / f - filterDelay, 2.0f);
                if (started)
                    lines[i].delay.jump(delay);
                targets[i] = delay;
                feedback[i] = decayFactor(seconds, c.rate, c.rate / f);
            }
            bodyGain = StateVariableFilter::gainFor(c.value[pluck::bodyTone], c.rate);
            highBodyGain = StateVariableFilter::gainFor(2.13f * c.value[pluck::bodyTone], c.rate);
            dcShare = 1.0f - std::exp(-twoPi * 5.0f / c.rate);
        }
        for (int i = 0; i < numStrings; ++i)
            lines[i].delay.aim(targets[i]);
        set(lossShare, fullLoss);
        set(bodyLevel, c.value[pluck::body]);
        set(octaveLevel, 0.6f * c.value[pluck::octave]);
        set(width_, c.value[pluck::width]);
        set(pickup, c.value[pluck::position]);
        started = false;
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            float excitation = 0.0f;
            if (pulsePhase < 1.0f)
            {
                pulsePhase += pulseStep;
                excitation = sineOfTurns(pulsePhase) * (0.5f - 0.5f * sineOfTurns(pulsePhase + 0.25f));
            }
            if (scrapeLevel > 1.0e-4f)
            {
                scrapeSmooth += 0.3f * (noise.next() * scrapeLevel - scrapeSmooth);
                scrapeLevel *= scrapeFactor;
                excitation += scrapeSmooth;
            }
            const float loss = lossShare.next();
            const float place = pickup.next();
            float sounds[numStrings];
            for (int i = 0; i < numStrings; ++i)
            {
                auto& line = lines[i];
                const float delay = line.delay.next();
                const float x = line.read(delay);
                const float y = feedback[i] * ((1.0f - loss) * x + loss * line.previous) + excitation;
                line.previous = x;
                const int back = std::max(static_cast<int>(place * delay), 1);
                sounds[i] = y - 0.7f * line.at(back);
                line.write(y);
            }
            const float side = 0.5f * width_.next();
            const float octave = octaveLevel.next() * sounds[2];
            float l = (0.5f + side) * sounds[0] + (0.5f - side) * sounds[1] + octave;
            float r = (0.5f - side) * sounds[0] + (0.5f + side) * sounds[1] + octave;
            const float middle = 0.5f * (l + r);
            peak = std::max(std::abs(middle), peak * peakFactor);
            lowBody.process(middle, bodyGain, 0.35f);
            highBody.process(middle, highBodyGain, 0.3f);
            const float body = bodyLevel.next() * (0.5f * lowBody.band + 0.35f * highBody.band);
            dcState += dcShare * (middle - dcState);
            outLeft[s] = gain * (l + body - dcState);
            outRight[s] = gain * (r + body - dcState);
        }
        return peak > 2.0e-5f;
    }

private:
    StringLine lines[numStrings];
    Noise noise;
    StateVariableFilter lowBody, highBody;
    float frequency = 440.0f, gain = 0.0f, lastPitch = 0.0f;
    float targets[numStrings]{}, feedback[numStrings]{};
    float pulsePhase = 1.0f, pulseStep = 1.0f, scrapeLevel = 0.0f, scrapeFactor = 0.0f, scrapeSmooth = 0.0f;
    float bodyGain = 0.0f, highBodyGain = 0.0f, dcState = 0.0f, dcShare = 0.0f, peak = 0.0f,
          peakFactor = 0.0f;
    Ramp lossShare, bodyLevel, octaveLevel, width_, pickup;
    bool released = false, releaseChanged = false, started = false;
};

} // namespace

std::unique_ptr<VoiceEngine> makeStringEngine(int voicing)
{
    return std::make_unique<VoiceRow<StringVoice>>(voicing);
}

} // namespace quorel
