// SPDX-License-Identifier: GPL-3.0-or-later
// Files dropped on the editor's window, as the window system hands them over.
#include "EditorTest.h"

#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "ui/EditorColours.h"

namespace quorel::test
{

class FileDropTest : public EditorTest
{
protected:
    juce::ComponentPeer::DragInfo carrying(const juce::File& file)
    {
        juce::ComponentPeer::DragInfo info;
        info.files.add(file.getFullPathName());
        info.position = view().getLocalBounds().getCentre();
        return info;
    }

    bool isFramed() { return TestWindow::picture(view()).getPixelAt(1, 300) == colours::amber; }
};

TEST_F(FileDropTest, PresetsLoadAndAMidiFileGoesToThePreviewKey)
{
    const auto banks = engine.user.banksFolder();
    juce::MemoryBlock bytes;
    ASSERT_TRUE(readWholeFile(presetFileFor(banks, defaultFolderName, defaultPresetName), bytes));
    ASSERT_TRUE(replaceFile(presetFileFor(banks, "Bank", "dropped"), bytes));
    ASSERT_TRUE(engine.load(0, "Orlen"));
    open(layersView);
    auto& peer = *view().getPeer();
    const auto preset = carrying(presetFileFor(banks, "Bank", "dropped"));
    EXPECT_TRUE(peer.handleDragMove(preset));
    EXPECT_TRUE(isFramed());
    peer.handleDragExit(preset);
    EXPECT_FALSE(isFramed());
    peer.handleDragMove(preset);
    EXPECT_TRUE(peer.handleDragDrop(preset));
    passes();
    EXPECT_FALSE(isFramed());
    EXPECT_EQ(engine.processor.getFolderName() + "/" + engine.processor.getPresetName(), "Bank/dropped");
    const auto picture = carrying(banks.getChildFile("picture.png"));
    EXPECT_FALSE(peer.handleDragMove(picture));
    peer.handleDragExit(picture);
    ASSERT_TRUE(finishLoad());
    ASSERT_TRUE(engine.load(0, "Orlen"));

    juce::MidiFile midi;
    midi.setTicksPerQuarterNote(96);
    juce::MidiMessageSequence notes;
    notes.addEvent(juce::MidiMessage::noteOn(1, 60, 0.9f));
    notes.addEvent(juce::MidiMessage::noteOff(1, 60).withTimeStamp(960));
    midi.addTrack(notes);
    juce::MemoryOutputStream out;
    midi.writeTo(out);
    const auto song = engine.user.scratch.child("song.mid");
    ASSERT_TRUE(replaceFile(song, out.getMemoryBlock()));
    peer.handleDragMove(carrying(song));
    EXPECT_TRUE(peer.handleDragDrop(carrying(song)));
    passes();
    engine.playSeconds(0.5);
    EXPECT_LT(engine.playSeconds(0.2).peak(), 0.0001f) << "not before the key is pressed";
    window->click(button("Preview note"));
    EXPECT_GT(engine.playSeconds(1.0).peak(), 0.001f) << "also after the key is up";
    EXPECT_TRUE(engine.processor.getMidiInput().getSong().isPlaying());
    window->click(button("Preview note"));
    engine.playSeconds(0.1);
    EXPECT_FALSE(engine.processor.getMidiInput().getSong().isPlaying()) << "a second press stops it";
}

} // namespace quorel::test
