// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <optional>

namespace quorel
{

/** A component that paints the places its keyboard cursor visits, such as rows, words or steps, instead of
    having a child for each. It repaints when the focus comes or goes, and screen readers hear one text.
    Message thread. */
class KeyboardSurface : public juce::Component
{
public:
    explicit KeyboardSurface(juce::AccessibilityRole accessibilityRole);

    void focusGained(FocusChangeType cause) override;
    void focusLost(FocusChangeType cause) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    /** What screen readers hear. */
    virtual juce::String spokenText() const = 0;

    /** Where a key takes a cursor among `count` places: Left and Right to the next, Page Up and Page Down by
        `page`, Home and End to the ends. Nothing for other keys. */
    static std::optional<int> cursorAfter(const juce::KeyPress& key, int cursor, int page, int count);

    /** Shows that the cursor has moved, and tells screen readers. */
    void cursorMoved();

private:
    const juce::AccessibilityRole role;
};

} // namespace quorel
