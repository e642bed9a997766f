// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginLinks.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeamFiles.h"

namespace quorel
{

namespace
{
/** Stands in the record for a folder that wasn't there. */
constexpr const char* madeFolder = "made";

/** Beside the product, or in the folder of its format that stands beside the product's. Empty where it has none. */
juce::File installedPlugin(const juce::File& product, const PluginHome& home)
{
    for (const auto& folder : {product, product.getSiblingFile(home.installedIn)})
        if (const auto plugin = folder.getChildFile(home.name); plugin.exists())
            return plugin;

    return {};
}
} // namespace

PluginLinks::PluginLinks(const UserPlaces& places, const juce::File& home, const SetupWords& wordsOfSetup)
    : homes(pluginHomes(home))
    , record(places.dataFolder.getChildFile("Links.xml"))
    , links(record, ValueFile::Names::exact)
    , words(wordsOfSetup)
{
}

bool PluginLinks::make(const juce::File& product)
{
    if (homes.empty())
    {
        words.complain("there are no such folders on this system: put the plug-in where your host looks");
        return false;
    }

    bool succeeded = true;
    int found = 0;

    for (const auto& home : homes)
    {
        const auto ofUser = home.folderOfUser.getChildFile(home.name);

        if (const auto plugin = installedPlugin(product, home); plugin != juce::File())
        {
            ++found;
            succeeded = makeOne(plugin, ofUser) && succeeded;
        }
        else if (ofUser.exists() && !isLink(ofUser))
        {
            // As from the tarball, which puts them nowhere else.
            ++found;
            words.say(ofUser.getFullPathName() + " is installed there already");
        }
    }

    if (found == 0)
    {
        words.complain("there are no plug-ins " + (product == juce::File()
                                                       ? juce::String("installed")
                                                       : "beside " + product.getFullPathName()));
        return false;
    }

    return succeeded;
}

bool PluginLinks::makeOne(const juce::File& plugin, const juce::File& link)
{
    const auto& place = link.getFullPathName();
    const auto& target = plugin.getFullPathName();

    if (isSamePlace(link, plugin))
    {
        words.say(place + " leads to " + target + " already");
        return true;
    }

    if ((link.exists() || isLink(link)) && !isOwn(link))
    {
        words.complain(place + " is there already and is no link of quorel-setup: move it away first");
        return false;
    }

    const auto folder = link.getParentDirectory();

    // Whatever is made is known before: it can be removed even if this run doesn't get to its end.
    if (!folder.exists())
        links.set(folder.getFullPathName(), madeFolder);

    links.set(place, target);

    if (!save())
        return false;

    if (const auto made = createFolder(folder); made.failed())
    {
        words.complain("cannot create the folder " + folder.getFullPathName() + " (" +
                       made.getErrorMessage() + ")");
        return false;
    }

    // JUCE doesn't see a link that leads nowhere, and can't make one over it.
    if (deleteForGood(link).failed() || !plugin.createSymbolicLink(link, false))
    {
        words.complain("cannot make the link " + place);
        return false;
    }

    words.say(place + " -> " + target);
    return true;
}

bool PluginLinks::remove()
{
    bool succeeded = true;

    for (const auto& home : homes)
    {
        const auto link = home.folderOfUser.getChildFile(home.name);

        if (!isOwn(link))
            continue;

        if (const auto result = deleteForGood(link); result.failed())
        {
            words.complain("cannot delete " + link.getFullPathName() + " (" + result.getErrorMessage() + ")");
            succeeded = false;
            continue;
        }

        words.say("Link removed: " + link.getFullPathName());
        // The system refuses to remove a folder that holds anything.
        if (links.get(home.folderOfUser.getFullPathName()) == madeFolder &&
            !home.folderOfUser.isSymbolicLink())
            home.folderOfUser.deleteFile();
    }

    if (succeeded && record.existsAsFile())
        succeeded = deleteForGood(record).wasOk();

    return succeeded;
}

bool PluginLinks::isOwn(const juce::File& link) const
{
    const auto target = links.get(link.getFullPathName());
    return target.isNotEmpty() && isLink(link) && link.getNativeLinkedTarget() == target;
}

bool PluginLinks::save()
{
    if (const auto result = links.save(); result.failed())
    {
        words.complain("cannot write " + record.getFullPathName() + " (" + result.getErrorMessage() + ")");
        return false;
    }

    return true;
}

} // namespace quorel
