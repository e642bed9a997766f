// SPDX-License-Identifier: GPL-3.0-or-later
// What parameters read, and what typed values do. Expected texts are worked out by hand from ranges and
// units.
#include "effects/EffectsTestTools.h"
#include "parameters/FxParameterText.h"
#include "parameters/ParameterCodings.h"
#include "parameters/ParameterValueEntry.h"
#include "support/ProcessorRig.h"

#include <gtest/gtest.h>

#include <locale>
#include <set>

namespace quorel::test
{

namespace
{
/** A table of values without a processor. */
struct Values
{
    std::vector<float> table = std::vector<float>(numParameterSlots, 0.0f);

    ParameterTextSources sources()
    {
        return {[this](int index) { return table[static_cast<size_t>(index)]; },
                [](int layer, int easy) { return juce::String(layer) + ":" + juce::String(easy); }};
    }

    juce::String textAt(int index, float value)
    {
        table[static_cast<size_t>(index)] = value;
        return parameterText(index, sources());
    }
};

juce::String fxText(int type, int j, float value, float others)
{
    FxParameterValues values{};
    values.fill(others);
    values[static_cast<size_t>(j)] = value;
    return fxParameterText(type, j, values);
}

void expectSane(const juce::String& text, int index)
{
    EXPECT_LE(text.length(), juce::String("Stereo Tape Delay").length()) << index << ": " << text;
    EXPECT_FALSE(text.containsIgnoreCase("nan") || text.containsIgnoreCase("inf")) << index << ": " << text;
    EXPECT_EQ(text, text.trim()) << index;

    for (const auto character : text)
        EXPECT_TRUE(character >= ' ' && character < 127) << index << ": " << text;
}

/** Writes numbers as a German host might. */
class CommaLocale
{
public:
    CommaLocale() { std::locale::global(std::locale(std::locale::classic(), new Punctuation)); }

    ~CommaLocale() { std::locale::global(old); }

private:
    struct Punctuation final : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
    };

    std::locale old;
};
} // namespace

TEST(ParameterTexts, AreSaneForEveryParameterAndType)
{
    const std::vector<float> grid{0.0f,    1e-30f,      0.0009f, 0.001f, 0.1f,        0.125f,
                                  0.2f,    1.0f / 3.0f, 0.4999f, 0.5f,   0.5001f,     0.5025f,
                                  0.5026f, 0.62999f,    0.75f,   0.9f,   0.99999994f, 1.0f};
    Values values;

    for (int index = -2; index < numParameterSlots + 2; ++index)
    {
        if (!ParameterTable::isSlot(index))
        {
            EXPECT_TRUE(parameterText(index, values.sources()).isEmpty());
            continue;
        }

        for (const float value : grid)
            expectSane(values.textAt(index, value), index);
    }

    for (int type = 0; type < fxTypeCount; ++type)
    {
        for (int j = 0; j < fxParameterCount; ++j)
        {
            // A parameter with a label has a text, but for the three "Smooth" of tremolo and wah that never
            // had.
            const juce::String label(
                fxTypes[static_cast<size_t>(type)].parameters[static_cast<size_t>(j)].label);
            const bool silent =
                label == "-" || (label == "Smooth" && (type == 24 || type == 25 || type == 31));

            for (const float value : grid)
            {
                for (const float others : {0.0f, 0.3f, 0.5f, 1.0f})
                {
                    const auto text = fxText(type, j, value, others);
                    expectSane(text, 1000 * type + j);
                    EXPECT_EQ(text == "-", silent) << type << " " << label << ": " << text;
                }
            }
        }
    }
}

TEST(ParameterTexts, OfTheInstrumentAndItsLayers)
{
    struct Case
    {
        int index;
        float value;
        const char* text;
    };

    const std::vector<Case> cases{{1, 1.0f, "+12 db"},       {1, 0.0f, "-100 db"},
                                  {2, 0.0f, "Layers"},       {2, 0.3f, ""},
                                  {3, 1e-6f, "Edited"},      {432, 0.5f, "-6 db"},
                                  {433, 0.0f, "-100"},       {234, 0.0f, "Off"},
                                  {235, 0.01f, "On"},        {236, 0.0f, "0"},
                                  {236, 0.53125f, "8.5"},    {251, 0.3046875f, "39"},
                                  {252, 1.0f, "128"},        {264, 0.0f, "-24"},
                                  {311, 0.5f, "0:1"},        {921, 0.5f, "3:11"},
                                  {582, 0.0f, "20 hz"},      {582, 1.0f, "20480 hz"},
                                  {383, 0.5f, "50 %"},       {388, 0.0f, "-20 db"},
                                  {1204, 0.0f, "None"},      {1206, 25.5f / 32.0f, "Tremelo"},
                                  {1211, 0.0f, "-60 db"},    {1212, 0.5f, "100D/100W"},
                                  {1212, 0.25f, "100D/50W"}, {1217, 0.75f, "50L/100R"},
                                  {1218, 0.0f, "100L/0R"},   {1354, 0.0f, "-100 %"},
                                  {1369, 0.75f, "50 %"}};

    const CommaLocale commas;

    for (const auto& item : cases)
        EXPECT_EQ(Values().textAt(item.index, item.value), juce::String(item.text)) << item.index;

    EXPECT_EQ(gainToText(0.9f), "0");
    EXPECT_EQ(gainToText(1.1f), "0");
    EXPECT_EQ(gainToText(0.5f), "-6");
    EXPECT_EQ(gainToText(2.0f), "+6");
    EXPECT_EQ(gainToText(1e-20f), "-100");
}

TEST(ParameterTexts, OfEffectsKeepTheirOddities)
{
    struct Case
    {
        int type;
        int j;
        float value;
        float others;
        const char* text;
    };

    // Among them: the mono delay's switch turns over at one half, the stereo delay's at 1 / 1.99; the speed
    // of AutoPan (24) goes by its amount, that of Tremelo (25) by its sync.
    const std::vector<Case> cases{
        {0, 0, 0.5f, 0.5f, "-"},           {1, 0, 0.5f, 0.5f, "64 ms"},      {1, 0, 0.5f, 0.51f, "1/8"},
        {1, 0, 1.0f, 1.0f, "1/2*"},        {1, 2, 0.5f, 0.0f, "+0 %"},       {1, 7, 0.0f, 0.0f, "off"},
        {1, 7, 0.5f, 0.0f, "0.43 hz"},     {1, 1, 0.4999f, 0.0f, "Off"},     {1, 1, 0.5f, 0.0f, "On"},
        {2, 2, 0.5024f, 0.0f, "Off"},      {2, 2, 0.5026f, 0.0f, "On"},      {5, 3, 0.04f, 0.0f, "16/1*"},
        {6, 0, 1.0f, 0.0f, "511.5 ms"},    {6, 1, 1.0f, 0.0f, "7.75 m"},     {6, 7, 1.0f, 0.0f, "0.0 dB"},
        {7, 2, 0.5f, 0.4f, "0.43 hz"},     {7, 2, 0.5f, 0.5f, "1/1T"},       {13, 0, 1.0f, 0.0f, "8"},
        {15, 0, 1.0f, 0.0f, "L+R"},        {18, 0, 1.0f, 0.0f, "1"},         {18, 1, 0.4f, 0.0f, "11025"},
        {20, 3, 1.0f, 0.0f, "100 %"},      {22, 0, 1.0f, 0.0f, "Off Axis"},  {24, 3, 0.5f, 0.124f, "0.43 hz"},
        {24, 3, 0.5f, 0.125f, "1/1T"},     {25, 3, 0.5f, 0.125f, "0.43 hz"}, {25, 3, 0.5f, 0.5f, "1/1T"},
        {26, 2, 0.5f, 0.0f, "Left only"},  {26, 5, 0.5f, 0.0f, "-"},         {27, 1, 0.0f, 0.0f, "None"},
        {27, 1, 1e-7f, 0.0f, "Ratio 1:1"}, {27, 1, 1.0f, 0.0f, "Limiter"},   {27, 2, 0.0009f, 0.0f, "Off"},
        {27, 2, 0.001f, 0.0f, "0.51 ms"},  {28, 3, 1.0f, 0.0f, "16384 ms"},  {29, 0, 1.0f, 0.0f, "Ring"},
        {30, 3, 1.0f, 0.0f, "+30.0 dB"},   {32, 0, 0.5f, 0.0f, "BandPass"},  {32, 2, 1.0f, 0.0f, "100 %"}};

    for (const auto& item : cases)
        EXPECT_EQ(fxText(item.type, item.j, item.value, item.others), juce::String(item.text))
            << item.type << " p" << item.j << " at " << item.value;

    // Through the table: blocks are interleaved, and each goes by its own type and sync.
    Values values;
    values.table[slot::fxType + 2] = 1.5f / 32.0f;
    values.table[static_cast<size_t>(fxParameter(2, 1))] = 1.0f;
    EXPECT_EQ(values.textAt(fxParameter(2, 0), 0.5f), "1/8");
    EXPECT_EQ(values.textAt(fxParameter(1, 0), 0.5f), "-");
    values.table[slot::fxType + 1] = 3.5f / 32.0f;
    EXPECT_EQ(values.textAt(fxParameter(1, 0), 0.5f), "64 ms");
}

namespace
{
/** An effect with what its parameters read, and what it makes of a signal. */
struct HeardEffect
{
    int type;
    std::vector<float> p;

    juce::String text(int j) const
    {
        FxParameterValues values{};
        std::copy(p.begin(), p.end(), values.begin());
        return fxParameterText(type, j, values);
    }

    /** How many samples late an impulse comes again. */
    double echo() const
    {
        return static_cast<double>(peakPosition(runAfter(64, *makeSlot(type), p, impulse(48000)).left, 36));
    }

    /** Peak of a tone in its second second. */
    double level(double hz, float amplitude) const
    {
        return peak(run(*makeSlot(type), p, sine(96000, hz, amplitude)).left, 48000);
    }
};
} // namespace

TEST(ParameterTexts, OfEffectsSayWhatIsHeard)
{
    struct Echo
    {
        HeardEffect effect;
        int j;
        const char* text;
        double samples;
    };

    for (const Echo& e :
         {Echo{{1, {0.5f, 0, 0.5f, 1}}, 0, "64 ms", 3072}, Echo{{1, {0.5f, 1, 0.5f, 1}}, 0, "1/8", 12000},
          Echo{{2, {0.75f, 0.75f, 0, 0.5f, 0.5f, 0, 1}}, 0, "512 ms", 24576},
          Echo{{3, {0.75f, 0, 0.5f, 1}}, 0, "512 ms", 24576},
          Echo{{31, {1, 1, 0, 0, 0, 0, 0, 0.7f, 0, 1}}, 7, "1/4", 24000}})
    {
        EXPECT_EQ(e.effect.text(e.j), e.text);
        EXPECT_NEAR(e.effect.echo(), e.samples, 8) << e.effect.type << ' ' << e.text;
    }

    const HeardEffect ring{15, {0, 0.5f, 1}};
    EXPECT_EQ(ring.text(1), "640 Hz");
    const auto carrier = run(*makeSlot(15), ring.p, constant(48000, 0.5f)).left;
    int upward = 0;
    for (std::size_t i = 1; i < carrier.size(); ++i)
        upward += carrier[i - 1] < 0.0f && carrier[i] >= 0.0f ? 1 : 0;
    EXPECT_NEAR(upward, 640, 1);

    const HeardEffect resonant{29, {3.5f / 29.99f, 0, 0.5644f, 0.95f, 0, 0, 0, 0, 0, 0.5f}};
    EXPECT_EQ(resonant.text(0), "12 LP");
    EXPECT_EQ(resonant.text(2), "1.0 kHz");
    EXPECT_GT(resonant.level(1000.0, 0.001f), 2.0 * resonant.level(850.0, 0.001f));
    EXPECT_GT(resonant.level(1000.0, 0.001f), 2.0 * resonant.level(1180.0, 0.001f));

    const HeardEffect plain{17, {0, 0.5f, 0, 0, 0, 1, 0, 0.5f}}, louder{17, {0, 0.5f, 0, 0, 0, 1, 0, 0.6f}};
    EXPECT_EQ(louder.text(7), "+6.0 dB");
    EXPECT_NEAR(louder.level(1000.0, 0.1f) / plain.level(1000.0, 0.1f), 1.995, 0.01);
    const HeardEffect boosted{21, {0, 0, 0.5f, 0.5f, 1}};
    EXPECT_EQ(boosted.text(4), "+20.0 dB");
    EXPECT_NEAR(boosted.level(1000.0, 0.01f), 0.1, 0.001);
    const HeardEffect limited{27, {0.5f, 1, 0, 0.5f, 0.5f}};
    EXPECT_EQ(limited.text(0), "-20.0 dB");
    EXPECT_EQ(limited.text(1), "Limiter");
    EXPECT_NEAR(limited.level(1000.0, 0.5f), 0.1, 0.02);
    const HeardEffect gated{28, {0.5f, 0.1f, 0.1f, 0.1f}};
    EXPECT_EQ(gated.text(0), "-20.0 dB");
    EXPECT_LT(gated.level(1000.0, 0.09f), 1e-6);
    EXPECT_NEAR(gated.level(1000.0, 0.11f), 0.11, 0.001);
}

TEST(ParameterTexts, OfFadersAreTheGainsThatTheMixerTakes)
{
    ProcessorRig rig;
    const auto& gains = rig.processor.getGains();

    for (float value = 0.0f; value <= 1.0f; value += 0.0371f)
    {
        rig.set(slot::masterVolume, value);
        rig.setLayer(2, layerSlot::volume, value);
        rig.setLayer(1, layerSlot::sendLevel + 3, value);
        const auto text = rig.processor.getParameterText(slot::masterVolume);
        EXPECT_EQ(text, gainToText(gains.masterGain()) + " db");
        EXPECT_EQ(rig.processor.getParameterText(632), gainToText(gains.layerFaderGain(2)) + " db");
        EXPECT_EQ(rig.processor.getParameterText(441), gainToText(gains.sendGain(3, 1)) + " db");
    }

    rig.set(slot::masterMute, 1.0f);
    EXPECT_EQ(rig.processor.getParameterText(slot::masterVolume), "-100 db");
}

TEST(ParameterTexts, OfEasyParametersAreTheInstrumentsOwn)
{
    ProcessorRig rig;
    EXPECT_EQ(rig.processor.getParameterText(710), "");
    ASSERT_TRUE(rig.load(2, "Orlen"));
    std::set<juce::String> texts;

    for (const float value : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f})
    {
        rig.set(710, value);
        texts.insert(rig.processor.getParameterText(710));
    }

    EXPECT_EQ(texts, (std::set<juce::String>{"0", "25", "50", "75", "100"}));
    rig.set(722, encodeParamInt(0));
    EXPECT_EQ(rig.processor.getParameterText(710), "");
    rig.set(722, encodeParamInt(30000));
    EXPECT_EQ(rig.processor.getParameterText(710), "");
}

TEST(ParameterTexts, AreEachThreadsOwn)
{
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};

    for (int t = 0; t < 4; ++t)
    {
        threads.emplace_back(
            [&wrong, value = static_cast<float>(t + 1) / 5.0f]
            {
                const auto frequency = fxText(5, 0, value, 0.0f);
                const auto ratio = fxText(27, 1, value, 0.0f);

                for (int i = 0; i < 2000; ++i)
                    if (fxText(5, 0, value, 0.0f) != frequency || fxText(27, 1, value, 0.0f) != ratio)
                        ++wrong;
            });
    }

    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong.load(), 0);
}

TEST(TypedValues, AskInTheTermsOfTheParameterAndWriteTheAnswer)
{
    struct Case
    {
        int index;
        float before;
        const char* question;
        const char* typed;
        double after;
    };

    const double unity = std::cbrt(0.25);
    const std::vector<Case> cases{{1, 1.0f, "-100 to +12|+12", "0", unity},
                                  {232, 0.5f, "-100 to +12|-6", "+6", std::cbrt(std::pow(10.0, 0.3) / 4.0)},
                                  {232, 0.5f, "-100 to +12|-6", " -20 dB", std::cbrt(0.025)},
                                  {641, 0.0f, "-100 to +12|-100", "loud", unity},
                                  {232, 0.5f, "-100 to +12|-6", "-100", std::cbrt(0.0000025)},
                                  {232, 0.5f, "-100 to +12|-6", "99999999999999999999", 0.5},
                                  {433, 0.5f, "-100 to +100|0", "-37", 0.315},
                                  {433, 0.25f, "-100 to +100|-50", "101", 0.25},
                                  {1352, 0.25f, "0 to 100|25", "-1", 0.25},
                                  {1369, 1.0f, "-100 to +100|100", "10.9", 0.55},
                                  {264, 0.63f, "0 to 1|0.63", "1.01", static_cast<double>(0.63f)},
                                  {264, 0.63f, "0 to 1|0.63", "nan", static_cast<double>(0.63f)},
                                  {1212, 1.0f, "0 to 1|1", "1e400", 1.0},
                                  {1000, 1e-5f, "0 to 1|1e-05", "0.5", 0.5}};

    ProcessorRig rig;

    for (const auto& item : cases)
    {
        rig.set(item.index, item.before);
        rig.interaction.textQuestions.clear();
        rig.interaction.typedText = item.typed;
        rig.processor.editParameterValue(item.index);
        EXPECT_EQ(rig.interaction.textQuestions.joinIntoString(";"),
                  "Set new value|" + juce::String(item.question))
            << item.index;
        EXPECT_FLOAT_EQ(rig.get(item.index), static_cast<float>(item.after)) << item.index << item.typed;
    }

    // No answer and no change leave the preset as it is; a change marks it.
    rig.processor.getSession().markSaved();

    for (const char* typed : {"", "0.63"})
    {
        rig.set(264, 0.63f);
        rig.interaction.typedText = typed;
        rig.processor.editParameterValue(264);
        EXPECT_EQ(rig.get(264), 0.63f);
        EXPECT_FALSE(rig.processor.getSession().isEdited());
    }

    rig.interaction.typedText = "0.5";
    rig.interaction.textQuestions.clear();

    for (const int index : {-1, 0, 2, 4, 16, 131, 199, 999, 1507, noParameter})
        rig.processor.editParameterValue(index);

    EXPECT_TRUE(rig.interaction.textQuestions.isEmpty());
    EXPECT_FALSE(rig.processor.getSession().isEdited());
    rig.processor.editParameterValue(1506);
    EXPECT_TRUE(rig.processor.getSession().isEdited());
}

TEST(TypedValues, ReadAsTheyWereTyped)
{
    Values values;
    // A position is a float, and texts are cut off: some numbers read one less, never another way.
    const auto expectRead = [&values](int index, int first, int last)
    {
        for (int typed = first; typed <= last; ++typed)
        {
            const auto value = typedValue(index, juce::String(typed));
            ASSERT_TRUE(value.has_value()) << index << " " << typed;
            const int read = values.textAt(index, *value).removeCharacters("+").getIntValue();
            EXPECT_LE(std::abs(read), std::abs(typed)) << index;
            EXPECT_GE(std::abs(read), std::abs(typed) - 1) << index;
        }
    };

    expectRead(layerParameter(1, layerSlot::volume), -99, 12);
    expectRead(layerParameter(3, layerSlot::pan), -100, 100);
    expectRead(slot::multiKnob + 7, -100, 100);
    expectRead(slot::multiFader, 0, 100);
}

} // namespace quorel::test
