// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Sees to it that keys reach the editor's view, and only those that are meant for it. In a window of its own, the
    view hears all keys that no control has. In a host's window the editor takes the keyboard when it is clicked, and
    hands it back with the first key that nothing in it uses, and with the space bar wherever no text is typed; that key
    goes along. What the host itself passes on, the view hears, too. Message thread. */
class EditorKeyboard : private juce::KeyListener,
                       private juce::MouseListener,
                       private juce::FocusChangeListener
{
public:
    /** `view` is all of the contents of `editor`; both outlive this. */
    EditorKeyboard(juce::Component& editor, juce::Component& view);
    ~EditorKeyboard() override;

    /** The editor's window may be another one now. */
    void parentHierarchyChanged();

    /** A key that nothing in the editor has used, while one of its parts had the keyboard. True if it has gone to the
        host. */
    bool passOn(const juce::KeyPress& key);

    /** A part of an editor has no more use for the keyboard, which goes back to the host if there is one. */
    static void leave(const juce::Component& part);

private:
    bool keyPressed(const juce::KeyPress& key, juce::Component* origin) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void globalFocusChanged(juce::Component* focused) override;

    juce::Component& editor;
    juce::Component& view;
    /** The window that is listened to. */
    juce::Component::SafePointer<juce::Component> window;
    /** The control that has the keyboard. */
    juce::Component::SafePointer<juce::Component> control;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(EditorKeyboard)
};

} // namespace quorel
