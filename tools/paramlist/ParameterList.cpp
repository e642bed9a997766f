// SPDX-License-Identifier: GPL-3.0-or-later
#include "ParameterList.h"

#include "common/TextRuns.h"
#include "parameters/FxParameterText.h"
#include "parameters/ParameterText.h"

#include <optional>
#include <vector>

namespace quorel
{

namespace
{
struct Section
{
    int first;
    const char* title;
    const char* note;
};

constexpr std::array<Section, 9> sections{{
    {0, "Whole instrument",
     "10 to 15 hold the preset's category bits. 4 mutes the master above one half. 100 and 132 begin the "
     "texts "
     "of preset and folder name, one character a parameter."},
    {200, "Layer 1",
     "Number n of layer l (1 to 4) is parameter 200 (l - 1) + n, with n from 200 to 399; what has no name is "
     "called by n. 200: name of the instrument. 253, 254: drum page and drum mode. 256 to 259: sends 1 to 4 "
     "before the fader. 270 to 309: keys, velocities and switches of the eight zones. 322 to 333: which "
     "parameter of the instrument each Easy value moves; with an instrument, Easy values take their names "
     "and "
     "texts from it."},
    {400, "Layer 2", ""},
    {600, "Layer 3", ""},
    {800, "Layer 4", ""},
    {1000, "Controller map", "1050 + c: the parameter that MIDI controller c moves."},
    {1200, "Effect blocks",
     "The four blocks are interleaved: parameter j (0 to 9) of block k (1 to 4) is 1220 + 4 j + k - 1. Names "
     "and texts follow the effect type; see below."},
    {1300, "Master EQ", "1300 to 1316 mean what 380 to 396 mean to layer 1. They have no names or texts."},
    {1330, "Multi-controls",
     "1330 to 1345: targets of the sixteen knobs. 1370 on: names of the four faders, 25 characters each. "
     "1471 "
     "to 1486: hold switches. 1490 to 1505: positions that held knobs come back to."},
}};

struct Row
{
    int first = 0;
    int last = 0;
    juce::String name;
    juce::String value;
    juce::String text;
    /** Has a name that says more than a number. */
    bool named = false;
};

bool canJoin(const Row& a, const Row& b)
{
    return !a.named && !b.named && a.value == b.value && a.text == b.text &&
           a.name.isEmpty() == b.name.isEmpty();
}

juce::String code(const juce::String& text)
{
    return text.isEmpty() ? juce::String() : "`" + text + "`";
}

juce::String line(const juce::StringArray& cells)
{
    return "| " + cells.joinIntoString(" | ") + " |\n";
}

juce::String line(const Row& row)
{
    auto index = juce::String(row.first);
    if (row.last > row.first)
        index += " to " + juce::String(row.last);
    return line(juce::StringArray{index, row.name, row.value, code(row.text)});
}

Row rowOf(PluginProcessor& processor, int index)
{
    Row row;
    row.first = row.last = index;
    row.name = processor.getParameterName(index);
    row.value = shortText(static_cast<double>(processor.getParameter(index)));
    row.text = processor.getParameterText(index);
    const int number = isLayerParameter(index) ? numberInLayer(index) : index;
    row.named = row.name.isNotEmpty() && !row.name.endsWith(juce::String(number));
    return row;
}

/** The rows of all parameters; a text is one row, and neighbours that differ in nothing are joined later. */
std::vector<Row> allRows(PluginProcessor& processor)
{
    std::vector<Row> rows;
    for (int index = 0; index < numHostParameters; ++index)
    {
        rows.push_back(rowOf(processor, index));
        if (const auto run = textRunFrom(index))
        {
            auto& row = rows.back();
            row.last = index + run->count - 1;
            const auto text = readParamText(processor, index, run->count - 1).trim();
            row.value = text.isEmpty() ? juce::String("no text") : "text " + code(text);
            row.named = true;
            index = row.last;
        }
    }
    return rows;
}

/** Puts "kept" in place of the default where a reset leaves the parameter as it is. */
void markWhatResetsKeep(PluginProcessor& processor, std::vector<Row>& rows)
{
    constexpr float mark = 0.9f;
    for (int index = 0; index < numHostParameters; ++index)
        processor.setParameter(index, mark);
    processor.resetAllParameters();
    for (auto& row : rows)
        if (processor.getParameter(row.first) == mark)
            row.value = "kept";
}

juce::String parameterTables(PluginProcessor& processor)
{
    auto rows = allRows(processor);
    markWhatResetsKeep(processor, rows);

    juce::String list;
    auto section = sections.begin();
    std::optional<Row> pending;
    const auto finish = [&]
    {
        if (pending)
            list += line(*pending);
        pending.reset();
    };
    for (const auto& row : rows)
    {
        if (section != sections.end() && row.first >= section->first)
        {
            finish();
            list += "\n## " + juce::String(section->title) + "\n\n";
            if (*section->note != 0)
                list += juce::String(section->note) + "\n\n";
            list += "| Index | Name | Default | Text |\n|---|---|---|---|\n";
            ++section;
        }
        if (pending && canJoin(*pending, row))
        {
            pending->last = row.last;
            pending->name = pending->name.upToFirstOccurrenceOf(" to ", false, false);
            if (row.name.isNotEmpty())
                pending->name += " to " + row.name;
            continue;
        }
        finish();
        pending = row;
    }
    finish();
    return list;
}

/** Texts at both ends and in the middle, the nine other parameters of the block at `others`. */
juce::StringArray sampleTexts(int type, int j, float others)
{
    juce::StringArray texts;
    for (const float value : {0.0f, 0.5f, 1.0f})
    {
        FxParameterValues values{};
        values.fill(others);
        values[static_cast<size_t>(j)] = value;
        texts.add(code(fxParameterText(type, j, values)));
    }
    return texts;
}

juce::String effectTables()
{
    juce::String list(
        "\n## Parameters of the effects\n\nWith the effect's texts at 0, 0.5 and 1. A length or "
        "speed that can follow the tempo has its notes in the last column. The type parameter of "
        "type t is (t + 0.5) / 32, and 1 for the last.\n");
    for (int type = 1; type < fxTypeCount; ++type)
    {
        const auto& fx = fxTypes[static_cast<size_t>(type)];
        list += "\n### " + juce::String(type) + " " + fx.name +
                "\n\n| j | Name | 0 | 0.5 | 1 | In tempo |\n" + "|---|---|---|---|---|---|\n";
        for (int j = 0; j < numFxParameters; ++j)
        {
            const juce::String name(fx.labels[static_cast<size_t>(j)]);
            if (name.isEmpty())
                continue;
            const auto texts = sampleTexts(type, j, 0.0f);
            const auto synced = sampleTexts(type, j, 1.0f);
            list += line(juce::StringArray{juce::String(j), name, texts[0], texts[1], texts[2],
                                           synced == texts ? juce::String() : synced.joinIntoString(", ")});
        }
    }
    return list;
}
} // namespace

juce::String parameterList(PluginProcessor& processor)
{
    return "# Parameters\n\n"
           "Written by `quorel-paramlist --output docs/parameters.md` from the engine's tables; a test sees "
           "to "
           "it that it is current.\n\n"
           "A host sees 1507 parameters of 0 to 1. Their indices are part of the preset format and don't "
           "move. "
           "\"Text\" is what a parameter reads at its default; \"kept\" marks what a reset leaves as it is, "
           "and "
           "a new instrument starts these at 0.\n" +
           parameterTables(processor) + effectTables();
}

} // namespace quorel
