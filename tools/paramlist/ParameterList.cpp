// SPDX-License-Identifier: GPL-3.0-or-later
#include "ParameterList.h"

#include "common/TextRuns.h"
#include "effects/FxTypes.h"
#include "parameters/FxParameterText.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterDisplay.h"
#include "parameters/ParameterNames.h"

#include <optional>

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
     "10 to 15 hold the preset's category bits. 4 mutes the master. 16 to 19 block free MIDI controllers for "
     "layers 1 to 4. 100 and 132 begin the texts of preset and folder name, one character a parameter; a "
     "reset "
     "writes the names in force."},
    {200, "Layer 1",
     "Number n of layer l (1 to 4) is parameter 200 (l - 1) + n, with n from 200 to 399; what has no name is "
     "called by n. 200: name of the instrument. 253, 254: drum page and drum mode. 256 to 259: sends 1 to 4 "
     "before the fader. 270 to 309: keys, velocities and switches of the eight zones. 322 to 333: which "
     "parameter of the instrument each Easy value moves; with an instrument, Easy values take their names "
     "and texts from it."},
    {400, "Layer 2", ""},
    {600, "Layer 3", ""},
    {800, "Layer 4", ""},
    {1000, "Controller map", "1050 + c: the parameter that MIDI controller c moves."},
    {1200, "Effect blocks",
     "The four blocks are interleaved: parameter j (0 to 9) of block k (1 to 4) is 1220 + 4 j + k - 1. Names "
     "and texts follow the effect type; see below. A block that is on, but not above 0.5, runs bypassed."},
    {1300, "Master EQ", "1300 to 1316 mean what 380 to 396 mean to layer 1. They have no names or texts."},
    {1330, "Multi-controls",
     "1330 to 1345: targets of the sixteen knobs. 1370 on: names of the four faders, 25 characters each. "
     "1471 to 1486: hold switches. 1490 to 1505: positions that held knobs come back to."},
}};

struct Row
{
    int first = 0;
    int last = 0;
    juce::String name;
    juce::String value;
    juce::String coding;
    juce::String text;
    /** Has a row of its own, whatever its neighbours are. */
    bool alone = false;
};

bool canJoin(const Row& a, const Row& b)
{
    return !a.alone && !b.alone && a.value == b.value && a.coding == b.coding && a.text == b.text &&
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
    return line(juce::StringArray{index, row.name, row.value, row.coding, code(row.text)});
}

juce::String codingText(const ParameterCoding& coding)
{
    switch (coding.kind)
    {
    case Coding::unused:
        return {};
    case Coding::position:
        return "position";
    case Coding::onOff:
        return "switch";
    case Coding::onAboveHalf:
        return "switch, on above 0.5";
    case Coding::onAtOne:
        return "switch, on at 1";
    case Coding::fader:
        return "gain";
    case Coding::centred:
        return "-100 to 100";
    case Coding::percent:
        return "0 to 100";
    case Coding::frequency:
        return "frequency";
    case Coding::integer:
    case Coding::steps:
        return juce::String(coding.low) + " to " + juce::String(coding.high);
    case Coding::encodedInteger:
        return "encoded integer";
    case Coding::character:
        return "character";
    case Coding::categoryBits:
        return "11 bits";
    }
    return {};
}

juce::String nameByDefault(int index)
{
    ParameterNameSources sources;
    sources.fxType = [](int block) { return fxTypeFromParameter(parameterDefault(slot::fxType + block)); };
    sources.easyName = [](int, int easy) { return "Easy " + juce::String(easy + 1); };
    return parameterName(index, sources);
}

juce::String textByDefault(int index)
{
    return parameterText(index, {parameterDefault, [](int, int) { return juce::String(); }});
}

/** What a run of characters spells by default. */
juce::String runByDefault(const TextRun& run)
{
    juce::String text;
    for (int index = run.first; index < run.first + run.count; ++index)
    {
        const char character = decodeParamChar(parameterDefault(index));
        if (character == 0)
            break;
        text += character;
    }
    return text;
}

Row rowOf(int index)
{
    const auto& info = parameterInfo(index);
    Row row;
    row.first = row.last = index;
    row.name = nameByDefault(index);
    row.value = info.isKeptByReset ? juce::String("kept") : shortText(static_cast<double>(info.defaultValue));
    row.coding = codingText(info.coding);
    row.text = textByDefault(index);
    row.alone = info.name.naming == Naming::text || info.name.naming == Naming::easyTarget;
    if (const auto run = textRunFrom(index))
    {
        row.last = index + run->count - 1;
        const auto text = runByDefault(*run);
        row.value = text.isEmpty() ? juce::String("no text") : "text " + code(text);
        row.alone = true;
    }
    return row;
}

juce::String parameterTables()
{
    juce::String list;
    const auto* section = sections.begin();
    std::optional<Row> pending;
    const auto finish = [&]
    {
        if (pending)
            list += line(*pending);
        pending.reset();
    };
    for (int index = 0; index < numHostParameters;)
    {
        const auto row = rowOf(index);
        index = row.last + 1;
        if (section != sections.end() && row.first >= section->first)
        {
            finish();
            list += "\n## " + juce::String(section->title) + "\n\n";
            if (*section->note != 0)
                list += juce::String(section->note) + "\n\n";
            list += "| Index | Name | Default | Holds | Text |\n|---|---|---|---|---|\n";
            ++section;
        }
        if (pending && canJoin(*pending, row))
        {
            pending->last = row.last;
            pending->name = pending->name.upToFirstOccurrenceOf(" to ", false, false);
            if (pending->name != row.name)
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
            const juce::String name(fx.parameters[static_cast<size_t>(j)].label);
            if (name == "-")
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

juce::String parameterList()
{
    return "# Parameters\n\n"
           "Written by `quorel-paramlist --output docs/parameters.md` from the catalogue of parameters; a "
           "test sees to "
           "it that it is current.\n\n"
           "A host sees 1507 parameters of 0 to 1. Their indices are part of the preset format and don't "
           "move. "
           "\"Text\" is what a parameter reads at its default; \"kept\" marks what a reset leaves as it is, "
           "and "
           "a new instrument starts these at 0.\n\n"
           "What a value v holds: a switch is off at 0 alone; a gain is 4 v^3, so that 0.63 is 0 dB and 1 is "
           "+12 dB; a frequency is 20 Hz times 2^(10 v); an encoded integer is (v - 0.5) times 65536, "
           "and 0 stands for none; a character is v times 256; both are rounded to the nearest.\n" +
           parameterTables() + effectTables();
}

} // namespace quorel
