// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MenuEntries.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace quorel
{

/** Where the menu of a control opens. */
enum class PopupPlace
{
    mouse,
    control
};

/** Opens a control's own menu. `chosen` hears of the row that is clicked, unless the control has gone by then: a
    menu may outlive its editor. False, and no menu, without rows. Message thread. */
bool showControlPopup(juce::Component& control, const MenuEntries& rows, PopupPlace place,
                      std::function<void(int)> chosen);

} // namespace quorel
