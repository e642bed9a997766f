// SPDX-License-Identifier: GPL-3.0-or-later
// Components in a real window, and the mouse and keyboard of a user in front of them.
#pragma once

#include "common/MessagePump.h"
#include "common/TextContrast.h"
#include "support/ProcessorRig.h"
#include "ui/ControlPage.h"
#include "ui/EditorImages.h"
#include "ui/myLookAndFeel.h"

#include <functional>
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>
#include <memory>
#include <stdexcept>

namespace quorel::test
{

/** A window on the display that shows one component, with events that come in where the window system's do.
    Positions are the named component's own. Message thread. */
class TestWindow
{
public:
    /** Shows `shown`, which outlives the window, and waits for the keyboard focus. */
    explicit TestWindow(juce::Component& shown);
    ~TestWindow();

    static constexpr int leftButton = juce::ModifierKeys::leftButtonModifier;
    static constexpr int rightButton = juce::ModifierKeys::rightButtonModifier;
    static constexpr int shift = juce::ModifierKeys::shiftModifier;

    using Point = juce::Point<int>;

    /** Runs the message loop. */
    static void pump(int millis = 20);

    /** Presses and releases; `buttonAndKeys` as the constants above, added up. */
    void click(juce::Component& target, Point at, int buttonAndKeys = leftButton);
    /** In the middle. */
    void click(juce::Component& target, int buttonAndKeys = leftButton);
    void doubleClick(juce::Component& target, Point at);
    /** Presses at `from`, moves in steps of a few pixels, releases at `to`. */
    void drag(juce::Component& target, Point from, Point to, int buttonAndKeys = leftButton);
    /** Parts of a click, for what happens between. */
    void press(juce::Component& target, Point at, int buttonAndKeys = leftButton);
    void moveTo(juce::Component& target, Point at, int buttonAndKeys = 0);
    void release(juce::Component& target, Point at, int keys = 0);
    /** Turns the wheel; above 0 is away from the user. */
    void wheel(juce::Component& target, Point at, float deltaY);
    /** Types into whatever has the keyboard focus. */
    void key(const juce::KeyPress& key);

    void key(int keyCode) { key(juce::KeyPress(keyCode)); }

    void type(const juce::String& text);
    /** Ends it with Return. */
    void typeLine(const juce::String& text);

    /** First component below the window's with this ID, those that are shown before those that aren't; null
        if there is none. */
    juce::Component* find(int id) const;
    juce::Component* find(const juce::String& name) const;
    juce::Component* findWhere(const std::function<bool(juce::Component&)>& matches) const;
    /** The same by the title that screen readers hear. */
    juce::Component* findTitled(const juce::String& title) const;

    template <typename Type>
    Type* find(int id) const
    {
        return dynamic_cast<Type*>(find(id));
    }

    /** The one of this title, which the test can't do without. */
    template <typename Type>
    Type& titled(const juce::String& title) const
    {
        const auto matches = [&](juce::Component& c)
        { return c.getTitle() == title && dynamic_cast<Type*>(&c) != nullptr; };

        if (auto* found = findWhere(matches))
            return dynamic_cast<Type&>(*found);

        throw std::runtime_error("no such control: " + title.toStdString());
    }

    /** What the component paints, `scale` pixels to a layout pixel. */
    static juce::Image picture(juce::Component& component, float scale = 1.0f);
    /** All text that it paints. */
    static std::vector<PaintedText> texts(juce::Component& component);

    /** Texts of the menu that is open, from the top; those that can't be chosen stand in brackets. Waits for
        the menu. */
    juce::StringArray menuTexts();
    /** Clicks the row of an open menu. False where it isn't there. */
    bool chooseFromMenu(const juce::String& text);
    /** Closes whatever menu is open. */
    static void closeMenus();
    static bool menuIsOpen();

private:
    void send(juce::Component& target, Point at, int buttonAndKeys);
    void movePointer(Point onScreen);

    juce::Component& content;
    juce::int64 clock;
};

/** Whether they have the same pixels. */
bool samePicture(const juce::Image& a, const juce::Image& b);

/** Counts what asks a component to be painted again. */
class RepaintCount : public juce::CachedComponentImage
{
public:
    explicit RepaintCount(int& counted)
        : count(counted)
    {
    }

    void paint(juce::Graphics&) override {}

    bool invalidateAll() override
    {
        ++count;
        return true;
    }

    bool invalidate(const juce::Rectangle<int>&) override { return invalidateAll(); }

    void releaseResources() override {}

private:
    int& count;
};

/** Counts the gestures that a processor's host hears of. */
class GestureCount : private juce::AudioProcessorListener
{
public:
    explicit GestureCount(juce::AudioProcessor& heard)
        : processor(heard)
    {
        processor.addListener(this);
    }

    ~GestureCount() override { processor.removeListener(this); }

    int begun = 0;
    int ended = 0;

private:
    void audioProcessorParameterChanged(juce::AudioProcessor*, int, float) override {}

    void audioProcessorChanged(juce::AudioProcessor*, const ChangeDetails&) override {}

    void audioProcessorParameterChangeGestureBegin(juce::AudioProcessor*, int) override { ++begun; }

    void audioProcessorParameterChangeGestureEnd(juce::AudioProcessor*, int) override { ++ended; }

    juce::AudioProcessor& processor;
};

/** A page's surroundings without the editor: counts what the page asks for. */
class RecordingHost : public EditorHost
{
public:
    void fullRefresh() override
    {
        ++refreshes;
        if (onRefresh)
            onRefresh();
    }

    void controlsChanged() override {}

    void showBackPanel() override {}

    int getScalePercent() const override { return scalePercent; }

    void setScalePercent(int newPercent) override { scalePercent = newPercent; }

    int scalePercent = defaultEditorScale;
    int refreshes = 0;
    std::function<void()> onRefresh;
};

/** A processor with its user, the editor's images and look and feel. What is shown in windows of its own
    comes after it and goes before it. */
struct EditorRig
{
    EditorRig() { juce::LookAndFeel::setDefaultLookAndFeel(&look); }

    ~EditorRig() { juce::LookAndFeel::setDefaultLookAndFeel(nullptr); }

    float get(int parameter) { return engine.get(parameter); }

    void set(int parameter, float value) { engine.set(parameter, value); }

    ProcessorRig engine;
    PluginProcessor& processor{engine.processor};
    RecordingInteraction& interaction{engine.interaction};
    EditorImages images;
    myLookAndFeel look;
    RecordingHost host;
};

/** One page in a window of its own. */
template <typename Page>
class PageTest : public testing::Test
{
protected:
    PageTest()
    {
        rig.host.onRefresh = [this] { page.refresh(); };
        page.refresh();
    }

    EditorRig rig;
    Page page{rig.processor, rig.host, rig.images};
    TestWindow window{page};
};

} // namespace quorel::test
