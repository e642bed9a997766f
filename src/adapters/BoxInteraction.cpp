// SPDX-License-Identifier: GPL-3.0-or-later
#include "adapters/BoxInteraction.h"

#include <iostream>

namespace quorel
{

namespace
{
/** Without a display JUCE can't open any window, not even an alert. */
bool hasDisplay()
{
    return !juce::Desktop::getInstance().getDisplays().displays.isEmpty();
}

void print(const juce::String& title, const juce::String& text)
{
    std::cerr << "Quorel: " << (title.isEmpty() ? text : title + ": " + text) << std::endl;
}
} // namespace

void BoxInteraction::alert(const juce::String& title, const juce::String& text)
{
    if (hasDisplay())
        juce::AlertWindow::showMessageBoxAsync(juce::MessageBoxIconType::WarningIcon, title, text);
    else
        print(title, text);
}

bool BoxInteraction::confirm(const juce::String& title, const juce::String& text)
{
    if (hasDisplay())
        return juce::AlertWindow::showOkCancelBox(juce::MessageBoxIconType::QuestionIcon, title, text, "Yes",
                                                  "No");

    print(title, text + " No");
    return false;
}

juce::String BoxInteraction::askText(const juce::String& title, const juce::String& prompt,
                                     const juce::String& current)
{
    if (!hasDisplay())
        return {};

    constexpr int cancelled = 0;
    constexpr int accepted = 1;
    juce::AlertWindow window(title, {}, juce::MessageBoxIconType::NoIcon);
    window.addTextEditor("text", current, prompt);
    window.addButton("OK", accepted, juce::KeyPress(juce::KeyPress::returnKey));
    window.addButton("Cancel", cancelled, juce::KeyPress(juce::KeyPress::escapeKey));
    return window.runModalLoop() == accepted ? window.getTextEditorContents("text") : juce::String();
}

juce::File BoxInteraction::chooseFolder(const juce::String& title, const juce::File& start)
{
    if (!hasDisplay())
        return {};

    juce::FileChooser chooser(title, start);
    return chooser.browseForDirectory() ? chooser.getResult() : juce::File();
}

juce::File BoxInteraction::chooseFileToOpen(const juce::String& title, const juce::File& start,
                                            const juce::String& pattern)
{
    if (!hasDisplay())
        return {};

    juce::FileChooser chooser(title, start, pattern);
    return chooser.browseForFileToOpen() ? chooser.getResult() : juce::File();
}

juce::File BoxInteraction::chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                            const juce::String& pattern)
{
    if (!hasDisplay())
        return {};

    juce::FileChooser chooser(title, suggested, pattern);
    constexpr bool warnAboutOverwriting = true;
    return chooser.browseForFileToSave(warnAboutOverwriting) ? chooser.getResult() : juce::File();
}

void BoxInteraction::progress(const juce::String& title, const juce::String& text)
{
    if (text.isEmpty() || !hasDisplay())
    {
        progressWindow = nullptr;
        return;
    }

    if (progressWindow == nullptr)
    {
        progressWindow = std::make_unique<juce::AlertWindow>(title, text, juce::MessageBoxIconType::NoIcon);
        progressWindow->setVisible(true);
    }

    progressWindow->setMessage(text);

    // A scan holds the message thread: paint now, or the window stays empty until it is over.
    if (auto* peer = progressWindow->getPeer())
        peer->performAnyPendingRepaintsNow();
}

} // namespace quorel
