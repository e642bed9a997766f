// SPDX-License-Identifier: GPL-3.0-or-later
// Banks and programs of hosted instruments, and the entries of a layer's menus. Message thread.
#pragma once

#include "platform/MenuEntries.h"
#include "platform/UserStore.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace quorel
{

/** The instrument's own bank folder from the user's settings. Empty if the instrument isn't known, has no
    such setting, or the setting isn't an absolute path. */
juce::File readBankFolder(const juce::String& instrumentName, const UserStore& store);

/** Replaces `bankNames` by the instrument's banks, in the order of their numbers: ".fxb" file names, or
    folders with "Root Folder" in place of the first. Without any bank `bankNames` stays as it is, so empty it
    first. */
void listBanks(const juce::String& instrumentName, const UserStore& store, juce::StringArray& bankNames);

/** Name of the bank in use, which the instrument spells in its parameters, one letter each. Empty if the
    instrument isn't known. */
juce::String getBankName(juce::AudioPluginInstance& instance, const juce::String& instrumentName);

/** The folder of one of the instrument's banks that keep their programs as files; no file for an empty name, or where
    no folder is set. */
juce::File bankFolder(const juce::String& instrumentName, const juce::String& bankName,
                      const UserStore& store);

/** Replaces `programNames` by the ".fxp" files of one of the instrument's bank folders, without their ending
    and in the order of their numbers. None for an empty bank name. */
void readProgramNames(const juce::String& instrumentName, const juce::String& bankName,
                      const UserStore& store, juce::StringArray& programNames);

// Menus have the ids 1, 2, 3 and so on; the entry in use is ticked.

/** "no plugin", then all known instruments in their order. The one called `loadedName` (the name in the
    layer's parameters) is ticked, else "no plugin". */
MenuEntries pluginMenu(const juce::KnownPluginList& knownPlugins, const juce::String& loadedName);

/** What the closed menu of a layer shows whose instrument, `name`, could not be had. Empty for a name outside
    the table: the menu then shows its ticked entry. */
juce::String missingPluginText(const juce::String& name);

/** Programs of the instrument, numbered from 1: its own list, or for instruments that take programs by
    MIDI the `programNames` of its bank. Nothing is ticked where the program in use isn't among them. */
MenuEntries programMenu(juce::AudioPluginInstance& instance, const juce::String& instrumentName,
                        const juce::StringArray& programNames);

/** Banks as `listBanks` found them, under their titles. The one called `currentBank` is ticked, else the
    first. */
MenuEntries bankMenu(const juce::StringArray& bankNames, const juce::String& currentBank);

/** What chooses entry `id` of the program menu of an instrument that takes programs by MIDI. */
juce::MidiMessage programSelectMessage(int id);

/** What chooses entry `id` of a bank menu: controller 32, for all instruments. */
juce::MidiMessage bankSelectMessage(int id);

} // namespace quorel
