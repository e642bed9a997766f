// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the editor: what stands on them, how they are turned, and how they follow the processor.
#include "EditorTest.h"

#include <algorithm>

namespace quorel::test
{

namespace
{
using Shown = std::vector<std::pair<int, juce::Rectangle<int>>>;

/** All visible controls that stand for a parameter, with their bounds on the editor. */
void collectShown(const juce::Component& root, const juce::Component& parent, Shown& found)
{
    for (const auto* child : parent.getChildren())
    {
        if (!child->isVisible())
            continue;

        if (const int parameter = ControlPage::parameterOf(*child); parameter > 0)
            found.emplace_back(parameter, root.getLocalArea(&parent, child->getBounds()));

        collectShown(root, *child, found);
    }
}

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

std::vector<int> parametersOf(const Shown& shown)
{
    std::vector<int> parameters;

    for (const auto& [parameter, box] : shown)
        parameters.push_back(parameter);

    std::sort(parameters.begin(), parameters.end());
    return parameters;
}
} // namespace

TEST_F(EditorTest, EachPageHasItsControlsAndNoneHidesAnother)
{
    const auto shown = [this]
    {
        Shown list;
        collectShown(view(), view(), list);
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
    EXPECT_EQ(parametersOf(shown()), (std::vector<int>{1, 2, 2, 2, 2, 4}));
    view().showBackPanel();
    EXPECT_EQ(parametersOf(shown()), (std::vector<int>{16, 17, 18, 19}));
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
        EXPECT_EQ(engine.processor.getEditorRequests().getPage(), pageOf(value));
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

    auto& back = *window->find("to Back Screen");
    window->click(back);
    EXPECT_EQ(window->find("Instrument 1"), nullptr);
    EXPECT_EQ(engine.processor.getEditorRequests().takeRefresh(), false);
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
    ASSERT_NE(pan, nullptr);
    ASSERT_NE(keyText, nullptr);

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
    auto* fader = window->find<juce::Slider>(slot::multiFader);
    ASSERT_NE(fader, nullptr);
    EXPECT_FLOAT_EQ(static_cast<float>(fader->getValue()), 0.4f);

    // The keys of a strip's panels follow, the panel waits for the next refresh.
    window->click(button("Layers page"));
    engine.setLayer(0, layerSlot::drumPage, 0.4f);
    passes();
    EXPECT_TRUE(button("Layer 1 MIDI panel").getToggleState());
    EXPECT_TRUE(easy->isShowing());
    view().fullRefresh();
    EXPECT_FALSE(easy->isShowing());
}

TEST_F(EditorTest, AnOpenedPageShowsWhatTheParametersSay)
{
    // All panels of the strips, one layer each; the rest of the parameters at values of their own.
    for (int parameter = 1; parameter < numHostParameters; ++parameter)
        if (isLayerParameter(parameter) || parameter >= slot::fxOn)
            engine.set(parameter, 0.05f + 0.9f * static_cast<float>(parameter * 7 % 19) / 19.0f);

    constexpr int fewToggles[] = {layerSlot::on, layerSlot::solo};
    const std::pair<int, float> panels[] = {{0, 0.0f}, {1, 0.1f}, {2, 0.3f}, {3, 0.4f}};

    for (const auto& [layer, panel] : panels)
    {
        engine.setLayer(layer, layerSlot::drumPage, panel);
        // Switches that are off as well as on.
        for (const int n : fewToggles)
            engine.setLayer(layer, n, layer % 2 == 0 ? 1.0f : 0.0f);

        for (int n = 0; n < numSends; ++n)
            engine.setLayer(layer, layerSlot::sendPreFader + n, n % 2 == 0 ? 1.0f : 0.0f);
    }

    // Pages are made when first shown, so what they show they have read themselves.
    for (const float page : {layersView, fxView, multiView})
    {
        open(page);
        std::function<int(juce::Component&)> check = [&](juce::Component& parent)
        {
            int checked = 0;

            for (auto* child : parent.getChildren())
            {
                checked += check(*child);
                const int parameter = ControlPage::parameterOf(*child);
                const int n = isLayerParameter(parameter) ? numberInLayer(parameter) : 0;

                if (!child->isVisible() || parameter == 0 || parameter == slot::view ||
                    n == layerSlot::drumPage || n == layerSlot::drumMode)
                    continue;

                const auto name = engine.processor.getParameterName(parameter);

                if (auto* slider = dynamic_cast<juce::Slider*>(child))
                {
                    EXPECT_FLOAT_EQ(static_cast<float>(slider->getValue()), engine.get(parameter)) << name;
                }
                else if (auto* toggle = dynamic_cast<juce::Button*>(child))
                {
                    EXPECT_EQ(toggle->getToggleState(), engine.get(parameter) != 0.0f) << name;
                }
                ++checked;
            }

            return checked;
        };
        EXPECT_GE(check(view()), 90) << page;
    }
}

TEST_F(EditorTest, AnEqsCurveFollowsItsOwnUnitAlone)
{
    engine.setLayer(2, layerSlot::drumPage, 0.3f);
    open(fxView);
    open(layersView);
    auto* curve = window->find("EQlcd");
    ASSERT_NE(curve, nullptr);
    int repaints = 0;
    curve->setCachedComponentImage(new RepaintCount(repaints));
    const auto repaintsAfter = [&](int parameter)
    {
        engine.set(parameter, engine.get(parameter) > 0.5f ? 0.3f : 0.7f);
        repaints = 0;
        passes();
        return repaints;
    };
    const int gain = layerSlot::eq + eqSlot::bands + eqSlot::bandGain;
    EXPECT_GT(repaintsAfter(layerParameter(2, gain)), 0);
    EXPECT_EQ(repaintsAfter(layerParameter(1, gain)), 0);
    EXPECT_EQ(repaintsAfter(slot::masterEq + eqSlot::bands + eqSlot::bandGain), 0);
    curve->setCachedComponentImage(nullptr);
}

TEST_F(EditorTest, ADoubleClickReturnsToWhatANewInstanceHas)
{
    for (int layer = 0; layer < numLayers; ++layer)
        engine.setLayer(layer, layerSlot::drumPage, 0.3f);

    std::function<int(juce::Component&)> check = [&](juce::Component& parent)
    {
        int checked = 0;

        for (auto* child : parent.getChildren())
        {
            const int parameter = ControlPage::parameterOf(*child);

            if (auto* slider = dynamic_cast<juce::Slider*>(child);
                slider != nullptr && slider->isVisible() && parameter > 0)
            {
                EXPECT_TRUE(slider->isDoubleClickReturnEnabled()) << parameter;
                EXPECT_FLOAT_EQ(static_cast<float>(slider->getDoubleClickReturnValue()),
                                engine.get(parameter))
                    << engine.processor.getParameterName(parameter);
                ++checked;
            }

            checked += check(*child);
        }

        return checked;
    };
    open(layersView);
    // Six of the mixer and eleven of the EQ a layer, and the master volume.
    EXPECT_EQ(check(view()), 4 * (6 + 11) + 1);
    open(fxView);
    // Here also the master EQ, and three of each slot.
    EXPECT_EQ(check(view()), 4 * 6 + 1 + 11 + 4 * 3);
}

} // namespace quorel::test
