// SPDX-License-Identifier: GPL-3.0-or-later
// Synthesised drums. Each pad is a recipe for one voice: a swept sine, filtered noise or a metallic cluster.
// The kit lies on the eight notes from C to G of each octave; that of middle C (60) sounds at its own pitch.
#include "VoiceEngine.h"

namespace quorel
{

namespace
{

enum Pad
{
    kick,
    clap,
    snare,
    cowbell,
    closedHat,
    openHat,
    lowTom,
    highTom,
    numPads
};

struct Recipe
{
    float toneStart = 0.0f, toneEnd = 0.0f, sweep = 0.05f; ///< Hz, Hz, seconds
    float toneDecay = 0.1f, toneLevel = 0.0f, toneFm = 0.0f;
    float secondRatio = 0.0f; ///< a second sine, 0 for none
    float noiseDecay = 0.1f, noiseLevel = 0.0f;
    float metal = 0.0f; ///< share of the metallic cluster in the noise
    float metalBase = 400.0f;
    float filter = 1000.0f, damping = 1.0f;
    bool highPass = false;
    int bursts = 0; ///< repeats of the noise, 11 ms apart
    float pan = 0.0f;
};

/** Mutually inharmonic ratios: a cluster of square waves that hats and bells are made of. */
constexpr float cluster[] = {1.0f, 1.483f, 1.932f, 2.546f, 2.630f, 3.897f};

// The recipes of the pads at the kit's settings; `hard` ones are those of the FM kit.

Recipe kickRecipe(const Controls& c, bool hard)
{
    using namespace drums;
    Recipe r;
    r.toneEnd = c.value[kickTune];
    r.toneStart = r.toneEnd * (2.0f + (hard ? 9.0f : 4.0f) * c.value[kickPunch]);
    r.sweep = hard ? 0.035f : 0.06f;
    r.toneDecay = c.value[kickDecay];
    r.toneLevel = 1.0f;
    r.toneFm = hard ? 0.12f : 0.0f;
    r.noiseLevel = 0.5f * c.value[kickPunch];
    r.noiseDecay = 0.015f;
    r.filter = hard ? 3500.0f : 1800.0f;
    return r;
}

Recipe clapRecipe(const Controls& c, bool hard)
{
    using namespace drums;
    Recipe r;
    r.noiseLevel = 1.3f;
    r.noiseDecay = c.value[clapDecay];
    r.filter = hard ? 1700.0f : 1150.0f;
    r.damping = 0.5f;
    r.bursts = 3;
    r.pan = -0.3f;
    return r;
}

Recipe snareRecipe(const Controls& c, bool hard)
{
    using namespace drums;
    Recipe r;
    r.toneEnd = c.value[snareTune];
    r.toneStart = 1.6f * r.toneEnd;
    r.sweep = 0.03f;
    r.toneDecay = 0.7f * c.value[snareDecay];
    r.toneLevel = 0.65f;
    r.secondRatio = hard ? 2.21f : 1.59f;
    r.toneFm = hard ? 0.2f : 0.0f;
    r.noiseLevel = 1.1f * c.value[snareSnap];
    r.noiseDecay = c.value[snareDecay];
    r.filter = hard ? 3800.0f : 2400.0f;
    r.damping = 1.4f;
    r.highPass = hard;
    return r;
}

Recipe cowbellRecipe(const Controls& c, bool hard)
{
    using namespace drums;
    Recipe r;
    r.metal = 1.0f;
    r.metalBase = c.value[bellTune];
    r.noiseLevel = 1.0f;
    r.noiseDecay = hard ? 0.35f : 0.5f;
    r.filter = 2.2f * r.metalBase;
    r.damping = 0.6f;
    r.pan = 0.35f;
    return r;
}

Recipe hatRecipe(const Controls& c, bool hard, bool open)
{
    using namespace drums;
    Recipe r;
    r.metal = hard ? 0.95f : 0.7f;
    r.metalBase = hard ? 610.0f : 420.0f;
    r.noiseLevel = 0.8f;
    r.noiseDecay = c.value[hatDecay] * (open ? 7.0f : 1.0f);
    r.filter = c.value[hatTone];
    r.damping = 0.9f;
    r.highPass = true;
    r.pan = 0.4f;
    return r;
}

Recipe tomRecipe(const Controls& c, bool hard, bool high)
{
    using namespace drums;
    Recipe r;
    r.toneEnd = c.value[tomTune] * (high ? 1.5f : 1.0f);
    r.toneStart = r.toneEnd * (hard ? 2.6f : 1.7f);
    r.sweep = hard ? 0.12f : 0.08f;
    r.toneDecay = c.value[tomDecay];
    r.toneLevel = 0.95f;
    r.toneFm = hard ? 0.06f : 0.0f;
    r.noiseLevel = 0.25f;
    r.noiseDecay = 0.05f;
    r.filter = 900.0f;
    r.pan = high ? 0.25f : -0.45f;
    return r;
}

Recipe recipeOf(int pad, const Controls& c, bool hard)
{
    switch (pad)
    {
    case kick:
        return kickRecipe(c, hard);
    case clap:
        return clapRecipe(c, hard);
    case snare:
        return snareRecipe(c, hard);
    case cowbell:
        return cowbellRecipe(c, hard);
    case closedHat:
    case openHat:
        return hatRecipe(c, hard, pad == openHat);
    default:
        return tomRecipe(c, hard, pad == highTom);
    }
}

class DrumVoice
{
public:
    explicit DrumVoice(int voicing)
        : hard(voicing == 1)
    {
    }

    void prepare(float) {}

    bool start(const NoteStart& note, const Controls& c)
    {
        const int pad = note.note % 12;
        if (pad >= numPads)
            return false;
        recipe = recipeOf(pad, c, hard);
        // Each octave plays the same kit, a minor third above the one below it.
        const int octave = note.note / 12 - 5;
        transpose = std::exp2(0.25f * static_cast<float>(octave));
        noise.state = note.seed;
        gain = velocityGain(note.velocity, c.value[drums::velocity]);
        snap = 0.5f + 0.5f * note.velocity;
        drive = 1.0f + 5.0f * c.value[drums::drive] * (hard ? 1.4f : 1.0f);
        const float side = recipe.pan * c.value[drums::width];
        leftGain = (1.0f - side) * gain / std::sqrt(drive);
        rightGain = (1.0f + side) * gain / std::sqrt(drive);
        tonePhase = secondPhase = 0.0f;
        for (std::size_t i = 0; i < std::size(cluster); ++i)
            metals[i].phase = 0.13f * static_cast<float>(i);
        filter.clear();
        toneLevel = noiseLevel = sweepLevel = 1.0f;
        toneSmooth = noiseSmooth = 0.0f;
        toneFactor = decayFactor(recipe.toneDecay, c.rate);
        // The bursts of a clap are short; only its tail has the decay that was set.
        noiseFactor = decayFactor(recipe.bursts > 0 ? 0.03f : recipe.noiseDecay, c.rate);
        tailFactor = decayFactor(recipe.noiseDecay, c.rate);
        sweepFactor = decayFactor(2.5f * recipe.sweep, c.rate);
        smoothShare = 1.0f - std::exp(-1.0f / (0.0004f * c.rate));
        burstsLeft = recipe.bursts;
        burstLength = static_cast<int>(0.011f * c.rate) + 1;
        burstCount = burstLength;
        control(c);
        return true;
    }

    void release() {}

    void control(const Controls& c)
    {
        step = transpose * c.pitchRatio / c.rate;
        filterGain = StateVariableFilter::gainFor(recipe.filter * (0.5f + 0.5f * transpose), c.rate);
    }

    bool render(float* outLeft, float* outRight, int n)
    {
        for (int s = 0; s < n; ++s)
        {
            float sum = 0.0f;
            toneSmooth += smoothShare * (toneLevel - toneSmooth);
            if (recipe.toneLevel > 0.0f)
            {
                const float hz = recipe.toneEnd + (recipe.toneStart - recipe.toneEnd) * sweepLevel;
                const float bent = recipe.toneFm * toneLevel * sineOfTurns(1.41f * tonePhase);
                sum = recipe.toneLevel * toneSmooth * sineOfTurns(tonePhase + bent);
                if (recipe.secondRatio > 0.0f)
                    sum += 0.45f * recipe.toneLevel * toneSmooth * toneLevel * sineOfTurns(secondPhase);
                tonePhase += std::min(hz * step, highestFrequency);
                secondPhase += std::min(hz * recipe.secondRatio * step, highestFrequency);
                decayBy(sweepLevel, sweepFactor);
                decayBy(toneLevel, toneFactor);
            }
            else
            {
                toneLevel = 0.0f;
            }
            noiseSmooth += smoothShare * (noiseLevel - noiseSmooth);
            float hiss = (1.0f - recipe.metal) * noise.next();
            if (recipe.metal > 0.0f)
            {
                const std::size_t used = recipe.highPass ? std::size(cluster) : 2;
                float clang = 0.0f;
                for (std::size_t i = 0; i < used; ++i)
                    clang += metals[i].next(std::min(recipe.metalBase * cluster[i] * step, highestFrequency),
                                            1.0f, 0.5f);
                hiss += recipe.metal * clang * (recipe.highPass ? 0.4f : 0.5f);
            }
            filter.process(hiss, filterGain, recipe.damping);
            sum += recipe.noiseLevel * snap * noiseSmooth * (recipe.highPass ? filter.high : filter.band);
            decayBy(noiseLevel, noiseFactor);
            if (burstsLeft > 0 && --burstCount == 0)
            {
                burstCount = burstLength;
                noiseLevel = 1.0f;
                if (--burstsLeft == 0)
                    noiseFactor = tailFactor;
            }
            sum = saturate(drive * 0.7f * sum) * 1.4f;
            outLeft[s] = sum * leftGain;
            outRight[s] = sum * rightGain;
        }
        return toneLevel > 1.0e-4f || toneSmooth > 1.0e-4f || noiseLevel > 1.0e-4f || noiseSmooth > 1.0e-4f;
    }

private:
    bool hard;
    Recipe recipe;
    Noise noise;
    StateVariableFilter filter;
    Oscillator metals[std::size(cluster)];
    float transpose = 1.0f, gain = 0.0f, snap = 1.0f, drive = 1.0f, leftGain = 0.0f, rightGain = 0.0f;
    float tonePhase = 0.0f, secondPhase = 0.0f, step = 0.0f, filterGain = 0.1f;
    float toneLevel = 0.0f, noiseLevel = 0.0f, sweepLevel = 0.0f, toneSmooth = 0.0f, noiseSmooth = 0.0f;
    float toneFactor = 0.0f, noiseFactor = 0.0f, tailFactor = 0.0f, sweepFactor = 0.0f, smoothShare = 1.0f;
    int burstsLeft = 0, burstLength = 1, burstCount = 1;
};

class DrumEngine : public VoiceRow<DrumVoice>
{
public:
    using VoiceRow<DrumVoice>::VoiceRow;

    /** A hat is one pair of cymbals: closing it ends the open sound. */
    bool cutsOff(int newNote, int soundingNote) const override
    {
        return newNote == soundingNote || (newNote % 12 == closedHat && soundingNote % 12 == openHat);
    }
};

} // namespace

std::unique_ptr<VoiceEngine> makeDrumEngine(int voicing)
{
    return std::make_unique<DrumEngine>(voicing);
}

} // namespace quorel
