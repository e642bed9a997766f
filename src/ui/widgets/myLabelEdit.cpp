// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myLabelEdit.h"

#include "ui/TypedText.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myLabelEdit::myLabelEdit(juce::Rectangle<int> bounds, const juce::String& name, const juce::String& text)
    : juce::Label(name, text)
{
    setComponentID(juce::String(noParameter));
    setBounds(bounds);
    setFont(juce::Font(static_cast<float>(getHeight()), juce::Font::bold));
    setJustificationType(juce::Justification::centred);
    setBorderSize({});
    setEditable(true, false);
}

juce::TextEditor* myLabelEdit::createEditorComponent()
{
    auto* field = new TypedText(getName());
    field->applyFontToAllText(getFont());
    field->setJustification(getJustificationType());
    return field;
}

} // namespace quorel
