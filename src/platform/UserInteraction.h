// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** How the engine talks to its user. The processor is given one: the plug-in's shows boxes, that of the
    command line tools prints and answers no, that of the tests records. All calls come on the message thread,
    or with it held. */
class UserInteraction
{
public:
    virtual ~UserInteraction() = default;

    /** Tells something and returns at once: it never blocks a host's thread. */
    virtual void alert(const juce::String& title, const juce::String& text) = 0;

    /** Asks a question and waits for the answer. Its last sentence begins with what is to be done, such as in
        "Delete preset Harp ?", which the button says, too. False where nobody can answer. */
    virtual bool confirm(const juce::String& title, const juce::String& text) = 0;

    /** Asks for a line of text, with `current` to start from and `prompt` beside the field, and waits for the
        answer. Empty if the user cancels or nobody can answer. */
    virtual juce::String askText(const juce::String& title, const juce::String& prompt,
                                 const juce::String& current) = 0;

    /** Lets the user choose a folder, starting at `start`. An empty file where none was chosen. */
    virtual juce::File chooseFolder(const juce::String& title, const juce::File& start) = 0;

    /** Lets the user choose an existing file of `pattern`, such as "*.qrl", starting at `start`, a file or a
        folder. An empty file where none was chosen. */
    virtual juce::File chooseFileToOpen(const juce::String& title, const juce::File& start,
                                        const juce::String& pattern) = 0;

    /** Lets the user name a file to write, `suggested` to start from; a file that is chosen here may be
        replaced. An empty file where none was chosen. */
    virtual juce::File chooseFileToSave(const juce::String& title, const juce::File& suggested,
                                        const juce::String& pattern) = 0;

    /** Progress of long work, such as "Scanning plugin:  /some/path". An empty text ends it. */
    virtual void progress(const juce::String& title, const juce::String& text) = 0;
};

} // namespace quorel
