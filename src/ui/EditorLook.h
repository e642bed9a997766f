// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/EditorFont.h"
#include "ui/myLookAndFeel.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

/** The look that all editors and their boxes share; each sets it for itself. Other windows that this binary makes keep
    JUCE's own colours, but for the typeface, which JUCE asks the default look for. Both end with the last holder, so
    editors may close in any order. Message thread. */
class EditorLook
{
public:
    myLookAndFeel& get() { return shared->look; }

private:
    class TypefaceLook : public juce::LookAndFeel_V4
    {
        juce::Typeface::Ptr getTypefaceForFont(const juce::Font& font) override
        {
            return editorTypeface(font.isBold());
        }
    };

    struct Shared
    {
        Shared() { juce::LookAndFeel::setDefaultLookAndFeel(&plain); }

        ~Shared() { juce::LookAndFeel::setDefaultLookAndFeel(nullptr); }

        myLookAndFeel look;
        TypefaceLook plain;
    };

    juce::SharedResourcePointer<Shared> shared;
};

} // namespace quorel
