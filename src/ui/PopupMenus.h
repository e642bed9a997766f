// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/MenuEntries.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace quorel
{

/** A menu that can be shown, from rows of plain data. */
inline juce::PopupMenu popupMenuOf(const MenuEntries& entries)
{
    juce::PopupMenu menu;

    for (const auto& entry : entries)
    {
        if (entry.isSeparator())
            menu.addSeparator();
        else if (entry.id == 0)
            menu.addSubMenu(entry.text, popupMenuOf(entry.subMenu), entry.enabled, nullptr, entry.ticked);
        else
            menu.addItem(entry.id, entry.text, entry.enabled, entry.ticked);
    }

    return menu;
}

/** Opens a menu at `target`. `chosen` hears the ID of the row that is clicked, unless `owner` has gone by
    then: a menu may outlive its editor. */
inline void showMenu(juce::PopupMenu menu, juce::Component& target, juce::Component& owner,
                     std::function<void(int)> chosen)
{
    menu.setLookAndFeel(&target.getLookAndFeel());
    menu.showMenuAsync(
        juce::PopupMenu::Options().withTargetComponent(target),
        [alive = juce::Component::SafePointer<juce::Component>(&owner), chosen = std::move(chosen)](int id)
        {
            if (alive != nullptr && id > 0)
                chosen(id);
        });
}

/** The same at the mouse. */
inline void showMenuAtMouse(juce::PopupMenu menu, juce::Component& owner, std::function<void(int)> chosen)
{
    menu.setLookAndFeel(&owner.getLookAndFeel());
    menu.showMenuAsync(
        juce::PopupMenu::Options().withTargetComponent(owner).withMousePosition(),
        [alive = juce::Component::SafePointer<juce::Component>(&owner), chosen = std::move(chosen)](int id)
        {
            if (alive != nullptr && id > 0)
                chosen(id);
        });
}

} // namespace quorel
