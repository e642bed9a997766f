// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <utility>
#include <vector>

namespace quorel
{

/** One row of a menu in plain data, for an editor to show and for a tool or a test to read: a command with an
    id above 0, a line that separates (no id, no rows below it), or a sub-menu (no id, with rows). */
struct MenuEntry
{
    int id = 0;
    juce::String text;
    bool enabled = true;
    bool ticked = false;
    std::vector<MenuEntry> subMenu;
    /** The file that a row stands for, if any, whatever becomes of its folder while the menu is open. */
    juce::File file = {};

    bool isSeparator() const noexcept { return id == 0 && subMenu.empty(); }

    static MenuEntry command(int commandId, const juce::String& commandText, bool isTicked = false)
    {
        return {commandId, commandText, true, isTicked, {}, {}};
    }

    static MenuEntry separator() { return {}; }

    static MenuEntry rows(const juce::String& title, std::vector<MenuEntry> entries, bool isTicked = false)
    {
        return {0, title, true, isTicked, std::move(entries), {}};
    }
};

using MenuEntries = std::vector<MenuEntry>;

/** The row of this id at the top of a menu; a separator where there is none. */
inline MenuEntry entryWithId(const MenuEntries& menu, int id)
{
    for (const auto& entry : menu)
        if (entry.id == id)
            return entry;

    return {};
}

} // namespace quorel
