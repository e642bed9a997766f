// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/widgets/KeyboardSurface.h"
#include "ui/widgets/myLabelEdit.h"

#include <functional>

namespace quorel
{

/** Heart and five stars of the selected presets, or of the current one. A click on the heart makes them favourites or
    ends that; one on a star rates them, and on the last star that is lit takes the rating off. Message thread. */
class PresetMarkRow : public KeyboardSurface
{
public:
    PresetMarkRow(juce::Rectangle<int> bounds, PluginProcessor& pluginProcessor);

    /** Called after a mark has been changed. */
    std::function<void()> onChange;

    /** Where the heart (0) or a star (1 to 5) stands. */
    static juce::Rectangle<int> signBounds(int sign);

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    /** Left and Right choose a sign; the space bar and Return click it. */
    bool keyPressed(const juce::KeyPress& key) override;

protected:
    juce::String spokenText() const override;

private:
    PresetMark shownMark() const;
    void click(int sign);

    PluginProcessor& processor;
    int cursor = 0;
};

/** The line above the list of presets: marks, author and comment of the current preset, the latter two to be
    written into its file. Message thread. */
class PresetDetails : public juce::Component, private juce::Label::Listener
{
public:
    /** `changed` is called after anything has been changed. */
    PresetDetails(PluginProcessor& pluginProcessor, std::function<void()> changed);

    /** Sets everything from the library. */
    void refresh();

private:
    void labelTextChanged(juce::Label* label) override;
    /** `placeholder` stands where nothing has been written yet. */
    void setUp(juce::Label& label, const char* placeholder, int longest);

    PluginProcessor& processor;
    PresetMarkRow marks;
    myLabelEdit author;
    myLabelEdit comment;
    PresetPlace shown;
    std::function<void()> onChange;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(PresetDetails)
};

} // namespace quorel
