// SPDX-License-Identifier: GPL-3.0-or-later
#include "ParameterReport.h"

#include "common/TextRuns.h"
#include "effects/EffectMath.h"
#include "effects/FxTypes.h"
#include "parameters/Categories.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterDisplay.h"
#include "parameters/ParameterNames.h"
#include "parameters/ParameterText.h"

#include <charconv>

namespace quorel
{

namespace
{
/** What an instrument has that has just been made, but for the names of its preset. */
std::vector<float> defaultParameters()
{
    std::vector<float> values;
    values.reserve(numHostParameters);
    for (int i = 0; i < numHostParameters; ++i)
        values.push_back(parameterDefault(i));
    return values;
}

class Values final : public ParameterAccess
{
public:
    explicit Values(std::vector<float> values)
        : parameters(std::move(values))
    {
    }

    float readParameter(int index) const noexcept override
    {
        const auto i = static_cast<std::size_t>(index);
        return i < parameters.size() ? clampUnit(parameters[i]) : 0.0f;
    }

    void writeParameter(int, float) override {}

    void writeParameterNotifyingHost(int, float) override {}

private:
    std::vector<float> parameters;
};

ParameterNameSources nameSources(const Values& values)
{
    ParameterNameSources sources;
    sources.fxType = [&values](int block)
    { return fxTypeFromParameter(values.readParameter(slot::fxType + block)); };
    sources.easyName = [](int, int easy) { return "Easy " + juce::String(easy + 1); };
    return sources;
}

ParameterTextSources textSources(const Values& values)
{
    return {[&values](int index) { return values.readParameter(index); },
            [](int, int) { return juce::String(); }};
}

/** True where `show` has a line of its own for the parameter. */
bool isToldElsewhere(int index)
{
    const bool isCategory = isWithin(index, firstCategoryParameter, numCategoryParameters);
    const bool isName = isWithin(index, slot::presetNameText, slot::nameTextLength) ||
                        isWithin(index, slot::folderNameText, slot::nameTextLength);
    return isCategory || isName ||
           (isLayerParameter(index) && numberInLayer(index) == layerSlot::pluginNameText);
}

/** The shortest number that stands for this value and no other. */
juce::String shortest(float value)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return juce::String::fromUTF8(digits.data(), static_cast<int>(end - digits.data()));
}

juce::String layerLine(const StateChunk& chunk, int layer, const InstalledInstruments& installed)
{
    const int size = chunk.layerSizes[static_cast<std::size_t>(layer)];
    const auto name = instrumentOfLayer(chunk, layer);
    if (size == 0)
        return name.isEmpty() ? juce::String("-") : name + ", without a state";
    auto line =
        (name.isEmpty() ? juce::String("(no name)") : name) + ", " + juce::String(size) + " bytes of state";
    if (installed.isKnown && !installed.names.contains(name))
        line += ", not installed";
    return line;
}

juce::StringArray wordsOf(const StateChunk& chunk)
{
    return categoryWords(categoriesOf(Values(chunk.parameters)));
}
} // namespace

std::vector<ParameterRow> parameterRows(const StateChunk& chunk, bool all)
{
    const Values values(chunk.parameters);
    const Values defaults(defaultParameters());
    const auto names = nameSources(values);
    const auto texts = textSources(values);

    std::vector<ParameterRow> rows;
    for (int index = 0; index < numHostParameters; ++index)
    {
        ParameterRow row;
        row.first = row.last = index;
        bool differs = values.readParameter(index) != defaults.readParameter(index);
        if (const auto run = textRunFrom(index))
        {
            row.isTextRun = true;
            row.last = index + run->count - 1;
            row.text = readParamText(values, index, run->count - 1);
            differs = row.text != readParamText(defaults, index, run->count - 1);
        }
        else
        {
            row.value = values.readParameter(index);
            row.text = parameterText(index, texts);
        }
        row.name = parameterName(index, names);
        if (all || (differs && !isToldElsewhere(index)))
            rows.push_back(row);
        index = row.last;
    }
    return rows;
}

juce::String presetAsText(const ShownPreset& preset, bool all, const InstalledInstruments& installed)
{
    const auto& [file, chunk, notes, mark] = preset;
    const auto words = wordsOf(chunk);
    juce::StringArray lines{
        file.getFileNameWithoutExtension(), "folder      " + file.getParentDirectory().getFileName(),
        "categories  " + (words.isEmpty() ? juce::String("-") : words.joinIntoString(", "))};
    if (notes.author.isNotEmpty())
        lines.add("author      " + printable(notes.author));
    if (notes.comment.isNotEmpty())
        lines.add("comment     " + printable(notes.comment));
    if (mark.rating > 0)
        lines.add("rating      " + juce::String(mark.rating) + " of " + juce::String(highestRating));
    if (mark.favourite)
        lines.add("favourite   yes");
    for (int layer = 0; layer < numLayers; ++layer)
        lines.add("layer " + juce::String(layer + 1) + "     " + layerLine(chunk, layer, installed));

    const auto rows = parameterRows(chunk, all);
    lines.add({});
    lines.add(all ? juce::String("Parameters:")
                  : "Parameters off their defaults: " + juce::String(static_cast<int>(rows.size())));
    for (const auto& row : rows)
    {
        const auto value = row.isTextRun ? juce::String() : shortest(row.value);
        const auto text = row.isTextRun ? "\"" + printable(row.text) + "\"" : row.text;
        lines.add((juce::String(row.first).paddedLeft(' ', 6) + "  " + row.name.paddedRight(' ', 30) + "  " +
                   value.paddedRight(' ', 12) + "  " + text)
                      .trimEnd());
    }
    return lines.joinIntoString("\n") + "\n";
}

juce::String presetAsJson(const ShownPreset& shown, bool all, const InstalledInstruments& installed)
{
    const auto& [file, chunk, notes, mark] = shown;
    auto* preset = new juce::DynamicObject();
    const juce::var answer(preset);
    preset->setProperty("name", file.getFileNameWithoutExtension());
    preset->setProperty("folder", file.getParentDirectory().getFileName());
    preset->setProperty("file", file.getFullPathName());

    preset->setProperty("author", notes.author);
    preset->setProperty("comment", notes.comment);
    preset->setProperty("rating", mark.rating);
    preset->setProperty("favourite", mark.favourite);

    juce::Array<juce::var> categories;
    for (const auto& word : wordsOf(chunk))
        categories.add(word);
    preset->setProperty("categories", categories);

    juce::Array<juce::var> layers;
    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto* object = new juce::DynamicObject();
        const auto name = instrumentOfLayer(chunk, layer);
        object->setProperty("layer", layer + 1);
        object->setProperty("instrument", name);
        object->setProperty("stateBytes", chunk.layerSizes[static_cast<std::size_t>(layer)]);
        if (installed.isKnown)
            object->setProperty("installed", installed.names.contains(name));
        layers.add(object);
    }
    preset->setProperty("layers", layers);

    juce::Array<juce::var> parameters;
    for (const auto& row : parameterRows(chunk, all))
    {
        auto* object = new juce::DynamicObject();
        object->setProperty("index", row.first);
        if (row.isTextRun)
            object->setProperty("last", row.last);
        else
            object->setProperty("value", shortest(row.value).getDoubleValue());
        object->setProperty("name", row.name);
        object->setProperty("text", row.text);
        parameters.add(object);
    }
    preset->setProperty("parameters", parameters);
    return juce::JSON::toString(answer) + "\n";
}

} // namespace quorel
