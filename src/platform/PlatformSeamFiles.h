// SPDX-License-Identifier: GPL-3.0-or-later
// What platforms do differently with files and folders. Any thread but the audio thread.
#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <system_error>
#include <vector>

namespace quorel
{

/** An error in the system's words, as part of a message to the user. */
juce::String messageOf(const std::error_code& error);

/** The same file by a path that the system takes, however long it is: on Windows with "\\?\" before a path that
    comes near 260 characters, which is all that it takes without. */
juce::File reachable(const juce::File& file);

enum class PathKind
{
    nothing,
    file,
    folder,
    /** A pipe, a device. */
    other
};

/** What a path leads to, behind all links. The error says why it is `nothing`. */
PathKind kindOf(const juce::File& file, std::error_code& error);

/** True for a symbolic link, even one that leads nowhere, and for a junction. */
bool isLink(const juce::File& file);

/** Where a link leads in the end; an empty file where that is nowhere. */
juce::File endOfLink(const juce::File& link);

/** True where two paths lead to the same file or folder. */
bool isSamePlace(const juce::File& one, const juce::File& other);

struct FolderEntry
{
    /** Empty for a name that isn't valid Unicode: JUCE's strings can't hold it. */
    juce::String name;
    /** Of what a link leads to. */
    PathKind kind;
};

/** What is in a folder, in no order. */
std::vector<FolderEntry> entriesOf(const juce::File& folder, std::error_code& error);

/** Renames a file, a link or a folder. A file at the new place is replaced in one step: whoever opens it
    finds the old one or the new one. Where other programs are in the way, tries for half a second. To another disk
    it fails with `cross_device_link`. */
std::error_code renameInOneStep(const juce::File& from, const juce::File& to);

/** Removes a file, a link or a folder with all its contents; where nothing is, that is fine. */
std::error_code removeAll(const juce::File& file);

/** Gives a file what protects or hides another one: its mode, or its attributes. */
void copyMode(const juce::File& from, const juce::File& to);

/** False at once unless another program keeps this file from being read; then true as soon as it can be, or
    false after half a second. */
bool waitWhileHeld(const juce::File& file);

/** What a lock between processes for changes of this file is called. */
juce::String lockNameOf(const juce::File& file);

/** Moves a file or folder to the current user's trash of the desktop: the recycle bin on Windows, the home
    trash of freedesktop.org's rules on Linux, with what a file manager needs to put it back. Where the trash
    lies on another disk it is copied, and goes only when the copy is whole. Fails, and nothing has happened,
    where the trash can't be made or can't take it. */
juce::Result moveToTrash(const juce::File& file);

/** Has what a folder lists, new names and moves, written down to the disk, where the platform can. */
void syncFolder(const juce::File& folder);

/** Shows other processes that a file is in use, for as long as this lives; it ends with the process, a crash
    included. What is marked can be written, read, moved and removed. */
class InUseMark
{
public:
    virtual ~InUseMark() = default;
};

/** Creates an empty file, for its owner to write, at a place where nothing is, and marks it. Null, with the
    reason, where that fails. */
std::unique_ptr<InUseMark> createMarkedFile(const juce::File& file, std::error_code& error);

/** Marks a folder, or takes over the mark of a process that has ended on a file or folder. Null while it is
    in use, or where the file system can't tell. */
std::unique_ptr<InUseMark> claimAbandoned(const juce::File& file);

} // namespace quorel
