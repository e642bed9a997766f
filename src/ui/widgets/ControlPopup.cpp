// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ControlPopup.h"

#include "ui/PopupMenus.h"

namespace quorel
{

bool showControlPopup(juce::Component& control, const MenuEntries& rows, PopupPlace place,
                      std::function<void(int)> chosen)
{
    if (rows.empty())
        return false;

    auto menu = popupMenuOf(rows);
    menu.setLookAndFeel(&control.getLookAndFeel());
    auto options = juce::PopupMenu::Options().withTargetComponent(control);

    if (place == PopupPlace::mouse)
        options = options.withMousePosition();

    menu.showMenuAsync(
        options,
        [alive = juce::Component::SafePointer<juce::Component>(&control), chosen = std::move(chosen)](int id)
        {
            if (alive != nullptr && id > 0)
                chosen(id);
        });
    return true;
}

} // namespace quorel
