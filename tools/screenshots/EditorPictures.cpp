// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditorPictures.h"

#include "common/MessagePump.h"
#include "presets/PresetFiles.h"
#include "ui/ControlPage.h"
#include "ui/Geometry.h"

#include <functional>

namespace quorel
{

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;
constexpr int settleMillis = 250;
constexpr int menuMillis = 1500;
constexpr int windowMillis = 3000;

juce::Component* findShown(juce::Component& parent, const std::function<bool(juce::Component&)>& matches)
{
    for (auto* child : parent.getChildren())
    {
        if (!child->isVisible())
            continue;
        if (matches(*child))
            return child;
        if (auto* found = findShown(*child, matches))
            return found;
    }
    return nullptr;
}
} // namespace

EditorPictures::EditorPictures(PluginProcessor& pluginProcessor)
    : processor(pluginProcessor)
{
    processor.prepareToPlay(sampleRate, blockSize);
    editor = std::make_unique<PluginEditor>(processor);
    editor->getView().setScalePercent(defaultEditorScale);
}

EditorPictures::~EditorPictures()
{
    closeMenus();
}

bool EditorPictures::loadPreset(const juce::String& folder, const juce::String& preset)
{
    const auto name = preset.isEmpty() ? juce::String(defaultPresetName) : preset;
    const auto folderName = preset.isEmpty() ? juce::String(defaultFolderName) : folder;
    if (findPresetFile(processor.getPaths().banksFolder, folderName, name) == juce::File())
        return false;
    processor.setNames(name, folderName);
    bool complete = processor.getSoundChange().loadPresetFile();
    for (int layer = 0; layer < numLayers; ++layer)
        complete = complete && !processor.getLayer(layer).isMissing();
    processor.getPresetCommands().refreshLists();
    return complete;
}

void EditorPictures::showPage(Page page)
{
    set(slot::view, viewOf(page));
    processor.getEditorRequests().setPage(page);
    editor->getView().fullRefresh();
}

void EditorPictures::showBackPanel()
{
    editor->getView().showBackPanel();
}

void EditorPictures::showPanels(int panel)
{
    for (int layer = 0; layer < numLayers; ++layer)
        showPanel(layer, panel);
}

void EditorPictures::showPanel(int layer, int panel)
{
    // The middle of the step: a tenth each.
    set(layerParameter(layer, layerSlot::drumPage), 0.1f * static_cast<float>(panel) + 0.05f);
    editor->getView().fullRefresh();
}

juce::Component* EditorPictures::find(const juce::String& title) const
{
    return findShown(*editor, [&](juce::Component& component) { return component.getTitle() == title; });
}

bool EditorPictures::click(const juce::String& title)
{
    auto* button = dynamic_cast<juce::Button*>(find(title));
    if (button == nullptr)
        return false;
    button->triggerClick();
    settle();
    return true;
}

bool EditorPictures::openMenu(const juce::String& title)
{
    return openMenuOf(find(title));
}

bool EditorPictures::openMenu(int parameter)
{
    return openMenuOf(findShown(*editor, [&](juce::Component& component)
                                { return ControlPage::parameterOf(component) == parameter; }));
}

bool EditorPictures::openMenuOf(juce::Component* control)
{
    if (auto* box = dynamic_cast<juce::ComboBox*>(control))
        box->showPopup();
    else if (auto* button = dynamic_cast<juce::Button*>(control))
        button->triggerClick();
    else if (control == nullptr || !control->keyPressed(juce::KeyPress(juce::KeyPress::returnKey)))
        return false;
    return pumpUntil([] { return juce::Component::getCurrentlyModalComponent() != nullptr; }, menuMillis);
}

bool EditorPictures::type(const juce::String& title, const juce::String& text)
{
    auto* label = dynamic_cast<juce::Label*>(find(title));
    if (label == nullptr)
        return false;
    label->setText(text, juce::sendNotificationSync);
    settle();
    return true;
}

void EditorPictures::play()
{
    constexpr int numBlocks = 40;
    juce::AudioBuffer<float> buffer(2, blockSize);
    juce::MidiBuffer midi;
    for (const int note : {36, 48, 60, 67, 76})
        midi.addEvent(juce::MidiMessage::noteOn(1, note, 0.8f), 0);
    // A layer's first block after a load only silences it.
    juce::MidiBuffer nothing;
    processor.processBlock(buffer, nothing);
    for (int i = 0; i < numBlocks; ++i)
    {
        processor.processBlock(buffer, midi);
        midi.clear();
    }
}

void EditorPictures::settle()
{
    pumpUntil([] { return false; }, settleMillis);
}

juce::String EditorPictures::textAt(juce::Point<float> point) const
{
    juce::String text;
    // Captions often let the mouse through, so the component under it isn't theirs.
    findShown(
        *editor,
        [&](juce::Component& component)
        {
            if (!component.getLocalBounds().toFloat().contains(component.getLocalPoint(editor.get(), point)))
                return false;
            if (auto* label = dynamic_cast<juce::Label*>(&component))
                text = label->getText();
            else if (auto* button = dynamic_cast<juce::ImageButton*>(&component))
                text = button->getButtonText();
            return text.isNotEmpty();
        });
    return text;
}

EditorPictures::Picture EditorPictures::picture(float scale)
{
    const auto bounds = editor->getLocalBounds().toFloat() * scale;
    juce::Image image(juce::Image::RGB, juce::roundToInt(bounds.getWidth()),
                      juce::roundToInt(bounds.getHeight()), true, juce::SoftwareImageType());
    TextWatch watch(image);
    juce::Graphics g(watch);
    g.addTransform(juce::AffineTransform::scale(scale));
    editor->paintEntireComponent(g, true);

    auto& modal = *juce::ModalComponentManager::getInstance();
    for (int i = modal.getNumModalComponents(); --i >= 0;)
    {
        auto& menu = *modal.getModalComponent(i);
        const juce::Graphics::ScopedSaveState state(g);
        g.setOrigin(editor->getLocalPoint(nullptr, menu.getScreenPosition()));
        g.reduceClipRegion(menu.getLocalBounds());
        menu.paintEntireComponent(g, true);
    }

    Picture picture{image, watch.texts(), {}};
    for (auto& text : picture.texts)
        if (text.text.isEmpty())
            text.text = textAt(text.area.getCentre() / scale);

    findShown(*editor,
              [&](juce::Component& component)
              {
                  const auto* label = dynamic_cast<juce::Label*>(&component);
                  const auto place =
                      editor->getLocalArea(&component, component.getLocalBounds()).toFloat() * scale;
                  const auto isHere = [&](const PaintedText& text) { return place.intersects(text.area); };
                  if (label != nullptr && label->getText().isNotEmpty() && !label->isBeingEdited() &&
                      std::none_of(picture.texts.begin(), picture.texts.end(), isHere))
                      picture.unseen.add(label->getText());
                  return false;
              });
    return picture;
}

void EditorPictures::openWindow()
{
    if (editor->isOnDesktop())
        return;
    editor->addToDesktop(juce::ComponentPeer::windowHasTitleBar |
                         juce::ComponentPeer::windowAppearsOnTaskbar);
    editor->setTopLeftPosition(40, 60);
    editor->setVisible(true);
    editor->toFront(true);
    pumpUntil([&] { return editor->getPeer()->isFocused(); }, windowMillis);
    settle();
}

void EditorPictures::closeMenus()
{
    juce::PopupMenu::dismissAllActiveMenus();
    pumpUntil([] { return juce::Component::getCurrentlyModalComponent() == nullptr; }, menuMillis);
}

} // namespace quorel
