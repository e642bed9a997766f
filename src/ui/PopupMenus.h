// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MenuEntries.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** A menu that can be shown, of rows in plain data. */
inline juce::PopupMenu popupMenuOf(const MenuEntries& entries)
{
    juce::PopupMenu menu;

    for (const auto& entry : entries)
    {
        if (entry.isSeparator())
            menu.addSeparator();
        else if (entry.id == 0)
            menu.addSubMenu(entry.text, popupMenuOf(entry.subMenu), entry.enabled);
        else
            menu.addItem(entry.id, entry.text, entry.enabled, entry.ticked);
    }

    return menu;
}

} // namespace quorel
