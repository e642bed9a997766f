// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EditorTips.h"

#include "ui/SoundGround.h"
#include "ui/TEQScreen.h"
#include "ui/widgets/ReadoutBox.h"
#include "ui/widgets/kappelDisplay.h"
#include "ui/widgets/myBgMenu2.h"

namespace quorel
{

namespace
{
constexpr int delayMilliseconds = 1000;

template <typename... Kinds>
bool isOneOf(const juce::Component& component)
{
    return ((dynamic_cast<const Kinds*>(&component) != nullptr) || ...);
}
} // namespace

EditorTips::EditorTips(juce::Component& editor)
    : juce::TooltipWindow(&editor, delayMilliseconds)
{
}

juce::String EditorTips::getTipFor(juce::Component& component)
{
    if (juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown() ||
        component.isCurrentlyBlockedByAnotherModalComponent())
        return {};

    // Knobs and faders have captions, and the display names them.
    for (auto* control = &component; control != nullptr; control = control->getParentComponent())
        if (isOneOf<juce::Button, ReadoutBox, TEQScreen, kappelDisplay, myBgMenu2, SoundGround>(*control))
            return control->getHelpText().isNotEmpty() ? control->getHelpText() : control->getTitle();

    return {};
}

} // namespace quorel
