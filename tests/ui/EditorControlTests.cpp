// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for the controls of all pages: what the editor says of them, their tips, and the way of the Tab key.
#include "EditorTest.h"

#include "parameters/ParameterCodings.h"
#include "ui/HintText.h"
#include "ui/widgets/kappelDisplay.h"
#include "ui/widgets/myIntBox.h"

#include <gtest/gtest.h>

#include <set>

namespace quorel::test
{

namespace
{
class EditorControlTest : public EditorTest
{
protected:
    /** Calls `visit` for the view's parts, at any depth, that are shown. */
    template <typename Visit>
    static void walk(juce::Component& parent, Visit&& visit)
    {
        for (auto* child : parent.getChildren())
            if (child->isShowing())
            {
                visit(*child);
                walk(*child, visit);
            }
    }

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

    open(layersView);
    engine.setLayer(1, layerSlot::easyMapping, encodeParamInt(0));
    EXPECT_EQ(hintOver(*window->find(layerParameter(1, layerSlot::midiChannel))),
              "Layer2 Midi Channel = Omni");
    EXPECT_EQ(hintOver(button("Layer 1 EQ panel")), "Layer 1 EQ panel");
    window->click(*window->find(slot::masterMute));
    EXPECT_EQ(hintOver(*window->find(slot::masterMute)), "Master mute = On");
    EXPECT_EQ(hintOver(button("Next preset")), "Next preset");
    open(fxView);
    engine.set(slot::masterEq + eqSlot::bands + eqSlot::bandFreq, 0.5f);
    passes();
    EXPECT_EQ(hintOver(*window->find(slot::masterEq + eqSlot::bands + eqSlot::bandFreq)),
              "Master EQ Band 1 frequency = 640 hz");
}

TEST_F(EditorControlTest, ATempoCanBeTypedToTheFraction)
{
    open(layersView);
    auto& box = titled<myIntBox>("Tempo");
    const auto type = [&](const juce::String& text)
    {
        window->doubleClick(box, box.getLocalBounds().getCentre());

        window->type(text);
        window->key(juce::KeyPress(juce::KeyPress::returnKey));
        passes();
        return engine.processor.getTempo().bpm();
    };

    EXPECT_EQ(type("98.5"), 98.5);
    EXPECT_EQ(box.getTextFromValue(box.getValue()), "BPM 98.5");
    EXPECT_FALSE(box.hasKeyboardFocus(true)) << "The arrow keys are the presets' again";
    EXPECT_EQ(type("fast"), 98.5) << "What is no number changes nothing";
    EXPECT_EQ(type("9000"), 500.0);
    window->wheel(box, {20, 7}, -0.2f);
    EXPECT_EQ(engine.processor.getTempo().bpm(), 499.0);
    window->click(box, TestWindow::rightButton);
    ASSERT_TRUE(window->chooseFromMenu("Halve"));
    EXPECT_EQ(engine.processor.getTempo().bpm(), 249.5);
}

TEST_F(EditorControlTest, TipsTellWhatHasNoCaption)
{
    open(layersView);
    const auto tip = [this]
    {
        juce::Component* shown = nullptr;
        walk(view(),
             [&](juce::Component& part)
             {
                 if (dynamic_cast<juce::TooltipWindow*>(&part) != nullptr)
                     shown = &part;
             });
        return shown;
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
                window->key(juce::KeyPress(juce::KeyPress::tabKey));
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
