// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectSection.h"

#include "LineReading.h"
#include "ParameterWords.h"

#include "effects/FxTypes.h"

namespace quorel::bank
{

namespace
{
constexpr int numSteps = 16;

/** Sixteen steps, "x" for open and "-" for shut, as the Kappel stores them: the first step in the lowest bit.
    */
std::optional<float> stepPattern(const juce::String& text)
{
    const auto steps = text.removeCharacters(" ");
    if (steps.length() != numSteps || !steps.containsOnly("xX-"))
        return {};
    int mask = 0;
    for (int i = 0; i < numSteps; ++i)
        mask |= steps[i] == '-' ? 0 : 1 << i;
    return static_cast<float>((static_cast<double>(mask) + 0.5) / 65535.9);
}

void setEffectParameter(SoundWriter& sound, int block, int type, const TextLine& line)
{
    constexpr int kappelLeftSteps = 5;
    constexpr int kappelRightSteps = 6;
    const auto& row = fxTypes[static_cast<std::size_t>(type)];
    const bool isKappel = juce::String(row.name) == "Kappel";

    if (is(line, "Mix"))
        return sound.set(slot::fxMix + block, need(percentValue(line.value), line, "0 to 100 %"));
    if (is(line, "Level"))
        return sound.set(slot::fxVolume + block, need(effectLevelValue(line.value), line, "-60 to +20 db"));
    if (is(line, "Balance"))
        return sound.set(slot::fxPan + block, need(centredValue(line.value), line, "-100 to +100"));
    if (isKappel && (is(line, "Left Steps") || is(line, "Right Steps")))
        return sound.set(fxParameter(block, is(line, "Left Steps") ? kappelLeftSteps : kappelRightSteps),
                         need(stepPattern(line.value), line, "sixteen steps such as x--- x--- x--- x-x-"));
    for (int j = 0; j < numFxParameters; ++j)
        if (const auto* label = row.parameters[static_cast<std::size_t>(j)].label;
            juce::String(label) != "-" && is(line, label))
            return sound.setShowing(fxParameter(block, j), line.value, line);
    fail(line, juce::String(row.name) + " has no \"" + line.key + "\"");
}
} // namespace

void setEffect(SoundWriter& sound, int block, const TextSection& section)
{
    if (section.lines.empty() || !is(section.lines.front(), "Type"))
        throw TextError(section.number, "an effect starts with its Type");
    const auto& typeLine = section.lines.front();
    int type = 0;
    while (type < fxTypeCount &&
           !typeLine.value.equalsIgnoreCase(fxTypes[static_cast<std::size_t>(type)].name))
        ++type;
    if (type == fxTypeCount)
        fail(typeLine, "no effect \"" + typeLine.value + "\"");
    sound.set(slot::fxOn + block, 1.0f);
    sound.set(slot::fxType + block, stepValue(type, 0, fxTypeCount - 1));

    const auto& parameters = fxTypes[static_cast<std::size_t>(type)].parameters;
    for (int j = 0; j < numFxParameters; ++j)
    {
        const int index = fxParameter(block, j);
        const bool isLowPass = juce::String(parameters[static_cast<std::size_t>(j)].label) == "LP Filter";
        sound.set(index, isLowPass ? 1.0f : restingValue([&](float v) { return sound.shownAt(index, v); }));
    }

    // These first: where a block is synced, a length or speed is shown as a note value. AutoPan shows its
    // speed by its Amount instead.
    const auto decides = [](const TextLine& line) { return is(line, "Sync") || is(line, "Amount"); };
    for (const bool deciding : {true, false})
        for (std::size_t i = 1; i < section.lines.size(); ++i)
            if (decides(section.lines[i]) == deciding)
                setEffectParameter(sound, block, type, section.lines[i]);
}

} // namespace quorel::bank
