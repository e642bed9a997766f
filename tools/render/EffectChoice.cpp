// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectChoice.h"

#include "common/NearNames.h"
#include "effects/FxTypes.h"
#include "parameters/ParameterLayout.h"

#include <charconv>
#include <cmath>

namespace quorel
{

namespace
{
constexpr int listWidth = 100;
constexpr int labelColumn = 22;

/** A finite decimal number and nothing else, whatever the user's language. */
std::optional<double> parseNumber(const juce::String& text)
{
    const auto digits = text.trim().toStdString();
    const auto* last = digits.data() + digits.size();
    double number = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), last, number);
    if (error != std::errc() || end != last || !std::isfinite(number))
        return {};
    return number;
}

/** 0 to `count` - 1 from a single digit of 1 to `count`, else -1. */
int parseNumberFromOne(const juce::String& text, int count)
{
    const auto digits = text.trim();
    const int number = digits.length() == 1 ? digits.getIntValue() : 0;
    return number <= count ? number - 1 : -1;
}

/** Row of the type table by its name or its number, -1 if there is none. */
int parseType(const juce::String& text)
{
    for (int type = 0; type < fxTypeCount; ++type)
        if (text.equalsIgnoreCase(fxTypes[static_cast<std::size_t>(type)].name))
            return type;
    const bool isNumber = text.isNotEmpty() && text.length() <= 2 && text.containsOnly("0123456789");
    return isNumber && text.getIntValue() < fxTypeCount ? text.getIntValue() : -1;
}

juce::Result notAUnitValue(const juce::String& what, const juce::String& text)
{
    return juce::Result::fail(what + " takes a value from 0 to 1, not \"" + text.trim() + "\"");
}

juce::Result parseValues(const juce::String& text, EffectChoice& choice)
{
    const auto texts = juce::StringArray::fromTokens(text, ",", {});
    if (texts.size() > fxParameterCount)
        return juce::Result::fail("an effect takes at most " + juce::String(fxParameterCount) +
                                  " values, not " + juce::String(texts.size()));
    for (const auto& one : texts)
    {
        const auto value = parseUnitValue(one);
        if (!value.has_value())
            return notAUnitValue("an effect's parameter", one);
        choice.values.push_back(*value);
    }
    return juce::Result::ok();
}

juce::Result parseControls(const juce::String& text, EffectChoice& choice)
{
    for (const auto& one : juce::StringArray::fromTokens(text, ",", {}))
    {
        const auto name = one.upToFirstOccurrenceOf("=", false, false).trim().toLowerCase();
        const auto valueText = one.fromFirstOccurrenceOf("=", false, false);
        auto* control = name == "mix"     ? &choice.mix
                        : name == "pan"   ? &choice.pan
                        : name == "level" ? &choice.level
                                          : nullptr;
        if (control == nullptr)
            return juce::Result::fail("an effect has the controls mix, pan and level, not \"" + one.trim() +
                                      "\"");
        *control = parseUnitValue(valueText);
        if (!control->has_value())
            return notAUnitValue("an effect's " + name, valueText);
    }
    return juce::Result::ok();
}
} // namespace

std::optional<double> parseQuotient(const juce::String& text)
{
    if (!text.containsChar('/'))
        return parseNumber(text);
    const auto numerator = parseNumber(text.upToFirstOccurrenceOf("/", false, false));
    const auto denominator = parseNumber(text.fromFirstOccurrenceOf("/", false, false));
    if (!numerator.has_value() || !denominator.has_value() || *denominator <= 0.0)
        return {};
    return *numerator / *denominator;
}

std::optional<float> parseUnitValue(const juce::String& text)
{
    const auto value = parseQuotient(text);
    if (!value.has_value() || !(*value >= 0.0) || !(*value <= 1.0))
        return {};
    return static_cast<float>(*value);
}

juce::Result parseEffectChoice(const juce::String& text, EffectChoice& choice)
{
    choice = {};
    choice.block = parseNumberFromOne(text.upToFirstOccurrenceOf("=", false, false), numFxBlocks);
    auto sections = juce::StringArray::fromTokens(text.fromFirstOccurrenceOf("=", false, false), ":", {});
    if (!text.containsChar('=') || choice.block < 0 || sections.isEmpty())
        return juce::Result::fail(
            "an effect is given as N=TYPE[:VALUES][:mix=..,pan=..,level=..] with N from 1 "
            "to " +
            juce::String(numFxBlocks) + ", not as \"" + text + "\"");
    choice.type = parseType(sections[0].trim());
    if (choice.type < 0)
    {
        juce::StringArray names;
        for (const auto& type : fxTypes)
            names.add(type.name);
        return juce::Result::fail("unknown effect \"" + sections[0].trim() + "\"" +
                                  didYouMean(sections[0], names) + " (see --list-effects)");
    }

    sections.remove(0);
    if (!sections.isEmpty() && !sections[0].containsChar('='))
    {
        if (const auto result = parseValues(sections[0], choice); result.failed())
            return result;
        sections.remove(0);
    }
    if (sections.size() > 1)
        return juce::Result::fail("an effect has its values first, then its controls, no more: \"" + text +
                                  "\"");
    return sections.isEmpty() ? juce::Result::ok() : parseControls(sections[0], choice);
}

juce::Result parseSendChoice(const juce::String& text, SendChoice& choice)
{
    const auto place = text.upToFirstOccurrenceOf("=", false, false);
    auto level = text.fromFirstOccurrenceOf("=", false, false).trim();
    choice.isPreFader = level.endsWithIgnoreCase("pre");
    if (choice.isPreFader)
        level = level.dropLastCharacters(3);
    choice.layer = parseNumberFromOne(place.upToFirstOccurrenceOf(":", false, false), numLayers);
    choice.send = parseNumberFromOne(place.fromFirstOccurrenceOf(":", false, false), numSends);
    const auto value = parseUnitValue(level);
    if (choice.layer < 0 || choice.send < 0 || !value.has_value())
        return juce::Result::fail(
            "a send is given as LAYER:N=LEVEL or LAYER:N=LEVELpre with LAYER and N from "
            "1 to 4 and LEVEL from 0 to 1, not as \"" +
            text + "\"");
    choice.level = *value;
    return juce::Result::ok();
}

juce::String effectList()
{
    juce::String list;
    for (int type = 0; type < fxTypeCount; ++type)
    {
        const auto& row = fxTypes[static_cast<std::size_t>(type)];
        juce::String line = juce::String(type).paddedLeft(' ', 2) + "  " + row.name;
        for (int j = 0; j < fxParameterCount; ++j)
        {
            const juce::String label = row.parameters[static_cast<std::size_t>(j)].label;
            if (label == "-")
                break;
            line = j == 0 ? line.paddedRight(' ', labelColumn) : line + ",";
            // A comma may follow.
            if (line.length() + 1 + label.length() + 1 > listWidth)
            {
                list << line << '\n';
                line = juce::String::repeatedString(" ", labelColumn - 1);
            }
            line << (j == 0 ? "" : " ") << label;
        }
        list << line << '\n';
    }
    return list;
}

} // namespace quorel
