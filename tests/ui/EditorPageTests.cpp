// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the editor: what stands on them, how they are turned, and how they follow the processor.
#include "EditorTest.h"

#include <algorithm>

namespace quorel::test
{

namespace
{
using Shown = std::vector<std::pair<int, juce::Rectangle<int>>>;

int area(juce::Rectangle<int> box)
{
    return box.getWidth() * box.getHeight();
}

/** The switch for before or after the fader stands on its knob's corner. */
bool isSendSwitch(int parameter)
{
    return isLayerParameter(parameter) && numberInLayer(parameter) >= layerSlot::sendPreFader &&
           numberInLayer(parameter) < layerSlot::sendPreFader + numSends;
}

/** Frames may touch by their margins, but no control hides another. */
void expectNoneHidden(const Shown& shown)
{
    constexpr int tolerated = 3;

    for (size_t i = 0; i < shown.size(); ++i)
    {
        const auto& [parameter, box] = shown[i];
        EXPECT_TRUE(juce::Rectangle<int>(1110, 786).contains(box)) << parameter << " is off the editor";

        for (size_t j = 0; j < i; ++j)
            if (!isSendSwitch(parameter) && !isSendSwitch(shown[j].first))
            {
                EXPECT_LE(area(box.getIntersection(shown[j].second)) * tolerated,
                          std::min(area(box), area(shown[j].second)))
                    << parameter << " over " << shown[j].first;
            }
    }
}
} // namespace

TEST_F(EditorTest, EachPageHasItsControlsAndNoneHidesAnother)
{
    const auto shown = [this]
    {
        Shown list;
        walk(view(),
             [&](juce::Component& part)
             {
                 if (const int parameter = ControlPage::parameterOf(part); parameter > 0)
                     list.emplace_back(parameter, view().getLocalArea(&part, part.getLocalBounds()));
             });
        expectNoneHidden(list);
        const auto texts = TestWindow::texts(view());
        EXPECT_GE(texts.size(), 10u);
        for (const auto& text : texts)
            EXPECT_GE(text.contrast(), leastContrast) << text.text << " at " << text.area.toString();
        return list;
    };
    // Master volume and mute, four page keys; instrument and mixer of each strip; the four keys of its
    // panels.
    constexpr size_t header = 6;
    constexpr size_t strips = 4 * 13;
    constexpr size_t keys = 4 * 4;
    // Key range, zones, Easy, EQ, MIDI.
    constexpr size_t panels[] = {7, 42, 24, 17, 10};

    for (int panel = 0; panel < 5; ++panel)
    {
        for (int layer = 0; layer < numLayers; ++layer)
            engine.setLayer(layer, layerSlot::drumPage, 0.1f * static_cast<float>(panel));

        if (panel == 0)
            open(layersView);
        else
            view().fullRefresh();

        const auto list = shown();
        EXPECT_EQ(list.size(), header + strips + keys + 4 * panels[panel]) << "panel " << panel;

        // Every strip has the same, as far below as the strips stand.
        for (const auto& [parameter, box] : list)
            if (isLayerParameter(parameter) && layerOf(parameter) == 0)
            {
                EXPECT_TRUE(std::count(list.begin(), list.end(),
                                       std::make_pair(parameter + 600, box.translated(0, 3 * 165))) > 0)
                    << parameter;
            }
    }

    engine.set(slot::fxType + 1, 1.5f / 32.0f);
    open(fxView);
    // Five of each slot, eight more of a mono delay, and the master EQ.
    EXPECT_EQ(shown().size(), header + strips + 4 * 5 + 8 + 17);
    open(multiView);
    EXPECT_EQ(shown().size(), header + strips + 4 + 16 + 16);
    open(managerView);
    EXPECT_EQ(shown().size(), header);
    view().showBackPanel();
    EXPECT_EQ(shown().size(), 4u);
}

TEST_F(EditorTest, PageKeysSwitchPagesAndTheViewIsKept)
{
    open(layersView);
    const std::pair<const char*, float> keys[] = {{"Multi-control page", multiView},
                                                  {"Preset Manager page", managerView},
                                                  {"Master FX/EQ page", fxView},
                                                  {"Layers page", layersView}};

    for (const auto& [title, value] : keys)
    {
        window->click(button(title));
        EXPECT_FLOAT_EQ(engine.get(viewParameter), value) << title;
        EXPECT_TRUE(button(title).getToggleState());
        EXPECT_EQ(window->find("Instrument 1") != nullptr, value != managerView);
    }

    // Turning pages is no edit of the sound.
    EXPECT_FALSE(engine.processor.getSession().isEdited());

    const std::pair<float, const char*> saved[] = {{0.35f, "Multi-control page"}, {0.4f, "Layers page"}};

    for (const auto& [value, title] : saved)
    {
        open(value);
        EXPECT_TRUE(button(title).getToggleState()) << value;
    }

    window->click(*window->find("to Back Screen"));
    EXPECT_EQ(window->find("Instrument 1"), nullptr);
    engine.processor.requestEditorRefresh();
    passes();
    EXPECT_EQ(window->find("Instrument 1"), nullptr) << "A refresh leaves the back panel in front";
    view().fullRefresh();
    EXPECT_NE(window->find("Instrument 1"), nullptr);
}

TEST_F(EditorTest, ControlsFollowAutomationOnThePageThatShowsThem)
{
    engine.setLayer(0, layerSlot::drumPage, 0.2f);
    engine.setLayer(1, layerSlot::drumPage, 0.0f);
    open(layersView);
    auto* pan = window->find<juce::Slider>(layerParameter(0, layerSlot::pan));
    auto* easy = window->find<juce::Slider>(layerParameter(0, layerSlot::easyValue));
    auto* solo = window->find<juce::Button>(layerParameter(2, layerSlot::solo));
    auto* keyMin = window->find<juce::Slider>(layerParameter(1, layerSlot::keyMin));
    auto* keyText = dynamic_cast<juce::Label*>(keyMin->getChildComponent(0));

    engine.setLayer(0, layerSlot::pan, 0.25f);
    engine.setLayer(0, layerSlot::easyValue, 0.75f);
    engine.setLayer(2, layerSlot::solo, 1.0f);
    engine.setLayer(1, layerSlot::keyMin, 61.0f / 127.0f);
    engine.set(slot::multiFader, 0.4f);
    passes();
    EXPECT_FLOAT_EQ(static_cast<float>(pan->getValue()), 0.25f);
    EXPECT_FLOAT_EQ(static_cast<float>(easy->getValue()), 0.75f);
    EXPECT_TRUE(solo->getToggleState());
    EXPECT_EQ(keyText->getText(), "C#3");
    EXPECT_FALSE(engine.processor.getParameterTable().isDirty(slot::multiFader))
        << "A flag without a control is taken, too";

    window->click(button("Multi-control page"));
    EXPECT_FLOAT_EQ(static_cast<float>(window->find<juce::Slider>(slot::multiFader)->getValue()), 0.4f);

    // The keys of a strip's panels follow, the panel waits for the next refresh.
    window->click(button("Layers page"));
    engine.setLayer(0, layerSlot::drumPage, 0.4f);
    passes();
    EXPECT_TRUE(button("Layer 1 MIDI panel").getToggleState());
    EXPECT_TRUE(easy->isShowing());
    view().fullRefresh();
    EXPECT_FALSE(easy->isShowing());
}

TEST_F(EditorTest, AnOpenedPageShowsWhatTheParametersSayAndADoubleClickReturnsToTheDefault)
{
    std::vector<float> ofNewInstance;

    for (int parameter = 0; parameter < numHostParameters; ++parameter)
        ofNewInstance.push_back(engine.get(parameter));

    // The rest of the parameters at values of their own; switches that are off as well as on.
    for (int parameter = 1; parameter < numHostParameters; ++parameter)
        if (isLayerParameter(parameter) || parameter >= slot::fxOn)
            engine.set(parameter, 0.05f + 0.9f * static_cast<float>(parameter * 7 % 19) / 19.0f);

    // All panels of the strips, one layer each.
    const std::pair<int, float> panels[] = {{0, 0.0f}, {1, 0.1f}, {2, 0.3f}, {3, 0.4f}};

    for (const auto& [layer, panel] : panels)
    {
        engine.setLayer(layer, layerSlot::drumPage, panel);

        for (const int n : {layerSlot::on, layerSlot::solo})
            engine.setLayer(layer, n, layer % 2 == 0 ? 1.0f : 0.0f);

        for (int n = 0; n < numSends; ++n)
            engine.setLayer(layer, layerSlot::sendPreFader + n, n % 2 == 0 ? 1.0f : 0.0f);
    }

    // Pages are made when first shown, so what they show they have read themselves.
    for (const float page : {layersView, fxView, multiView})
    {
        open(page);
        int checked = 0;
        int returning = 0;
        walk(view(),
             [&](juce::Component& part)
             {
                 const int parameter = ControlPage::parameterOf(part);
                 const int n = isLayerParameter(parameter) ? numberInLayer(parameter) : 0;

                 if (parameter == 0 || parameter == slot::view || n == layerSlot::drumPage ||
                     n == layerSlot::drumMode)
                     return;

                 const auto name = engine.processor.getParameterName(parameter);
                 ++checked;

                 if (auto* slider = dynamic_cast<juce::Slider*>(&part))
                 {
                     EXPECT_FLOAT_EQ(static_cast<float>(slider->getValue()), engine.get(parameter)) << name;
                     // An effect's knobs return to what was set.
                     const bool ofEffect = parameter >= slot::fxOn && parameter < slot::masterEq;

                     if (!slider->isDoubleClickReturnEnabled() || ofEffect)
                         return;

                     ++returning;
                     EXPECT_FLOAT_EQ(static_cast<float>(slider->getDoubleClickReturnValue()),
                                     ofNewInstance[static_cast<size_t>(parameter)])
                         << name;
                 }
                 else if (auto* toggle = dynamic_cast<juce::Button*>(&part))
                 {
                     EXPECT_EQ(toggle->getToggleState(), engine.get(parameter) != 0.0f) << name;
                 }
             });
        EXPECT_GE(checked, 90) << page;
        EXPECT_GE(returning, 4 * 6 + 1 + 11) << "six of each mixer, the master volume, an EQ or more";
    }
}

TEST_F(EditorTest, AnEqsCurveFollowsItsOwnUnitAlone)
{
    engine.setLayer(2, layerSlot::drumPage, 0.3f);
    open(layersView);
    auto* curve = window->find("EQlcd");
    int repaints = 0;
    curve->setCachedComponentImage(new RepaintCount(repaints));

    for (int layer = 0; layer < numLayers; ++layer)
    {
        repaints = 0;
        engine.setLayer(layer, layerSlot::eq + eqSlot::bands + eqSlot::bandGain, 0.7f);
        passes();
        EXPECT_EQ(repaints > 0, layer == 2) << layer;
    }

    curve->setCachedComponentImage(nullptr);
}

TEST_F(EditorTest, WhatIsDraggedWhenItClosesIsLetGo)
{
    open(fxView);
    const GestureCount gestures(engine.processor);
    auto& curves = *window->find("EQlcd");
    window->press(curves, {180, 61});
    window->moveTo(curves, {200, 40}, TestWindow::leftButton);
    EXPECT_EQ(gestures.begun, 2);
    close();
    EXPECT_EQ(gestures.ended, 2);
}

} // namespace quorel::test
