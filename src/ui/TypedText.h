// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The field of a text that is being typed on the editor. Whoever opens one shows it and calls
    `grabKeyboardFocus`, which in a host takes the keyboard from it; when the field goes, by whatever key or click, the
    host has its keyboard again. Message thread. */
class TypedText : public juce::TextEditor
{
public:
    explicit TypedText(const juce::String& name = {});
    ~TypedText() override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(TypedText)
};

} // namespace quorel
