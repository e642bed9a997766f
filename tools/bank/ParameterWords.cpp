// SPDX-License-Identifier: GPL-3.0-or-later
#include "ParameterWords.h"

#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"

#include <charconv>
#include <cmath>

namespace quorel
{

namespace
{
constexpr int octaveOfKeyZero = -2;
constexpr int searchSteps = 8192;
constexpr double nearEnough = 0.02;

/** A number and what follows it; kilohertz count as hertz. */
struct Quantity
{
    double number = 0.0;
    juce::String unit;
};

std::optional<Quantity> quantityOf(const juce::String& text)
{
    const auto bytes = text.removeCharacters(" ").toLowerCase().toStdString();
    const char* first = bytes.data();
    const char* last = first + bytes.size();
    if (first != last && *first == '+')
        ++first;
    Quantity quantity;
    const auto [end, error] = std::from_chars(first, last, quantity.number);
    if (error != std::errc() || !std::isfinite(quantity.number))
        return {};
    quantity.unit = juce::String(end, static_cast<std::size_t>(last - end));
    if (quantity.unit == "khz")
        quantity = {quantity.number * 1000.0, "hz"};
    return quantity;
}

juce::String plain(const juce::String& text)
{
    return text.removeCharacters(" ").toLowerCase();
}

std::optional<float> unitValue(double value)
{
    return value >= 0.0 && value <= 1.0 ? std::optional<float>(static_cast<float>(value)) : std::nullopt;
}
} // namespace

std::optional<double> numberOf(const juce::String& text)
{
    return numberWithUnit(text, {});
}

std::optional<double> numberWithUnit(const juce::String& text, const juce::String& unit)
{
    const auto quantity = quantityOf(text);
    if (!quantity || (quantity->unit.isNotEmpty() && !quantity->unit.equalsIgnoreCase(unit)))
        return {};
    return quantity->number;
}

std::optional<int> keyNumber(const juce::String& text)
{
    static constexpr const char* letters = "C D EF G A B";
    const auto name = text.trim();
    int key = -1;
    if (name.isNotEmpty() && name.containsOnly("0123456789") && name.length() <= 3)
    {
        key = name.getIntValue();
    }
    else
    {
        const int letter = juce::String(letters).indexOfChar(name.toUpperCase()[0]);
        const bool sharp = name[1] == '#';
        const auto octave = numberOf(name.substring(sharp ? 2 : 1));
        if (letter < 0 || name[0] == ' ' || !octave || *octave != std::floor(*octave) ||
            std::abs(*octave) > 10.0)
            return {};
        key = letter + (sharp ? 1 : 0) + 12 * (static_cast<int>(*octave) - octaveOfKeyZero);
    }
    return key >= 0 && key <= 127 ? std::optional<int>(key) : std::nullopt;
}

std::optional<std::pair<int, int>> rangeOf(const juce::String& text,
                                           const std::function<std::optional<int>(const juce::String&)>& read)
{
    if (const auto both = read(text.trim()))
        return std::pair{*both, *both};
    // A minus sign may belong to an octave: the range's own dash has blanks around it.
    const auto low = read(text.upToFirstOccurrenceOf(" - ", false, false).trim());
    const auto high = read(text.fromFirstOccurrenceOf(" - ", false, false).trim());
    if (!low || !high || *low > *high)
        return {};
    return std::pair{*low, *high};
}

float stepValue(int number, int low, int high)
{
    return number >= high ? 1.0f
                          : static_cast<float>((static_cast<double>(number - low) + 0.5) /
                                               static_cast<double>(high - low));
}

std::optional<float> faderValue(const juce::String& text)
{
    if (text.trim().equalsIgnoreCase("off"))
        return 0.0f;
    const auto level = numberWithUnit(text, "db");
    return level ? unitValue(faderPositionOfDecibels(*level)) : std::nullopt;
}

std::optional<float> effectLevelValue(const juce::String& text)
{
    const auto level = numberWithUnit(text, "db");
    const auto& range = parameterInfo(slot::fxVolume).coding;
    return level ? unitValue((*level - range.low) / (range.high - range.low)) : std::nullopt;
}

std::optional<float> centredValue(const juce::String& text)
{
    const auto number = numberWithUnit(text, "%");
    return number ? unitValue(*number / 200.0 + 0.5) : std::nullopt;
}

std::optional<float> percentValue(const juce::String& text)
{
    const auto number = numberWithUnit(text, "%");
    return number ? unitValue(*number / 100.0) : std::nullopt;
}

std::optional<float> valueShowing(const juce::String& wanted,
                                  const std::function<juce::String(float)>& textAt)
{
    const auto target = plain(wanted);
    const auto quantity = quantityOf(wanted);
    int first = -1;
    int last = -1;
    double nearest = quantity ? nearEnough * std::abs(quantity->number) : 0.0;
    std::optional<float> nearestValue;
    for (int step = 0; step <= searchSteps; ++step)
    {
        const float value = static_cast<float>(step) / static_cast<float>(searchSteps);
        const auto shown = textAt(value);
        if (plain(shown) == target || plain(shown) == "+" + target)
        {
            first = first < 0 ? step : first;
            last = step;
        }
        else if (first >= 0)
        {
            break;
        }
        else if (const auto other = quantity ? quantityOf(shown) : std::nullopt;
                 other && other->unit == quantity->unit &&
                 std::abs(other->number - quantity->number) < nearest)
        {
            nearest = std::abs(other->number - quantity->number);
            nearestValue = value;
        }
    }
    if (first < 0)
        return nearestValue;
    // An end or the centre means just that.
    for (const int step : {0, searchSteps, searchSteps / 2})
        if (first <= step && step <= last)
            return static_cast<float>(step) / static_cast<float>(searchSteps);
    return static_cast<float>(first + last) * 0.5f / static_cast<float>(searchSteps);
}

float restingValue(const std::function<juce::String(float)>& textAt)
{
    const auto low = quantityOf(textAt(0.0f));
    const auto centre = quantityOf(textAt(0.5f));
    return low && centre && low->number < 0.0 && centre->number == 0.0 ? 0.5f : 0.0f;
}

} // namespace quorel
