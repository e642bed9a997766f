// SPDX-License-Identifier: GPL-3.0-or-later
// One rule for each parameter of each effect type. A rule follows the mapping of the type's update function;
// products are taken in float as there, so that text and sound change over at the same position of a knob.
#include "parameters/FxParameterText.h"

#include "effects/EffectMath.h"
#include "effects/SyncTables.h"

#include <charconv>
#include <cmath>

namespace quorel
{

namespace
{
/** A rule reads value `v` of a parameter in its block; `a` and `b` are the rule's own numbers. */
struct TextRule
{
    using Function = juce::String (*)(float v, const FxParameterValues& block, int a, int b);

    Function text = nullptr;
    int a = 0;
    int b = 0;
};

double powerOfTwo(float exponent)
{
    return std::exp2(static_cast<double>(exponent));
}

constexpr std::array<const char*, 2> offOn{"Off", "On"};
constexpr std::array<const char*, 3> offOnAuto{"Off", "On", "Auto"};
constexpr std::array<const char*, 3> sides{"Left & Right", "Left only", "Right only"};
constexpr std::array<const char*, 5> waves{"Sine", "Triangle", "Saw up", "Saw down", "Square"};
constexpr std::array<const char*, 5> ringWaves{"Sine", "Saw", "Sqr", "Tri", "L+R"};
constexpr std::array<const char*, 5> vowels{"A", "E", "I", "O", "U"};
constexpr std::array<const char*, 6> amps{"None", "4x10", "4x12", "Bass", "Combo", "Radio"};
constexpr std::array<const char*, 4> cabinets{"None", "Fender", "Marshall", "Off Axis"};
constexpr std::array<const char*, 12> distortions{"None",     "Atan",      "Cos",       "Cross",
                                                  "Foldover", "Fuzz",      "Limiter",   "Overdrive",
                                                  "Power",    "Rectifier", "Saturator", "Square"};
// The control reaches one entry further than the filter core has types: the last one plays the ring again.
constexpr std::array<const char*, 30> filters{
    "Bypass", "6 LP",  "6 HP",  "12 LP",  "12 HP",  "12 BP", "12 N",  "12 LP2", "12 HP2", "12 BP2",
    "12 N2",  "18 LP", "18 HP", "24 LP",  "24 HP",  "24 BP", "24 N",  "24 LP2", "24 HP2", "24 BP2",
    "24 N2",  "36 LP", "36 HP", "Comb +", "Comb -", "Vox",   "Form2", "Form4",  "Ring",   "Ring"};

template <const auto& labels>
juce::String choiceText(float v, const FxParameterValues&, int, int)
{
    constexpr auto span = static_cast<float>(static_cast<double>(labels.size()) - 0.01);
    return labels[static_cast<size_t>(discreteChoice(v, span))];
}

juce::String percentText(float v, const FxParameterValues&, int, int)
{
    return fixedText(static_cast<double>(v * 100.0f), 0) + " %";
}

juce::String signedPercentText(float v, const FxParameterValues&, int, int)
{
    return signedFixedText(static_cast<double>(v * 200.0f - 100.0f), 0) + " %";
}

juce::String offsetPercentText(float v, const FxParameterValues&, int, int)
{
    return fixedText(static_cast<double>(v * 200.0f - 100.0f), 0) + " %";
}

juce::String frequencyText(float v, const FxParameterValues&, int, int)
{
    const double hz = powerOfTwo(v * 10.0f) * 20.0;
    return hz < 1000.0 ? fixedText(hz, 0) + " Hz" : fixedText(hz / 1000.0, 1) + " kHz";
}

juce::String bassFrequencyText(float v, const FxParameterValues&, int, int)
{
    return fixedText(powerOfTwo(v * 6.0f) * 10.0, 0) + " hz";
}

/** Free speed of an LFO: at most 13.75 Hz. */
juce::String rateText(float v, const FxParameterValues&, int, int)
{
    if (v < 0.0001f)
        return "off";

    return fixedText(powerOfTwo(v * 10.0f) * 55.0 / 4096.0, 2) + " hz";
}

juce::String switchText(float v, const FxParameterValues&, int, int)
{
    return v < 0.5f ? "Off" : "On";
}

juce::String syncedDelayText(float v, const FxParameterValues&, int, int)
{
    return delaySyncTable[static_cast<size_t>(discreteChoice(v, 14.99f))].label;
}

/** `sync` is the parameter that switches the block to note lengths. */
juce::String delayText(float v, const FxParameterValues& block, int sync, int)
{
    if (block[static_cast<size_t>(sync)] > 0.5f)
        return syncedDelayText(v, block, 0, 0);

    return fixedText(powerOfTwo(v * 12.0f), 0) + " ms";
}

juce::String noteText(float v, const FxParameterValues&, int, int)
{
    return lfoSyncTable[static_cast<size_t>(lfoSyncIndex(v))].label;
}

juce::String speedText(float v, const FxParameterValues& block, int sync, int)
{
    return block[static_cast<size_t>(sync)] >= 0.5f ? noteText(v, block, 0, 0) : rateText(v, block, 0, 0);
}

/** Takes "Amount" (parameter 1) for its sync: from an eighth on the speed reads as a note, whatever "Sync"
    says. */
juce::String autoPanSpeedText(float v, const FxParameterValues& block, int, int)
{
    return block[1] * 4.0f >= 0.5f ? noteText(v, block, 0, 0) : rateText(v, block, 0, 0);
}

juce::String modulationDelayText(float v, const FxParameterValues&, int, int)
{
    return fixedText(static_cast<double>(v * 50.0f), 1) + " ms";
}

juce::String stagesText(float v, const FxParameterValues&, int, int)
{
    return juce::String(1 + discreteChoice(v, 7.99f));
}

juce::String boostText(float v, const FxParameterValues&, int, int)
{
    return signedFixedText(static_cast<double>(v * 40.0f - 20.0f), 0) + " db";
}

juce::String decibelText(float v, const FxParameterValues&, int range, int offset)
{
    const float x = v * static_cast<float>(range) - static_cast<float>(offset);
    return (x > 0.0f ? "+" : "") + fixedText(static_cast<double>(x), 1) + " dB";
}

juce::String bitsText(float v, const FxParameterValues&, int, int)
{
    return juce::String(16 - discreteChoice(v, 15.99f));
}

juce::String heldRateText(float v, const FxParameterValues&, int, int)
{
    return juce::String(44100 / static_cast<int>(powerOfTwo(v * 5.0f)));
}

juce::String preDelayText(float v, const FxParameterValues&, int, int)
{
    return fixedText((powerOfTwo(v * 10.0f) - 1.0) * 0.5, 1) + " ms";
}

juce::String roomSizeText(float v, const FxParameterValues&, int, int)
{
    return fixedText(static_cast<double>(std::floor(v * 30.75f + 1.0f) * 0.25f), 2) + " m";
}

juce::String reverbLengthText(float v, const FxParameterValues&, int, int)
{
    return juce::String(static_cast<int>(powerOfTwo(v * 8.0f - 6.0f) * 100.0)) + " %";
}

juce::String timeText(float v, const FxParameterValues&, int, int)
{
    return fixedText(powerOfTwo(v * 14.0f), 0) + " ms";
}

juce::String envelopeText(float v, const FxParameterValues&, int, int)
{
    if (v < 0.001f)
        return "Off";

    const double ms = std::exp2(static_cast<double>(v) * std::log2(256.5)) - 0.5;
    return fixedText(ms, ms < 100.0 ? 2 : 0) + " ms";
}

juce::String ratioText(float v, const FxParameterValues&, int, int)
{
    if (v <= 0.0f)
        return "None";

    return v >= 1.0f ? juce::String("Limiter") : "Ratio " + fixedText(powerOfTwo(v * 7.0f), 0) + ":1";
}

juce::String wahTypeText(float v, const FxParameterValues&, int, int)
{
    return v < 0.5f ? "LowPass" : "BandPass";
}

constexpr TextRule none{};
constexpr TextRule pct{percentText};
constexpr TextRule spct{signedPercentText};
constexpr TextRule opct{offsetPercentText};
constexpr TextRule hz{frequencyText};
constexpr TextRule bassHz{bassFrequencyText};
constexpr TextRule rate{rateText};
constexpr TextRule onOff{switchText};
constexpr TextRule flag{choiceText<offOn>};
constexpr TextRule dlyS{syncedDelayText};
constexpr TextRule note{noteText};
constexpr TextRule ms50{modulationDelayText};
constexpr TextRule stages{stagesText};
constexpr TextRule db20{boostText};
constexpr TextRule bits{bitsText};
constexpr TextRule srate{heldRateText};
constexpr TextRule predly{preDelayText};
constexpr TextRule size{roomSizeText};
constexpr TextRule rlen{reverbLengthText};
constexpr TextRule time{timeText};
constexpr TextRule env{envelopeText};
constexpr TextRule ratio{ratioText};
constexpr TextRule wave{choiceText<waves>};
constexpr TextRule ringw{choiceText<ringWaves>};
constexpr TextRule vowel{choiceText<vowels>};
constexpr TextRule mode3{choiceText<offOnAuto>};
constexpr TextRule side{choiceText<sides>};
constexpr TextRule amp{choiceText<amps>};
constexpr TextRule cab{choiceText<cabinets>};
constexpr TextRule dist{choiceText<distortions>};
constexpr TextRule filt{choiceText<filters>};
constexpr TextRule lpbp{wahTypeText};
constexpr TextRule panSpd{autoPanSpeedText};

constexpr TextRule dly(int sync)
{
    return {delayText, sync, 0};
}

constexpr TextRule spd(int sync)
{
    return {speedText, sync, 0};
}

constexpr TextRule dB(int range, int offset)
{
    return {decibelText, range, offset};
}

using TypeRules = std::array<TextRule, fxParameterCount>;

constexpr TypeRules monoDelay{dly(1), onOff, spct, hz, hz, pct, pct, rate};
constexpr TypeRules stereoDelay{dly(2), dly(2), flag, spct, spct, flag, hz, hz, pct, rate};
constexpr TypeRules chorus{ms50, pct, spd(3), flag, pct, pct, hz, hz};
constexpr TypeRules flanger{ms50, pct, spd(3), flag, spct, pct, hz, hz};

constexpr std::array<TypeRules, fxTypeCount> rules{{
    {}, // 0 None
    monoDelay,
    stereoDelay,
    monoDelay,                                                      // 3 Mono Tape Delay
    stereoDelay,                                                    // 4 Stereo Tape Delay
    {hz, spct, pct, note, hz, spct, pct, note},                     // 5 Comb Filter
    {predly, size, rlen, pct, pct, hz, hz, dB(40, 40), time, time}, // 6 HQ Reverb
    chorus,                                                         // 7 Chorus
    chorus,                                                         // 8 Tape Chorus
    {ms50, pct, spd(3), flag, pct, dlyS, pct, pct},                 // 9 Chorus / Delay
    {ms50, pct, spd(3), flag, pct, pct, pct, hz, hz},               // 10 Ensemble
    flanger,                                                        // 11 Flanger
    flanger,                                                        // 12 Tape Flanger
    {stages, hz, pct, pct, spd(5), flag, pct, pct},                 // 13 Phaser
    {stages, hz, pct, pct, spd(5), flag, pct, pct, pct},            // 14 Ana. Phaser
    {ringw, hz, pct},                                               // 15 Ring-Mod
    {pct, spct, pct, hz, pct, db20, spct},                          // 16 Distort
    {dist, dB(60, 30), pct, pct, pct, hz, hz, dB(60, 30)},          // 17 Multi Distort
    {bits, srate, hz, spct},                                        // 18 Low Fi
    {pct, pct, spct, hz, pct, note},                                // 19 Waveshaper
    {dB(60, 30), hz, pct, opct, hz, hz, dB(60, 30)},                // 20 Clipper
    {amp, pct, dB(40, 20), dB(40, 20), dB(40, 20)},                 // 21 Amp Sim
    {cab, pct, dB(40, 20), dB(40, 20), dB(40, 20)},                 // 22 Cabinet
    {pct, pct, rate, hz, hz},                                       // 23 Widener
    {wave, pct, none, panSpd, flag},                                // 24 AutoPan
    {wave, pct, none, spd(4), flag},                                // 25 Tremelo
    {note, pct, side, mode3, pct},                                  // 26 Kappel
    {dB(40, 40), ratio, env, env, dB(40, 20)},                      // 27 Compressor
    {dB(40, 40), env, time, time},                                  // 28 Noise-Gate
    {filt, pct, hz, pct, vowel, wave, pct, spd(8), flag, opct},     // 29 Filter
    {bassHz, dB(30, 30), pct, dB(60, 30)},                          // 30 Bass
    {hz, hz, wave, none, spd(5), flag, pct, dlyS, pct, pct},        // 31 WahWah Delay
    // Both frequencies read in percent, and always have.
    {lpbp, pct, pct, pct, pct, pct}, // 32 AutoWah
}};

/** Neither streams nor printf: both take the decimal point from a locale that the host may set at any time.
 */
juce::String numberText(double value, std::chars_format format, int precision)
{
    // Enough for every finite double in fixed notation.
    std::array<char, 512> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return juce::String(buffer.data(), static_cast<size_t>(result.ptr - buffer.data()));
}
} // namespace

juce::String fixedText(double value, int decimals)
{
    return numberText(value, std::chars_format::fixed, decimals);
}

juce::String signedFixedText(double value, int decimals)
{
    const auto digits = fixedText(value, decimals);
    return digits.startsWithChar('-') ? digits : "+" + digits;
}

juce::String shortText(double value)
{
    return numberText(value, std::chars_format::general, 6);
}

juce::String fxParameterText(int type, int j, const FxParameterValues& values)
{
    if (type < 0 || type >= fxTypeCount || j < 0 || j >= fxParameterCount)
        return "-";

    const auto slot = static_cast<size_t>(j);
    const TextRule& rule = rules[static_cast<size_t>(type)][slot];
    return rule.text == nullptr ? juce::String("-")
                                : rule.text(clampUnit(values[slot]), values, rule.a, rule.b);
}

} // namespace quorel
