// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for the controls of all pages: what the display says of them, their tips, and the way of Tab.
#include "EditorTest.h"

#include "ui/HintText.h"
#include "ui/widgets/kappelDisplay.h"

#include <set>

namespace quorel::test
{

namespace
{
class EditorControlTest : public EditorTest
{
protected:
    /** Opens every page, and all panels of the strips, in turn. */
    template <typename Visit>
    void onAllPages(Visit&& visit)
    {
        engine.set(slot::fxType, 26.0f / 32.0f);
        engine.set(slot::fxType + 1, 6.0f / 32.0f);

        // The five panels, of which four are seen at once.
        for (const float first : {0.0f, 0.1f})
        {
            for (int i = 0; i < numLayers; ++i)
                engine.setLayer(i, layerSlot::drumPage, first + 0.1f * static_cast<float>(i) + 0.01f);

            open(layersView);
            visit("Layers, panels from " + juce::String(first));
        }

        for (const float page : {fxView, managerView, multiView})
        {
            open(page);
            visit("page " + juce::String(page));
        }

        view().showBackPanel();
        passes();
        visit("back panel");
    }

    juce::String hintOver(juce::Component& control)
    {
        window->moveTo(control, control.getLocalBounds().getCentre());
        TestWindow::pump();
        return labelText("hintLabel");
    }
};
} // namespace

TEST_F(EditorControlTest, TheDisplayCallsNoControlByANumber)
{
    ASSERT_TRUE(engine.load(0, "Orlen"));
    onAllPages(
        [this](const juce::String& where)
        {
            walk(view(),
                 [&](juce::Component& control)
                 {
                     const bool isControl = dynamic_cast<juce::Button*>(&control) != nullptr ||
                                            dynamic_cast<juce::Slider*>(&control) != nullptr ||
                                            dynamic_cast<juce::ComboBox*>(&control) != nullptr ||
                                            dynamic_cast<kappelDisplay*>(&control) != nullptr;

                     if (!isControl || control.getComponentID().isEmpty())
                         return;

                     const auto hint = hintText(control, engine.processor);
                     const auto name = hint.upToFirstOccurrenceOf(" =", false, false);
                     const bool ofLayer = name.startsWith("Layer") && name.substring(6, 7) == " ";
                     EXPECT_FALSE((ofLayer ? name.substring(7) : name).containsOnly("0123456789 -"))
                         << where << ": '" << hint << "' of " << control.getComponentID() << " "
                         << control.getName();
                     EXPECT_FALSE(hint.trimEnd().endsWithChar('=')) << where << ": " << hint;
                 });
        });
}

TEST_F(EditorControlTest, TheDisplayTellsOfWhatIsUnderTheMouseAndOfMidi)
{
    open(layersView);
    auto& pan = *window->find(layerParameter(1, layerSlot::pan));
    EXPECT_EQ(hintOver(pan), "Layer2 Pan = 0");
    window->wheel(pan, {20, 20}, 0.5f);
    EXPECT_NE(labelText("hintLabel"), "Layer2 Pan = 0") << "The text follows the wheel";
    EXPECT_EQ(hintOver(*window->find(layerParameter(1, layerSlot::midiChannel))),
              "Layer2 Midi Channel = Omni")
        << "A menu's own text counts as the menu";
    EXPECT_EQ(hintOver(button("Layer 1 EQ panel")), "Layer 1 EQ panel");
    window->click(*window->find(slot::masterMute));
    EXPECT_EQ(hintOver(*window->find(slot::masterMute)), "Master mute = On");
    window->moveTo(view(), {600, 350});
    TestWindow::pump();
    EXPECT_EQ(labelText("hintLabel"), "");

    engine.noteOn(60, 100.0f / 127.0f);
    engine.play();
    passes();
    EXPECT_EQ(labelText("midiMonitorLabel"), "Midi C3, Vel 100");
    engine.send(juce::MidiMessage::controllerEvent(1, 7, 99));
    engine.play();
    passes();
    EXPECT_EQ(labelText("midiMonitorLabel"), "Midi Controller 7 = 99");
    EXPECT_TRUE(labelText("cpuLabel").startsWith("CPU ")) << labelText("cpuLabel");
}

TEST_F(EditorControlTest, TipsTellWhatHasNoCaption)
{
    open(layersView);
    const auto tip = [this]
    {
        return window->findWhere(
            [](juce::Component& part)
            { return part.isShowing() && dynamic_cast<juce::TooltipWindow*>(&part) != nullptr; });
    };
    window->moveTo(button("Next preset"), {5, 5});
    TestWindow::pump(500);
    EXPECT_EQ(tip(), nullptr);
    EXPECT_TRUE(pumpUntil([&] { return tip() != nullptr; }, 2000));
    view().fullRefresh();
    // A knob has a caption.
    window->moveTo(*window->find(layerParameter(1, layerSlot::volume)), {20, 20});
    EXPECT_TRUE(pumpUntil([&] { return tip() == nullptr; }, 2000));
}

TEST_F(EditorControlTest, TabReachesFramedControlsInTheirOrder)
{
    onAllPages(
        [this](const juce::String& where)
        {
            auto& page = view();
            page.grabKeyboardFocus();
            std::set<const juce::Component*> seen;
            int lastLayer = -1;
            bool inStrips = false;

            for (;;)
            {
                window->key(juce::KeyPress::tabKey);
                auto* focused = juce::Component::getCurrentlyFocusedComponent();

                if (focused == nullptr || !seen.insert(focused).second)
                    break;

                if (focused == &page)
                    continue;

                EXPECT_TRUE(focused->hasFocusOutline() || dynamic_cast<juce::TextEditor*>(focused) != nullptr)
                    << where << ": " << focused->getTitle() << " " << focused->getName();

                if (auto* strip = focused->findParentComponentOfClass<VirtualInstrumentUI>())
                {
                    EXPECT_GE(strip->getLayer(), lastLayer) << where;
                    lastLayer = strip->getLayer();
                    inStrips = true;
                }
                else if (focused->findParentComponentOfClass<EditorHeader>() != nullptr)
                {
                    EXPECT_FALSE(inStrips) << where << ": " << focused->getTitle() << " comes first";
                }
            }

            EXPECT_GT(seen.size(), 5u) << where;
        });
}

} // namespace quorel::test
