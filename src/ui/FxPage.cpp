// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/FxPage.h"

#include "effects/FxTypes.h"
#include "parameters/ParameterCatalogue.h"
#include "resources/EditorFont.h"
#include "ui/EditorColours.h"
#include "ui/Geometry.h"

namespace quorel
{
namespace
{
constexpr float legendFontHeight = 10.0f;
constexpr int rhythmGateType = 26;
/** The rhythm gate keeps the step masks of its left and right channel in this parameter and the next. */
constexpr int firstStepParameter = 5;

/** The effect type has no such parameter. */
bool isUnused(const juce::String& name)
{
    return name == "-";
}
} // namespace

FxPage::FxPage(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , masterEq(*this, masterEqUnit, pluginProcessor, editorImages)
{
    setSize(geometry::width, geometry::height);
    for (int block = 0; block < numFxBlocks; ++block)
        buildSlot(block);
}

SoundGround* FxPage::groundAt(juce::Point<int> position)
{
    for (const auto& s : slots)
        if (s.ground->getBounds().contains(position))
            return s.ground.get();

    return nullptr;
}

void FxPage::buildSlot(int block)
{
    auto& s = slots[static_cast<size_t>(block)];
    const auto offset = geometry::fx::slotOffset(block);

    s.ground = std::make_unique<SoundGround>(SoundGround::Kind::effect, block, processor);
    s.ground->setBounds(geometry::fx::frame + offset);
    s.ground->setFace(s.ground->getLocalBounds());
    s.ground->setHelpText("Drag to swap effects, with Ctrl to copy");
    addAndMakeVisible(*s.ground);

    s.on = std::make_unique<myOnOff>(at(geometry::fx::on + offset), this, slot::fxOn + block, &images.onOff,
                                     processor);
    addAndMakeVisible(*s.on);

    const auto typePosition = geometry::fx::type + offset;
    s.type = std::make_unique<myBgMenu>(
        juce::Rectangle<int>(typePosition.x, typePosition.y, geometry::fx::typeWidth,
                             geometry::fx::typeHeight),
        this, slot::fxType + block, juce::Rectangle<int>(), &images.readout120, processor);
    for (int type = 0; type < fxTypeCount; ++type)
        s.type->addItem(fxTypes[static_cast<size_t>(type)].name, type + 1);
    addAndMakeVisible(*s.type);

    s.emptyText = std::make_unique<myLabel>(geometry::fx::emptyText + offset, "Choose a type");
    s.emptyText->setColour(juce::Label::textColourId, colours::captionText);
    s.emptyText->setInterceptsMouseClicks(false, false);
    addChildComponent(*s.emptyText);

    constexpr int mixParameters[] = {slot::fxVolume, slot::fxMix, slot::fxPan};
    constexpr const char* mixNames[] = {"Vol", "Mix", "Pan"};
    for (size_t n = 0; n < s.mix.size(); ++n)
    {
        const int number = static_cast<int>(n);
        const auto* film = mixParameters[n] == slot::fxPan ? &images.knobPan : &images.knobVolume;
        s.mix[n] = {std::make_unique<myKnob>(at(geometry::fx::mixKnob(number) + offset), this,
                                             mixParameters[n] + block, film, processor),
                    std::make_unique<myLabelFont>(geometry::fx::mixLabel(number) + offset, mixNames[n],
                                                  &images.labelTextStrip, colours::captionText)};
        addAndMakeVisible(*s.mix[n].knob);
        addAndMakeVisible(*s.mix[n].label);
        s.mix[n].label->setInterceptsMouseClicks(false, false);
    }

    for (size_t j = 0; j < s.parameters.size(); ++j)
    {
        const int number = static_cast<int>(j);
        s.parameters[j] = {std::make_unique<myKnob>(at(geometry::fx::knob(number) + offset), this,
                                                    fxParameter(block, number), &images.knobVolume,
                                                    processor),
                           std::make_unique<myLabel>(geometry::fx::label(number) + offset, juce::String())};
        addChildComponent(*s.parameters[j].knob);
        addChildComponent(*s.parameters[j].label);
        s.parameters[j].label->setColour(juce::Label::textColourId, colours::captionText);
        // Labels reach into the knobs above them.
        s.parameters[j].label->setInterceptsMouseClicks(false, false);
    }

    for (size_t row = 0; row < s.steps.size(); ++row)
    {
        const int number = static_cast<int>(row);
        s.steps[row] =
            std::make_unique<kappelDisplay>(geometry::fx::stepRow(number) + offset,
                                            fxParameter(block, firstStepParameter + number), processor);
        s.steps[row]->setTitle("FX" + juce::String(block + 1) + (row == 0 ? " left steps" : " right steps"));
        addChildComponent(*s.steps[row]);
    }

    // Tab goes through one slot after the other.
    for (auto* child : getChildren())
        if (child->getExplicitFocusOrder() == 0 && s.ground->getBounds().contains(child->getBounds()))
            child->setExplicitFocusOrder(block + 1);
}

void FxPage::showKnob(myKnob& knob)
{
    const auto value = static_cast<double>(processor.readParameter(parameterOf(knob)));
    knob.setDoubleClickReturnValue(true, value);
    knob.setValue(value, juce::dontSendNotification);
}

void FxPage::paint(juce::Graphics& g)
{
    constexpr int letterWidth = 16;
    constexpr int beats = 4;
    constexpr int beatWidth = 40;
    constexpr int stepWidth = 10;
    g.setFont(editorFont(legendFontHeight, true));
    g.setColour(colours::captionText);
    for (const auto& s : slots)
    {
        if (!s.steps[0]->isVisible())
            continue;
        for (const size_t row : {0u, 1u})
        {
            const auto steps = s.steps[row]->getBounds();
            g.drawText(row == 0 ? "L" : "R",
                       steps.withX(steps.getX() - letterWidth).withWidth(letterWidth - 4),
                       juce::Justification::centredRight);
        }
        // Above the first step of each.
        const auto first =
            s.steps[0]->getBounds().translated(0, -stepWidth - 2).withSize(stepWidth, stepWidth);
        for (int beat = 0; beat < beats; ++beat)
            g.drawText(juce::String(beat + 1), first.translated(beatWidth * beat, 0),
                       juce::Justification::centred);
    }
}

void FxPage::refresh()
{
    for (int block = 0; block < numFxBlocks; ++block)
        refreshSlot(block);
    masterEq.refresh();
}

void FxPage::refreshSlot(int block)
{
    auto& s = slots[static_cast<size_t>(block)];
    const int type = fxTypeFromParameter(processor.readParameter(slot::fxType + block));

    showToggle(*s.on);
    s.type->setSelectedItemIndex(type, juce::dontSendNotification);
    s.emptyText->setVisible(type == 0);
    for (auto& mix : s.mix)
        showKnob(*mix.knob);

    for (auto& row : s.steps)
    {
        row->setVisible(type == rhythmGateType);
        row->repaint();
    }

    for (size_t j = 0; j < s.parameters.size(); ++j)
    {
        auto& [knob, label] = s.parameters[j];
        const auto name = processor.getParameterName(parameterOf(*knob));
        const bool used = type != 0 && !isUnused(name);
        knob->setVisible(used);
        label->setVisible(used);
        if (!used)
            continue;
        label->setText(name, juce::dontSendNotification);
        knob->setFilm(fxTypes[static_cast<size_t>(type)].parameters[j].bipolar ? &images.knobPan
                                                                               : &images.knobVolume);
        showKnob(*knob);
    }
}

void FxPage::comboBoxChanged(juce::ComboBox* box)
{
    const int block = parameterOf(*box) - slot::fxType;
    if (block >= 0 && block < numFxBlocks && box->getSelectedItemIndex() >= 0)
        chooseType(block, box->getSelectedItemIndex());
}

void FxPage::chooseType(int block, int type)
{
    const float value = static_cast<float>(type) / static_cast<float>(fxTypeCount - 1);
    processor.setParameterFromUi(slot::fxType + block, value);
    processor.setParameterFromUi(slot::fxOn + block, 1.0f);
    processor.setParameterFromUi(slot::fxType + block, value);

    // Every type starts audible: 0 dB, all of it, in the middle.
    for (const int index : {slot::fxVolume + block, slot::fxMix + block, slot::fxPan + block})
        processor.setParameterFromUi(index, parameterDefault(index));

    const auto& parameters = fxTypes[static_cast<size_t>(type)].parameters;
    for (int j = 0; j < numFxParameters; ++j)
        processor.setParameterFromUi(fxParameter(block, j), parameters[static_cast<size_t>(j)].start);

    host.fullRefresh();
}

} // namespace quorel
