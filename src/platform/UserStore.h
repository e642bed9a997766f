// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** The per-user settings that this instrument shares with its siblings and its installer: text values,
    each under a key such as "SOFTWARE\Ostrand\Quorel" and a name such as "Banks Path". Letter case of
    both doesn't count. Values have any length. Other processes read and write the same settings at any
    time. Any thread, but not the audio thread. */
class UserStore
{
public:
    virtual ~UserStore() = default;

    /** The value as it is now, whoever wrote it. Empty if it doesn't exist or can't be read. */
    virtual juce::String read(const juce::String& key, const juce::String& name) const = 0;

    /** An empty value is removed. False where that could not be done; the settings are then as they were. */
    virtual bool write(const juce::String& key, const juce::String& name, const juce::String& value) = 0;
};

/** The settings in one XML file, replaced as a whole at each write. A file that can't be parsed reads as
    empty; the first write to it keeps it as a copy with ".broken" added to its name and starts afresh. There is no file where there are no settings. */
class FileUserStore : public UserStore
{
public:
    /** The file and its folders need not exist yet. */
    explicit FileUserStore(const juce::File& file);

    juce::String read(const juce::String& key, const juce::String& name) const override;
    bool write(const juce::String& key, const juce::String& name, const juce::String& value) override;

private:
    juce::File file;
};

} // namespace quorel
