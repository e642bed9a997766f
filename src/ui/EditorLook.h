// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/myLookAndFeel.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** While one exists, this instrument's look is the default of all windows that this binary makes: editors,
    hosted instruments' windows, menus and alerts. It ends with the last holder, so editors may close in any
    order. Message thread. */
class EditorLook
{
public:
    myLookAndFeel& get() { return shared->look; }

private:
    struct Shared
    {
        Shared() { juce::LookAndFeel::setDefaultLookAndFeel(&look); }

        ~Shared() { juce::LookAndFeel::setDefaultLookAndFeel(nullptr); }

        myLookAndFeel look;
    };

    juce::SharedResourcePointer<Shared> shared;
};

} // namespace quorel
