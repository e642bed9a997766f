// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/PluginScanner.h"
#include "platform/UserPaths.h"
#include "platform/UserStore.h"

#include <memory>

namespace quorel
{

class UserInteraction;

/** What the user has installed: settings, folders, and the instruments that were found. Message thread. */
class Installation
{
public:
    /** Reads the settings. `interaction` outlives this. */
    Installation(std::unique_ptr<UserStore> userStore, UserInteraction& interaction);

    UserStore& getStore() noexcept { return *store; }

    const UserPaths& getPaths() const noexcept { return paths; }

    const juce::KnownPluginList& getKnownPlugins() const noexcept { return knownPlugins; }

    const juce::String& getScanStatus() const noexcept { return scanner.scanStatus(); }

    /** Reads the list of instruments, or makes it where there is none. */
    void loadOrScan();
    /** Searches the plug-in folder anew. */
    void scan(bool showProgress);
    /** Takes another plug-in folder, stores it for the user, and scans it. */
    void changePluginFolder(const juce::File& folder);

private:
    UserInteraction& user;
    std::unique_ptr<UserStore> store;
    UserPaths paths;
    juce::KnownPluginList knownPlugins;
    PluginScanner scanner{knownPlugins};
};

} // namespace quorel
