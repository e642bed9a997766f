// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MultiControlPage.h"

#include "engine/MultiControlMenu.h"
#include "parameters/HoldSwitches.h"
#include "ui/EditorColours.h"
#include "ui/Geometry.h"
#include "ui/PopupMenus.h"
#include "ui/widgets/MenuMark.h"

namespace quorel
{

namespace
{
constexpr int numBigFaderFrames = 142;
constexpr int rowsPerColumn = numMultiTargets / numMultiFaders;
constexpr int nameCharacters = slot::multiNameLength - 2;
constexpr const char* nameLabel = "multiLabel";
constexpr const char* targetButtonName = "multimenubutton";

/** As the knobs' parameters are named: "1/3" is the third of column 1. */
juce::String knobNumber(int t)
{
    return juce::String(t / rowsPerColumn + 1) + "/" + juce::String(t % rowsPerColumn + 1);
}

/** Takes no more characters than a preset stores. Smaller than its box is high: the columns' headings stand
    above it. */
class NameLabel : public myLabelEdit
{
public:
    explicit NameLabel(juce::Rectangle<int> bounds)
        : myLabelEdit(bounds, nameLabel, {})
    {
        constexpr float fontHeight = 12.5f;
        setFont(juce::Font(fontHeight, juce::Font::bold));
    }

private:
    juce::TextEditor* createEditorComponent() override
    {
        auto* typed = myLabelEdit::createEditorComponent();
        typed->setInputRestrictions(nameCharacters);
        return typed;
    }
};
} // namespace

//==============================================================================================================

MultiControlPage::TargetButton::TargetButton(const juce::String& name, const CBitmap& frameImage)
    : juce::DrawableButton(name, juce::DrawableButton::ImageStretched)
    , frame(frameImage)
{
}

void MultiControlPage::TargetButton::paintButton(juce::Graphics& g, bool, bool)
{
    frame.paint(g, getLocalBounds().toFloat());
    drawMenuMark(g, getLocalBounds());
}

MultiControlPage::HoldSwitch::HoldSwitch(juce::Rectangle<int> bounds, MultiControlPage& page, int t,
                                         juce::Component& heldKnob)
    : myOnOff(bounds, &page, slot::multiHold + t, &page.images.holdOnOff, page.processor)
    , knob(heldKnob)
{
}

void MultiControlPage::HoldSwitch::buttonStateChanged()
{
    myOnOff::buttonStateChanged();
    knob.setEnabled(!getToggleState());
}

//==============================================================================================================

MultiControlPage::MultiControlPage(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                                   const EditorImages& editorImages)
    : ControlPage(pluginProcessor, editorHost, editorImages)
{
    setSize(geometry::width, geometry::height);

    for (int column = 0; column < numMultiFaders; ++column)
    {
        addColumn(column);

        for (int row = 0; row < rowsPerColumn; ++row)
            addTarget(column, row);
    }
}

void MultiControlPage::addColumn(int column)
{
    auto& fader = faders[static_cast<size_t>(column)];
    fader = std::make_unique<mySlider2>(at(geometry::multi::fader(column)), this, slot::multiFader + column,
                                        &images.bigFader, numBigFaderFrames, processor);
    returnToDefault(*fader);
    addAndMakeVisible(*fader);

    auto& name = names[static_cast<size_t>(column)];
    name = std::make_unique<NameLabel>(geometry::multi::name(column));
    name->setComponentID(juce::String(column));
    name->setTitle("Name of multi fader " + juce::String(column + 1));
    name->addListener(this);
    addAndMakeVisible(*name);
}

void MultiControlPage::addTarget(int column, int row)
{
    const int t = rowsPerColumn * column + row;
    const auto box = geometry::multi::target(column, row);
    const auto title = "Multi knob " + knobNumber(t);
    auto& target = targets[static_cast<size_t>(t)];

    target.knob = std::make_unique<myKnob>(at(geometry::multi::knob(column, row)), this, slot::multiKnob + t,
                                           &images.knobPan, processor);
    returnToDefault(*target.knob);
    target.hold =
        std::make_unique<HoldSwitch>(at(geometry::multi::hold(column, row)), *this, t, *target.knob);
    target.hold->setTitle(title + " hold");

    target.button = std::make_unique<TargetButton>(targetButtonName + juce::String(t), images.multiTarget);
    setUpHotspot(*target.button, box, title + " target");
    target.button->setTriggeredOnMouseDown(true);

    const auto line = box.withHeight(geometry::multi::targetLineHeight);
    target.layerLine = std::make_unique<myLabel2>(line, title + " layer and target", juce::String(),
                                                  colours::brightText, juce::Colours::transparentBlack);
    target.nameLine = std::make_unique<myLabel2>(line.translated(0, geometry::multi::targetLineStep),
                                                 title + " hosted parameter", juce::String(),
                                                 colours::brightText, juce::Colours::transparentBlack);

    // The second line ends at the mark.
    target.nameLine->setBorderSize({0, menuMarkRoom, 0, menuMarkRoom});
    addControls({target.knob.get(), target.hold.get(), target.button.get(), target.layerLine.get(),
                 target.nameLine.get()});

    // The lines lie over the button.
    target.layerLine->setInterceptsMouseClicks(false, false);
    target.nameLine->setInterceptsMouseClicks(false, false);
}

void MultiControlPage::refresh()
{
    for (int column = 0; column < numMultiFaders; ++column)
    {
        showSlider(*faders[static_cast<size_t>(column)]);
        auto& name = *names[static_cast<size_t>(column)];

        // Don't overwrite what is being typed.
        if (!name.isBeingEdited())
            name.setText(multiControlName(processor, column), juce::dontSendNotification);
    }

    for (int t = 0; t < numMultiTargets; ++t)
        showTarget(t);
}

void MultiControlPage::showTarget(int t)
{
    auto& target = targets[static_cast<size_t>(t)];
    const auto text = multiTargetText(processor, t);
    showSlider(*target.knob);
    showToggle(*target.hold);
    target.layerLine->setText(text.layerLine, juce::dontSendNotification);
    target.nameLine->setText(text.nameLine, juce::dontSendNotification);
    target.button->setDescription(text.layerLine + " " + text.nameLine);
}

void MultiControlPage::showTargetMenu(int t)
{
    showMenu(popupMenuOf(multiTargetMenu(processor, t)), *targets[static_cast<size_t>(t)].button, *this,
             [this, t](int chosen)
             {
                 chooseMultiTarget(processor, t, chosen);
                 host.fullRefresh();
             });
}

void MultiControlPage::buttonClicked(juce::Button* button)
{
    if (button->getName().startsWith(targetButtonName))
    {
        showTargetMenu(button->getName().getTrailingIntValue());
        return;
    }

    const int t = parameterOf(*button) - slot::multiHold;
    setHold(processor, t, button->getToggleState());
    showTarget(t);
}

void MultiControlPage::labelTextChanged(juce::Label* label)
{
    const int column = label->getComponentID().getIntValue();
    setMultiControlName(processor, column, label->getText());
    label->setText(multiControlName(processor, column), juce::dontSendNotification);
}

} // namespace quorel
