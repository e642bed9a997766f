// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/KeyboardStrip.h"
#include "ui/StripPanel.h"
#include "ui/widgets/myButton.h"
#include "ui/widgets/myIntBox2.h"
#include "ui/widgets/myLabelB.h"

namespace quorel
{

/** A layer's key range, velocity range and transposition. */
class KeyRangePanel : public StripPanel
{
public:
    KeyRangePanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
                  int layerIndex);

    void refresh() override;

    void follow() override { keyboard.follow(); }

    void buttonClicked(juce::Button* button) override;

private:
    void transposeBy(int semitones);

    myLabelB keyCaption;
    myIntBox2 keyMin;
    myIntBox2 keyMax;
    myLabelB velocityCaption;
    myIntBox2 velocityMin;
    myIntBox2 velocityMax;
    myLabelB transposeCaption;
    myIntBox2 transpose;
    myButton transposeDown;
    myButton transposeUp;
    KeyboardStrip keyboard;
};

} // namespace quorel
