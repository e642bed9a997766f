// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EditorHeader.h"

#include "engine/OriginalComparison.h"
#include "midi/NoteNames.h"
#include "ui/EditorColours.h"
#include "ui/Geometry.h"
#include "ui/PopupMenus.h"
#include "ui/widgets/MenuMark.h"

namespace quorel
{

namespace
{
constexpr int pageRadioGroup = 10;
constexpr int minimumBpm = 30;
constexpr int maximumBpm = 500;
constexpr int usualBpm = 120;
constexpr int cpuIndent = 3;
constexpr unsigned int passesPerCpuText = 5;
constexpr float labelFontHeight = 13.0f;
constexpr const char* loadingText = "LOADING PLEASE WAIT...";
constexpr const char* noDeviceText = "No audio: check the audio device";
constexpr const char* noHostAudioText = "The host isn't running audio";
constexpr const char* userGuideFile = "quorel-user-guide.html";
} // namespace

EditorHeader::EditorHeader(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                           const EditorImages& editorImages)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , masterVolume(juce::Rectangle<int>(geometry::knobSize, geometry::knobSize)
                       .withCentre(geometry::header::masterVolumeCentre),
                   this, slot::masterVolume, &images.masterVolume, processor)
    , masterMute(at(geometry::header::masterMute), this, slot::masterMute, &images.iconMute, processor)
    , userGuide(at(geometry::header::userGuide), this, &images.iconUserGuide, processor)
    , previewNote(at(geometry::header::previewNote), this, &images.iconNote)
    , editKey(at(geometry::header::editKey), this, &images.keyEdit, processor)
    , origKey(at(geometry::header::origKey), this, &images.keyOrig, processor)
    , tempoBox(geometry::header::tempo, this, &images.readout60, "BPM ", processor)
    , tapButton(at(geometry::header::tap), this, &images.tap, processor)
    , meter(geometry::header::meter)
    , folderPrevious(at(geometry::header::folderPrevious), this, &images.arrowBigLeft, processor)
    , folderNext(at(geometry::header::folderNext), this, &images.arrowBigRight, processor)
    , folderLabel(geometry::header::folderMenu, "Folder", {}, colours::brightText,
                  juce::Colours::transparentBlack)
    , presetPrevious(at(geometry::header::presetPrevious), this, &images.arrowBigLeft, processor)
    , presetNext(at(geometry::header::presetNext), this, &images.arrowBigRight, processor)
    , presetLabel(geometry::header::presetMenu, "Preset", {}, colours::brightText,
                  juce::Colours::transparentBlack)
    , undoKeys(geometry::header::undoKeys, processor)
{
    setSize(geometry::width, geometry::height);
    addAndMakeVisible(undoKeys);
    // Under everything else: the mute switch reaches into it.
    setUpHotspot(backPanelButton, geometry::header::backPanel, "Back panel");
    addAndMakeVisible(backPanelButton);
    returnToDefault(masterVolume);
    tempoBox.minimum = minimumBpm;
    tempoBox.maximum = maximumBpm;
    tempoBox.defaultNumber = usualBpm;
    meter.setInterceptsMouseClicks(false, false);

    addPageKeys();
    setUpLabel(hintLabel, geometry::header::hint);
    setUpLabel(midiMonitorLabel, geometry::header::midiMonitor);
    setUpLabel(cpuLabel, geometry::header::cpu);
    cpuLabel.setBorderSize({0, cpuIndent, 0, 0});
    setUpMenuButton(folderMenuButton, geometry::header::folderMenu, folderLabel, "Folder menu");
    setUpMenuButton(presetMenuButton, geometry::header::presetMenu, presetLabel, "Preset menu");

    addTitledControls();
    cpuLabel.setText("CPU 0%", juce::dontSendNotification);
}

EditorHeader::~EditorHeader()
{
    processor.getMidiInput().endAudition();
}

void EditorHeader::addPageKeys()
{
    const juce::Point<int> positions[] = {geometry::header::layersKey, geometry::header::fxKey,
                                          geometry::header::managerKey, geometry::header::multiKey};
    const CBitmap* keyImages[] = {&images.keyLayers, &images.keyFx, &images.keyManager, &images.keyMulti};
    constexpr const char* titles[] = {"Layers page", "Master FX/EQ page", "Preset Manager page",
                                      "Multi-control page"};

    for (int page = 0; page < numPages; ++page)
    {
        auto& key = pageKeys[static_cast<size_t>(page)];
        key = std::make_unique<myOnOff>(at(positions[page]), this, slot::view, keyImages[page], processor);
        key->setRadioGroupId(pageRadioGroup);
        key->setTitle(titles[page]);
        addAndMakeVisible(*key);
    }
}

void EditorHeader::addTitledControls()
{
    const std::pair<juce::Component*, const char*> titled[] = {{&masterVolume, "Master volume"},
                                                               {&masterMute, "Master mute"},
                                                               {&userGuide, "User guide"},
                                                               {&previewNote, "Preview note"},
                                                               {&editKey, "Edited preset"},
                                                               {&origKey, "Original preset"},
                                                               {&tempoBox, "Tempo"},
                                                               {&tapButton, "Tap tempo"},
                                                               {&meter, "Output level"},
                                                               {&folderPrevious, "Previous folder"},
                                                               {&folderNext, "Next folder"},
                                                               {&presetPrevious, "Previous preset"},
                                                               {&presetNext, "Next preset"}};

    for (const auto& [control, title] : titled)
    {
        control->setTitle(title);
        addAndMakeVisible(control);
    }
}

void EditorHeader::setUpLabel(juce::Label& label, juce::Rectangle<int> bounds)
{
    label.setBounds(bounds);
    label.setFont(juce::Font(labelFontHeight, juce::Font::bold));
    label.setBorderSize({});
    label.setInterceptsMouseClicks(false, false);
    addAndMakeVisible(label);
}

void EditorHeader::setUpMenuButton(juce::DrawableButton& button, juce::Rectangle<int> bounds,
                                   juce::Label& caption, const juce::String& title)
{
    setUpHotspot(button, bounds, title);
    button.setTriggeredOnMouseDown(true);
    addAndMakeVisible(button);
    caption.setInterceptsMouseClicks(false, false);
    caption.setBorderSize({0, menuMarkRoom, 0, menuMarkRoom});
    addAndMakeVisible(caption);
}

void EditorHeader::refresh()
{
    showSlider(masterVolume);
    showToggle(masterMute);
    const auto page = viewPageOf(processor);

    for (int i = 0; i < numPages; ++i)
        pageKeys[static_cast<size_t>(i)]->setToggleState(static_cast<Page>(i) == page,
                                                         juce::dontSendNotification);

    showNames();
    showComparison();
    showTempo();
}

void EditorHeader::showNames()
{
    shownEdited = processor.getSession().isEdited();
    folderLabel.setText(processor.getFolderName(), juce::dontSendNotification);
    presetLabel.setText(processor.getPresetName() + (shownEdited ? " *" : ""), juce::dontSendNotification);
    const auto& song = processor.getMidiInput().getSong();
    previewNote.setTooltip(song.isLoaded() ? "Plays " + song.getName() + ". With Shift, the note again"
                                           : juce::String());
}

void EditorHeader::update()
{
    if (processor.getSession().isEdited() != shownEdited)
        showNames();

    showComparison();
    undoKeys.update();
    showMidi();
    showTempo();
    showWhetherAudioRuns();
    const auto& levels = processor.getMeter();

    // Nobody reads faster, and every change is painted.
    if (++passes % passesPerCpuText == 0)
        showCpu(static_cast<int>(levels.cpuPercent()));

    meter.left = levels.peakLeft();
    meter.right = levels.peakRight();
    meter.follow();
}

void EditorHeader::showCpu(int percent)
{
    if (std::exchange(shownCpu, percent) != percent)
        cpuLabel.setText("CPU " + juce::String(percent) + "%", juce::dontSendNotification);
}

void EditorHeader::showComparison()
{
    const bool original = processor.getOriginalComparison().isShowingOriginal();
    origKey.setToggleState(original, juce::dontSendNotification);
    editKey.setToggleState(!original, juce::dontSendNotification);
}

void EditorHeader::showMidi()
{
    const auto& monitor = processor.getMidiInput().getMonitor();

    if (monitor.lastNoteNumber() != shownNote || monitor.lastNoteVelocity() != shownVelocity)
    {
        shownNote = monitor.lastNoteNumber();
        shownVelocity = monitor.lastNoteVelocity();
        midiText = shownVelocity > 0 ? "Midi " + noteName(shownNote) + ", Vel " + juce::String(shownVelocity)
                                     : juce::String();
        midiMonitorLabel.setText(midiText, juce::dontSendNotification);
    }

    if (monitor.lastControllerNumber() != shownController ||
        monitor.lastControllerValue() != shownControllerValue)
    {
        shownController = monitor.lastControllerNumber();
        shownControllerValue = monitor.lastControllerValue();
        midiText =
            "Midi Controller " + juce::String(shownController) + " = " + juce::String(shownControllerValue);
        midiMonitorLabel.setText(midiText, juce::dontSendNotification);
    }
}

void EditorHeader::showTempo()
{
    // A playing host can change the tempo as well.
    if (const double bpm = processor.getTempo().bpm(); bpm != shownBpm && !tempoBox.isMouseButtonDown())
    {
        shownBpm = bpm;
        tempoBox.showNumber(bpm);
    }
}

void EditorHeader::showWhetherAudioRuns()
{
    const bool running = processor.getSoundChange().getFade().areBlocksRunning();
    const auto type = processor.wrapperType;
    const auto shown = hintLabel.getText();

    // Where there is neither a device nor a host, nobody expects to hear anything.
    if (running && (shown == noDeviceText || shown == noHostAudioText))
        hintLabel.setText({}, juce::dontSendNotification);
    else if (!running && shown.isEmpty() && type != juce::AudioProcessor::wrapperType_Undefined)
        hintLabel.setText(type == juce::AudioProcessor::wrapperType_Standalone ? noDeviceText
                                                                               : noHostAudioText,
                          juce::dontSendNotification);
}

void EditorHeader::showLoading(bool loading)
{
    if (loading)
    {
        hintLabel.setColour(juce::Label::textColourId, juce::Colours::orange);
        hintLabel.setText(loadingText, juce::dontSendNotification);
        hintLabel.setVisible(true);
        midiMonitorLabel.setColour(juce::Label::textColourId, juce::Colours::orange);
        // The newest choice, whatever is on its way already.
        midiMonitorLabel.setText(processor.getPresetName(), juce::dontSendNotification);
        loadingShown = true;
        return;
    }

    if (!std::exchange(loadingShown, false))
        return;

    midiMonitorLabel.removeColour(juce::Label::textColourId);
    midiMonitorLabel.setText(midiText, juce::dontSendNotification);
    hintLabel.removeColour(juce::Label::textColourId);

    if (hintLabel.getText() == loadingText)
        hintLabel.setText({}, juce::dontSendNotification);
}

void EditorHeader::showHint(const juce::String& text)
{
    hintLabel.setText(text, juce::dontSendNotification);
}

void EditorHeader::sliderValueChanged(juce::Slider* slider)
{
    if (slider != &tempoBox)
    {
        ControlPage::sliderValueChanged(slider);
        return;
    }

    const auto bpm = static_cast<float>(tempoBox.getNumber());
    shownBpm = static_cast<double>(bpm);
    processor.getTempo().setBpm(bpm);
}

void EditorHeader::buttonClicked(juce::Button* button)
{
    for (int page = 0; page < numPages; ++page)
    {
        if (button != pageKeys[static_cast<size_t>(page)].get())
            continue;

        // The key that goes out reports a click, too.
        if (button->getToggleState())
            showPage(static_cast<Page>(page));

        return;
    }

    auto& commands = processor.getPresetCommands();

    if (button == &backPanelButton)
        host.showBackPanel();
    else if (button == &userGuide)
        openUserGuide();
    else if (button == &previewNote)
        preview(button->isDown());
    else if (button == &editKey)
        processor.getOriginalComparison().showEdited();
    else if (button == &origKey)
        processor.getOriginalComparison().showOriginal();
    else if (button == &tapButton)
        tap();
    else if (button == &folderPrevious)
        commands.previousFolder();
    else if (button == &folderNext)
        commands.nextFolder();
    else if (button == &presetPrevious)
        commands.previousPreset();
    else if (button == &presetNext)
        commands.nextPreset();
    else if (button == &folderMenuButton)
        showMenuOf(folderMenuButton, commands.folderMenu(), &PresetCommands::folderMenuChosen);
    else if (button == &presetMenuButton)
        showMenuOf(presetMenuButton, commands.presetMenu(), &PresetCommands::presetMenuChosen);
    else
        ControlPage::buttonClicked(button);

    if (button == &editKey || button == &origKey || button == &presetPrevious || button == &presetNext ||
        button == &folderPrevious || button == &folderNext)
        host.fullRefresh();
}

void EditorHeader::preview(bool isDown)
{
    auto& input = processor.getMidiInput();

    if (isDown && juce::ModifierKeys::getCurrentModifiers().isShiftDown() && input.getSong().isLoaded())
    {
        input.getSong().forget();
        showNames();
    }
    else if (isDown)
    {
        input.startAudition();
    }
    else
    {
        input.endAudition();
    }
}

void EditorHeader::showPage(Page page)
{
    processor.setParameterFromUi(slot::view, viewOf(page));
    processor.getEditorRequests().setPage(page);
    host.fullRefresh();
}

void EditorHeader::tap()
{
    if (const auto bpm = processor.getTapTempo().tap(juce::Time::getMillisecondCounter()))
    {
        processor.getTempo().setBpm(*bpm);
        showTempo();
    }
}

void EditorHeader::openUserGuide()
{
    const auto guide = processor.getPaths().helpFolder.getChildFile(userGuideFile);

    if (guide.existsAsFile())
        guide.startAsProcess();
}

void EditorHeader::showMenuOf(juce::Button& button, const MenuEntries& content,
                              void (PresetCommands::*choose)(int))
{
    showMenu(popupMenuOf(content), button, *this,
             [this, choose](int chosen)
             {
                 const juce::Component::SafePointer<EditorHeader> self(this);
                 (processor.getPresetCommands().*choose)(chosen);

                 // The host may have closed the editor behind a command's question.
                 if (self != nullptr)
                     host.fullRefresh();
             });
}

} // namespace quorel
