// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/FirstStart.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProduct.h"
#include "platform/SharedFile.h"
#include "platform/Version.h"
#include "setup/Installer.h"

#include <mutex>
#include <set>

namespace quorel
{

namespace
{
/** The build makes an instance to describe the LV2 plug-in; who builds isn't set up by that. */
bool isBuildHelper()
{
    return juce::File::getSpecialLocation(juce::File::hostApplicationPath).getFileNameWithoutExtension() ==
           "juce_lv2_helper";
}

void install(UserStore& store, const UserPlaces& places, const juce::File& product)
{
    juce::StringArray complaints;
    const SetupWords words{[](const juce::String&) {},
                           [&complaints](const juce::String& line) { complaints.add(line); }};
    Installer(store, places, product, words).run(false);

    const auto log = setupLogIn(places);
    const auto text = complaints.joinIntoString("\n") + "\n";

    // Where even this fails there is nobody left to tell: quorel-setup tells the user who runs it.
    if (!complaints.isEmpty())
        juce::ignoreUnused(replaceFile(log, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8())));
    else if (log.existsAsFile())
        juce::ignoreUnused(deleteForGood(log));
}
} // namespace

juce::File setupLock(const juce::File& settingsFolder)
{
    return settingsFolder.getChildFile("Setup");
}

void setUpAtFirstStart()
{
    const auto store = makeUserStore();

    if (!isSetUpBefore(*store, productVersion))
        return;

    // Once for each user in the life of this process: where something keeps failing, no later instance tries it again.
    // An instance that another thread opens meanwhile waits here.
    static std::mutex mutex;
    static std::set<juce::String> tried;
    const std::lock_guard<std::mutex> oneThread(mutex);
    const auto places = userPlaces();

    if (!tried.insert(places.settingsFolder.getFullPathName()).second || isBuildHelper())
        return;

    const auto product = productFolder();

    if (product == juce::File())
        return;

    const SharedFileLock lock(setupLock(places.settingsFolder), setupPatienceMillis);

    if (lock.isHeld() && isSetUpBefore(*store, productVersion))
        install(*store, places, product);
}

} // namespace quorel
