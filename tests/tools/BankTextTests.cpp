// SPDX-License-Identifier: GPL-3.0-or-later
// The readable form of presets: what its words set in the engine, and what its errors say.
#include "CommandRuns.h"
#include "PresetText.h"
#include "SoundBuilder.h"

#include "parameters/Categories.h"
#include "parameters/ParameterCodings.h"
#include "support/ProcessorRig.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quorel
{
namespace
{

TEST(BankText, ASoundIsWhatItsTextSays)
{
    test::ProcessorRig rig;
    buildSound(rig.processor, parsePresetText(R"(
Categories: Lead, Kappel FX, Dark

[Layer 2]
Instrument: Tarn
Program: Low End / Rubber Bass
Keys: C1 - B2
Velocity: 20 - 100
Volume: -6.0206 db
Transpose: -12
Midi Channel: 3
Send 1: -12 db
Send 2: 40 % pre
Block: ModWheel, Sustain Pedal
EQ Band 2: 640 hz, +5 db, 30 %
EQ High-pass: 40 hz
Parameter Resonance: 25 %
Easy 12: Vibrato
Solo: On

[Layer 4]
Instrument: Hexley
Zone 1: C1 - D1, 1 - 90
Zone 2: 40
Zone 3: off

[Master]
Volume: -12.0412 db
EQ Low-pass: 8000 hz

[Effect 3]
Type: Kappel
Mix: 30 %
Level: +20 db
Balance: -50
Speed: 1/16
Left Steps: x--- ---- ---- ---x

[Effect 1]
Type: Stereo Delay
Left Delay: 1/8*
Sync: On

[Multi-control 2]
Name: Sweep
Position: 50 %
Knob 3: Layer 2 Easy 3, +40 %
Knob 4: Layer 2 Pan, -100 %
)"));

    constexpr int layer = 1;
    const auto text = [&rig](int index) { return rig.processor.getParameterText(index); };
    const auto layerText = [&](int n) { return text(layerParameter(layer, n)); };
    const auto range = [&rig](int n) { return paramToInt(rig.getLayer(layer, n), 0, 127); };
    EXPECT_EQ(rig.processor.getLayer(layer).getPluginName(), "Tarn");
    EXPECT_EQ(range(layerSlot::keyMin), 36);
    EXPECT_EQ(range(layerSlot::keyMax), 59);
    EXPECT_EQ(range(layerSlot::velocityMin), 20);
    EXPECT_EQ(range(layerSlot::velocityMax), 100);
    EXPECT_NEAR(static_cast<double>(rig.processor.getGains().layerGain(0, layer)), 0.5, 1.0e-3);
    EXPECT_EQ(layerText(layerSlot::transpose), "-12");
    EXPECT_EQ(layerText(layerSlot::midiChannel), "3");
    EXPECT_EQ(layerText(layerSlot::sendLevel), "-12 db");
    EXPECT_EQ(rig.getLayer(layer, layerSlot::sendPreFader), 0.0f);
    EXPECT_EQ(rig.getLayer(layer, layerSlot::sendPreFader + 1), 1.0f);
    EXPECT_FLOAT_EQ(rig.getLayer(layer, layerSlot::sendLevel + 1), 0.4f);
    EXPECT_EQ(layerText(245) + layerText(246) + layerText(247) + layerText(248), "OffOnOffOn");
    EXPECT_EQ(layerText(layerSlot::solo), "On");
    EXPECT_EQ(layerText(386) + ", " + layerText(388) + ", " + layerText(387), "640 hz, 5 db, 30 %");
    EXPECT_EQ(layerText(395) + layerText(layerSlot::eq), "OnOn");

    // Easy 4 shows the resonance that the text sets; Easy 12 moves another parameter than Tarn's own.
    EXPECT_FLOAT_EQ(rig.getLayer(layer, layerSlot::easyValue + 3), 0.25f);
    EXPECT_EQ(rig.processor.getLayer(layer).easyName(11), "Vibrato");

    EXPECT_EQ(text(slot::fxType), "Stereo Delay");
    EXPECT_EQ(text(fxParameter(0, 0)), "1/8*");
    EXPECT_EQ(text(fxParameter(0, 3)) + text(fxParameter(0, 6)), "+0 %20.5 kHz") << "not given, so neutral";
    EXPECT_EQ(static_cast<int>(rig.get(fxParameter(2, 5)) * 65535.9f), 0x8001);
    EXPECT_EQ(rig.get(slot::fxOn + 1), 0.0f);
    EXPECT_FLOAT_EQ(rig.get(slot::fxMix + 2), 0.3f);
    EXPECT_FLOAT_EQ(rig.get(slot::fxVolume + 2), 1.0f);
    EXPECT_FLOAT_EQ(rig.get(slot::fxPan + 2), 0.25f);

    // Low key, high key, low and high velocity of a zone. "off" switches off a zone that is on by default.
    const auto zone = [&rig](int number)
    {
        std::vector<int> found;
        for (const int n : {layerSlot::zoneKeys + 2 * number, layerSlot::zoneVelocities + 2 * number})
            for (const int end : {0, 1})
                found.push_back(paramToInt(rig.getLayer(3, n + end), 0, 127));
        return found;
    };
    EXPECT_EQ(zone(0), (std::vector<int>{36, 38, 1, 90}));
    EXPECT_EQ(zone(1), (std::vector<int>{40, 40, 1, 127}));
    EXPECT_EQ(rig.getLayer(3, layerSlot::zoneOn + 2), 0.0f);

    EXPECT_NEAR(static_cast<double>(cubicGain(rig.get(slot::masterVolume))), 0.25, 1.0e-3);
    const auto masterEq = [&rig](int n) { return rig.get(eqBase(masterEqUnit) + n); };
    EXPECT_EQ(masterEq(eqSlot::on), 1.0f);
    EXPECT_EQ(masterEq(eqSlot::lowPassOn), 1.0f);
    EXPECT_EQ(masterEq(eqSlot::highPassOn), 0.0f);

    const auto flags = categoriesOf(rig.processor);
    EXPECT_EQ(std::count(flags.begin(), flags.end(), 1), 3);
    EXPECT_EQ(flags[0] + flags[22 + 15] + flags[44], 3);

    // Rubber Bass has its cutoff at 30 %: half the fader adds half of the depth.
    EXPECT_NEAR(static_cast<double>(rig.getLayer(layer, layerSlot::easyValue + 2)), 0.3 + 0.2, 1.0e-3);
    EXPECT_NEAR(static_cast<double>(rig.getLayer(layer, layerSlot::pan)), 0.5 - 0.5, 1.0e-3);
    EXPECT_EQ(rig.get(slot::multiName + slot::multiNameLength), encodeParamChar('S'));
}

TEST(BankText, ErrorsNameTheirLine)
{

    struct Case
    {
        juce::String text;
        int line;
        const char* words;
    };

    const juce::String tarn = "[Layer 1]\nInstrument: Tarn\n";
    const juce::String delay = "[Effect 1]\nType: Mono Delay\n";
    const Case cases[] = {
        {"[Multi-control 1]\nKnob 1: Layer 1 Volume, +20 %", 2, "has no instrument"},
        {"# fine\n[Layer 1", 2, "ends with"},
        {"[Master]\nVolume: 0 db\n\n[master]", 4, "line 1 already"},
        {"Categories: Lead, Nonsense", 1, "Nonsense"},
        {"[Layer 1]\nVolume: 0 db", 1, "starts with its Instrument"},
        {tarn + "Program: Attic / Round Bass", 3, "has no bank \"Attic\""},
        {tarn + "Parameter Sparkle: 20 %", 3, "no parameter \"Sparkle\""},
        {tarn + "Keys: C3 - H9", 3, "keys such as"},
        {tarn + "Keys: G8 - G#8", 3, "keys such as"},
        {tarn + "Keys: B2 - C1", 3, "keys such as"},
        {tarn + "Volume: +13 db", 3, "dB up to"},
        {tarn + "Velocity: 1 - 128", 3, "velocities such as"},
        {tarn + "Zone 1: C1, 1 - 90, 3", 3, "velocities behind a comma"},
        {tarn + "On/Off: Perhaps", 3, "never \"Perhaps\""},
        {"[Effect 1]\nType: Blender", 2, "no effect"},
        {delay + "Feedback: +200 %", 3, "from \"-100 %\" to \"+100 %\""},
        {delay + "Feedback: 20 db", 3, "from \"-100 %\" to \"+100 %\""},
        {delay + "Wobble: 10 %", 3, "Mono Delay has no"},
        {"[Effect 1]\nType: Kappel\nLeft Steps: x-x", 3, "sixteen steps"},
        {tarn + "[Multi-control 1]\nKnob 1: Layer 1 Colour, +20 %", 4, "a target and a depth"},
        {tarn + "[Multi-control 1]\nName: A name of more than 23 letters", 4, "at most 23"},
    };
    test::ProcessorRig rig;
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.text);
        try
        {
            buildSound(rig.processor, parsePresetText(c.text));
            ADD_FAILURE() << "accepted";
        }
        catch (const TextError& error)
        {
            EXPECT_EQ(error.line, c.line);
            EXPECT_TRUE(juce::String(error.what()).contains(c.words)) << error.what();
        }
    }
}

TEST(BankCommand, BuildsTheSameBytesAgainAndNamesWhatIsWrong)
{
    const test::ScratchFolder folder;
    const juce::String good = "02 Velocity Layers/Nylon to Steel";
    const auto text = juce::File(QUOREL_TEST_PRESET_TEXTS).getChildFile(good + ".txt");
    folder.child("texts").createDirectory();
    const auto build = [&folder]
    {
        return test::runCommand(QUOREL_TEST_BANK,
                                {"--from", QUOREL_TEST_DIST, folder.child("texts").getFullPathName(),
                                 folder.child("built").getFullPathName()});
    };
    test::expectRefusal(build(), 1, "no presets in ");

    folder.write("texts/" + good + ".txt", text.loadFileAsString());
    const auto broken =
        folder.write("texts/02 Velocity Layers/Broken.txt", "[Layer 1]\nInstrument: Tarn\nKeys: H\n");
    folder.write("texts/02 Velocity Layers/Much too long a name for any preset.txt", "");

    const auto [exitCode, output] = build();
    EXPECT_EQ(exitCode, 1);
    const auto lines = juce::StringArray::fromLines(output.trimEnd());
    ASSERT_EQ(lines.size(), 2) << output;
    EXPECT_TRUE(lines[0].startsWith(broken.getFullPathName() + ":3: Keys takes")) << lines[0];
    EXPECT_TRUE(lines[1].contains("Much too long a name for any preset.txt: a name has at most 24"))
        << lines[1];
    EXPECT_TRUE(
        folder.child("built/" + good + ".qrl")
            .hasIdenticalContentTo(juce::File(QUOREL_TEST_DIST).getChildFile("presets/" + good + ".qrl")));
    EXPECT_EQ(folder.child("built").findChildFiles(juce::File::findFiles, true).size(), 1);
}

} // namespace
} // namespace quorel
