// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/KeyboardSurface.h"

#include "ui/widgets/ParameterAccessibility.h"

namespace quorel
{

KeyboardSurface::KeyboardSurface(juce::AccessibilityRole accessibilityRole)
    : role(accessibilityRole)
{
    setWantsKeyboardFocus(true);
    setMouseClickGrabsKeyboardFocus(false);
    setHasFocusOutline(true);
}

void KeyboardSurface::focusGained(FocusChangeType)
{
    repaint();
}

void KeyboardSurface::focusLost(FocusChangeType)
{
    repaint();
}

std::unique_ptr<juce::AccessibilityHandler> KeyboardSurface::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler>(
        *this, role, juce::AccessibilityActions(),
        juce::AccessibilityHandler::Interfaces{
            std::make_unique<SpokenText>([this] { return spokenText(); })});
}

std::optional<int> KeyboardSurface::cursorAfter(const juce::KeyPress& key, int cursor, int page, int count)
{
    const std::pair<int, int> moves[] = {{juce::KeyPress::leftKey, cursor - 1},
                                         {juce::KeyPress::rightKey, cursor + 1},
                                         {juce::KeyPress::pageUpKey, cursor - page},
                                         {juce::KeyPress::pageDownKey, cursor + page},
                                         {juce::KeyPress::homeKey, 0},
                                         {juce::KeyPress::endKey, count - 1}};

    for (const auto& [code, place] : moves)
        if (key.getKeyCode() == code)
            return juce::jlimit(0, juce::jmax(0, count - 1), place);

    return {};
}

void KeyboardSurface::cursorMoved()
{
    repaint();

    if (auto* handler = getAccessibilityHandler())
        handler->notifyAccessibilityEvent(juce::AccessibilityEvent::valueChanged);
}

} // namespace quorel
