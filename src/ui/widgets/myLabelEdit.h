// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** Bold text that a single click edits. */
class myLabelEdit : public juce::Label
{
public:
    /** The owner tells its labels by `name`. */
    myLabelEdit(juce::Rectangle<int> bounds, const juce::String& name, const juce::String& text);

protected:
    juce::TextEditor* createEditorComponent() override;
};

} // namespace quorel
