// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Leftovers.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/FileReplacement.h"
#include "platform/PlatformSeamFiles.h"

#include <mutex>
#include <set>
#include <vector>

namespace quorel
{

namespace
{
constexpr const char* start = ".quorel-";
constexpr const char* temporaryEnd = ".tmp";
constexpr const char* stageEnd = ".new";

/** True once for each folder. */
bool isFirstLook(const juce::File& folder)
{
    static std::mutex mutex;
    static std::set<juce::String> seen;
    const std::lock_guard<std::mutex> lock(mutex);
    return seen.insert(folder.getFullPathName()).second;
}

/** What has been put in a staged file's place since its process was killed is newer, and the user's. */
void dropOutdated(const juce::File& stage)
{
    for (const auto& file : stage.findChildFiles(juce::File::findFiles, false))
    {
        juce::File target;

        if (findReplaced(stage.getParentDirectory().getChildFile(file.getFileName()), target) &&
            target.existsAsFile() && target.getLastModificationTime() > file.getLastModificationTime())
            juce::ignoreUnused(deleteForGood(file));
    }
}
} // namespace

juce::File temporaryIn(const juce::File& folder)
{
    return childNamed(folder, start + juce::Uuid().toString().substring(0, 12) + temporaryEnd);
}

juce::File stageOf(const juce::File& temporary)
{
    return temporary.withFileExtension(stageEnd);
}

juce::Result takeIn(const juce::File& stage)
{
    auto result = juce::Result::ok();

    for (const auto& file : stage.findChildFiles(juce::File::findFiles, false))
    {
        juce::File target;
        auto moved = findReplaced(stage.getParentDirectory().getChildFile(file.getFileName()), target);

        if (moved.wasOk())
            moved = moveFile(file, target);

        if (moved.failed())
            result = moved;
    }

    stage.deleteFile();
    return result;
}

void removeLeftovers(const juce::File& folder)
{
    if (folder == juce::File() || !isFirstLook(folder))
        return;

    std::error_code error;
    std::vector<juce::File> found;

    for (const auto& [name, kind] : entriesOf(folder, error))
        if (name.startsWith(start) && (name.endsWith(temporaryEnd) || name.endsWith(stageEnd)))
            found.push_back(childNamed(folder, name));

    for (const auto& file : found)
    {
        const auto claimed = claimAbandoned(file);

        if (claimed == nullptr)
            continue;

        if (file.hasFileExtension(stageEnd))
        {
            dropOutdated(file);
            takeIn(file);
        }
        else
            removeAll(file);
    }
}

} // namespace quorel
