// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/TextContrast.h"
#include "engine/PluginProcessor.h"
#include "ui/PluginEditor.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

namespace quorel
{

/** A processor that plays and its editor, which is shown in no window but can be worked and pictured all the
    same. Message thread. */
class EditorPictures
{
public:
    explicit EditorPictures(PluginProcessor& pluginProcessor);
    ~EditorPictures();

    /** Plays a factory preset, or what a new instance does for an empty name. False where there is no such
        preset or it needs an instrument that isn't here. */
    bool loadPreset(const juce::String& folder, const juce::String& preset);

    void set(int parameter, float value) { processor.setParameter(parameter, value); }

    void showPage(Page page);
    void showBackPanel();
    /** Panel of all four strips, as `VirtualInstrumentUI::Panel` counts them. */
    void showPanels(int panel);
    void showPanel(int layer, int panel);

    /** Clicks the shown button of this accessible title. False where there is none. */
    bool click(const juce::String& title);
    /** Opens the menu of the shown control of this accessible title or this parameter, and waits for it. */
    bool openMenu(const juce::String& title);
    bool openMenu(int parameter);
    /** Types into the shown label of this accessible title. */
    bool type(const juce::String& title, const juce::String& text);

    /** Plays a chord, so that levels and lights have something to show. */
    void play();
    /** Lets timers and repaints catch up. */
    void settle();

    struct Picture
    {
        juce::Image image;
        std::vector<PaintedText> texts;
        /** Texts of labels that nothing was seen of, so that their contrast isn't known. */
        juce::StringArray unseen;
    };

    /** The editor, and in front of it the menus that are open; `scale` pixels to a layout pixel. All texts that
        aren't the artwork's have their characters. */
    Picture picture(float scale);
    static void closeMenus();

    /** Shows the editor in a window, without which menus close at once. Needs a window manager. */
    void openWindow();

private:
    juce::Component* find(const juce::String& title) const;
    static bool openMenuOf(juce::Component* control);
    /** What the component at a point of the editor says, for text that is drawn as masks. */
    juce::String textAt(juce::Point<float> point) const;

    PluginProcessor& processor;
    std::unique_ptr<PluginEditor> editor;
};

} // namespace quorel
