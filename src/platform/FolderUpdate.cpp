// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderUpdate.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FileReplacement.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"

#include <utility>

namespace quorel
{

FolderUpdate::FolderUpdate(const juce::File& folder)
    : target(folder)
    , isNew(!folder.exists())
{
    constexpr int mostTries = 10;
    const auto place = isNew ? folder.getParentDirectory() : folder;
    removeLeftovers(place);

    // Another process may take the folder for a left-over before it is marked. Where there are no locks, nobody does.
    for (int tries = 1; tries <= mostTries; ++tries)
    {
        stage = temporaryIn(place);

        // Where this fails, so does the first file.
        if (!createFolder(stage))
            break;

        mark = claimAbandoned(stage);

        if (mark != nullptr && stage.exists())
            break;

        if (tries < mostTries)
            stage.deleteFile();
    }
}

FolderUpdate::~FolderUpdate()
{
    if (stage != juce::File())
        stage.deleteRecursively();
}

juce::Result FolderUpdate::add(const juce::String& name, const juce::MemoryBlock& bytes)
{
    const auto file = childNamed(stage, name);
    juce::File replaced;

    if (const auto result = findReplaced(childNamed(target, name), replaced); result.failed())
        return result;

    if (const auto result = replaceFile(file, bytes); result.failed())
        return result;

    if (replaced.exists())
        copyMode(replaced, file);

    return juce::Result::ok();
}

juce::Result FolderUpdate::finish()
{
    const auto temporary = std::exchange(stage, juce::File());

    if (isNew)
    {
        const auto result = moveFile(temporary, target);

        if (result.failed())
            stage = temporary;

        return result;
    }

    const auto whole = stageOf(temporary);

    if (const auto result = moveFile(temporary, whole); result.failed())
    {
        stage = temporary;
        return result;
    }

    return takeIn(whole);
}

} // namespace quorel
