// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/UserInteraction.h"

namespace quorel::test
{

/** Nobody sits in front of a test: it keeps what was said and answers no. Each entry is "title|text". */
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
        return false;
    }

    juce::File chooseFolder(const juce::String&, const juce::File&) override { return {}; }

    void progress(const juce::String& title, const juce::String& text) override
    {
        progressTexts.add(title + "|" + text);
    }

    juce::StringArray alerts;
    juce::StringArray questions;
    juce::StringArray progressTexts;
};

} // namespace quorel::test
