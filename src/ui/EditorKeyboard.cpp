// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EditorKeyboard.h"

#include "platform/PlatformSeamKeyboard.h"

namespace quorel
{
namespace
{
bool isPartOf(const juce::Component* part, const juce::Component& whole)
{
    return part != nullptr && (part == &whole || whole.isParentOf(part));
}
} // namespace

EditorKeyboard::EditorKeyboard(juce::Component& theEditor, juce::Component& theView)
    : editor(theEditor)
    , view(theView)
{
    view.addMouseListener(this, true);
    juce::Desktop::getInstance().addFocusChangeListener(this);
}

EditorKeyboard::~EditorKeyboard()
{
    juce::Desktop::getInstance().removeFocusChangeListener(this);
    view.removeMouseListener(this);

    if (control != nullptr)
        control->removeKeyListener(this);

    if (window != nullptr)
        window->removeKeyListener(this);
}

void EditorKeyboard::parentHierarchyChanged()
{
    auto* present = editor.getTopLevelComponent();

    if (present == window.getComponent())
        return;

    if (window != nullptr)
        window->removeKeyListener(this);

    window = present;

    // The editor itself hears its own keys.
    if (present == &editor)
        window = nullptr;
    else
        window->addKeyListener(this);
}

bool EditorKeyboard::passOn(const juce::KeyPress& key)
{
    // A text being typed keeps the keyboard, and so does who moves from control to control.
    if (key.isKeyCode(juce::KeyPress::tabKey) ||
        dynamic_cast<juce::TextEditor*>(juce::Component::getCurrentlyFocusedComponent()) != nullptr)
        return false;

    // Nor is a key for the host while a question waits for its answer.
    if (const auto* question = juce::Component::getCurrentlyModalComponent(); isPartOf(question, editor))
        return false;

    const auto* peer = editor.getPeer();

    return peer != nullptr && giveKeyToHost(*peer, key);
}

void EditorKeyboard::leave(const juce::Component& part)
{
    if (const auto* peer = part.getPeer(); peer != nullptr && peer->isFocused() && isInHostWindow(*peer))
        giveKeyboardToHost(*peer);
}

void EditorKeyboard::globalFocusChanged(juce::Component* focused)
{
    if (control != nullptr)
        control->removeKeyListener(this);

    // A text has its blanks.
    const bool isControl = isPartOf(focused, view) && dynamic_cast<juce::TextEditor*>(focused) == nullptr;
    control = isControl ? focused : nullptr;

    if (control != nullptr)
        control->addKeyListener(this);
}

bool EditorKeyboard::keyPressed(const juce::KeyPress& key, juce::Component* origin)
{
    if (origin == control.getComponent())
        return key.isKeyCode(juce::KeyPress::spaceKey) && passOn(key);

    // Parts of the editor have been asked before.
    if (isPartOf(juce::Component::getCurrentlyFocusedComponent(), editor))
        return false;

    const auto* peer = editor.getPeer();

    if (peer == nullptr)
        return false;

    if (key.isKeyCode(juce::KeyPress::tabKey) && peer->isFocused())
    {
        // From here JUCE goes on to the next control.
        view.grabKeyboardFocus();
        return false;
    }

    return view.keyPressed(key) || giveKeyToHost(*peer, key);
}

void EditorKeyboard::mouseDown(const juce::MouseEvent& event)
{
    // A menu or a question that the click has opened has the keyboard.
    if (juce::Component::getNumCurrentlyModalComponents() > 0)
        return;

    // A control that was tabbed to keeps it for as long as it is the one in use.
    const auto* focused = juce::Component::getCurrentlyFocusedComponent();

    if (focused == nullptr || !isPartOf(event.originalComponent, *focused))
        view.grabKeyboardFocus();
}

} // namespace quorel
