// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserInteraction.h"

#include <functional>

namespace quorel::test
{

/** Stands in for a user: records what it is told, and gives the answers that the test has prepared, to begin
    with no and nothing. Each entry is "title|text", that of a text question "title|prompt|current". */
class RecordingInteraction : public UserInteraction
{
public:
    void alert(const juce::String& title, const juce::String& text) override
    {
        alerts.add(title + "|" + text);
    }

    bool confirm(const juce::String& title, const juce::String& text) override
    {
        questions.add(title + "|" + text);
        duringQuestion();
        return confirmAnswer;
    }

    juce::String askText(const juce::String& title, const juce::String& prompt,
                         const juce::String& current) override
    {
        textQuestions.add(title + "|" + prompt + "|" + current);
        duringQuestion();
        return typedText;
    }

    juce::File chooseFolder(const juce::String&, const juce::File&) override { return chosenFile; }

    juce::File chooseFileToOpen(const juce::String& title, const juce::File& start,
                                const juce::String& pattern) override
    {
        fileQuestions.add(title + "|" + start.getFullPathName() + "|" + pattern);
        duringQuestion();
        return chosenFile;
    }

    juce::File chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                const juce::String& pattern) override
    {
        fileQuestions.add(title + "|" + suggested.getFullPathName() + "|" + pattern);
        duringQuestion();
        return chosenFile;
    }

    void progress(const juce::String& title, const juce::String& text) override
    {
        progressTexts.add(title + "|" + text);
    }

    juce::StringArray alerts;
    juce::StringArray questions;
    juce::StringArray textQuestions;
    /** What is typed at the next question for a text; empty cancels it. */
    juce::String typedText;
    juce::StringArray progressTexts;
    /** Each entry is "title|path to start from|pattern". */
    juce::StringArray fileQuestions;
    /** The answer to the next choice of a file or folder; none cancels it. */
    juce::File chosenFile;
    bool confirmAnswer = false;
    /** What happens while a question is open. */
    std::function<void()> duringQuestion = [] {};
};

} // namespace quorel::test
