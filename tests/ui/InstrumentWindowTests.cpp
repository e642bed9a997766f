// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the layers' instruments.
#include "EditorTest.h"

#include "support/FaultyInstruments.h"
#include "ui/PluginWindow.h"

namespace quorel::test
{

class InstrumentWindowTest : public EditorTest
{
protected:
    juce::DocumentWindow& windowOf(int i)
    {
        return dynamic_cast<juce::DocumentWindow&>(*layer(i).getWindow());
    }
};

TEST_F(InstrumentWindowTest, GoesWithTheInstrumentAndStaysWithoutTheEditor)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    ASSERT_TRUE(engine.load(1, "Tarn"));
    open();

    for (const int i : {0, 1})
    {
        window->click(button("Layer " + juce::String(i + 1) + " instrument's window"));
        ASSERT_TRUE(layer(i).isWindowShowing());
    }

    const auto* first = layer(0).getWindow();
    EXPECT_EQ(windowOf(0).getName(), "Orlen");
    EXPECT_GT(windowOf(0).getContentComponent()->getWidth(), 50);
    passes();
    EXPECT_TRUE(button("Layer 1 instrument's window").getToggleState());
    PluginWindow::open(layer(0));
    EXPECT_EQ(layer(0).getWindow(), first) << "One window for each";

    close();
    TestWindow::pump(100);
    EXPECT_TRUE(layer(0).isWindowShowing());
    engine.processor.chooseInstrument(0, nullptr);
    EXPECT_FALSE(layer(0).isWindowShowing());

    // Its own close button; then once more, to go with the processor.
    windowOf(1).closeButtonPressed();
    EXPECT_FALSE(layer(1).isWindowShowing());
    PluginWindow::open(layer(1));
    EXPECT_TRUE(layer(1).isWindowShowing());
    TestWindow::pump(50);
}

TEST_F(InstrumentWindowTest, IsNoLargerThanAnyScreen)
{
    setFaults(useFaulty(engine, {"Hexley"}), "Hexley", "window size-in-idle");
    ASSERT_TRUE(engine.load(0, "Hexley"));
    PluginWindow::open(layer(0));
    TestWindow::pump(300);
    EXPECT_TRUE(layer(0).isWindowShowing());
    EXPECT_GT(windowOf(0).getWidth(), 1000);
    EXPECT_LT(windowOf(0).getWidth(), 10000);
}

TEST_F(InstrumentWindowTest, HoldsTheInstrumentsOwnEditor)
{
    // The starter instruments have no editor of their own; this plug-in has one.
    juce::PluginDescription description;
    description.name = "Quorel";
    description.pluginFormatName = "VST";
    description.fileOrIdentifier = QUOREL_PLUGIN_FILE;
    ASSERT_TRUE(layer(0).loadPlugin(description));
    PluginWindow::open(layer(0));
    // It comes to its size by and by, on a busy machine late.
    const auto isWhole = [this]
    { return windowOf(0).getContentComponent()->getLocalBounds() == juce::Rectangle<int>(1110, 786); };
    EXPECT_TRUE(pumpUntil(isWhole, 10000));
    EXPECT_TRUE(layer(0).requestUnload()) << "The window goes first, the instrument half a second later";
    EXPECT_FALSE(layer(0).isWindowShowing());
    EXPECT_TRUE(pumpUntil([this] { return !layer(0).hasInstance(); }, 3000));
}

} // namespace quorel::test
