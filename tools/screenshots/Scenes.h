// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EditorPictures.h"

#include <functional>
#include <vector>

namespace quorel
{

/** Something to picture. */
struct Scene
{
    /** Stem of the file. */
    juce::String name;
    /** Factory preset that is heard; both empty for the default one. */
    juce::String folder;
    juce::String preset;
    /** Brings the editor there. False where something that the scene needs is missing from it. */
    std::function<bool(EditorPictures&)> arrange;
};

/** Every page, panel and mode, and all effect types. Menus are windows of their own and need a window
    manager. */
std::vector<Scene> allScenes(bool withMenus);

/** A picture of the user guide: a scene, or a part of it, in layout pixels. */
struct GuidePicture
{
    /** Stem of the guide's file. */
    const char* name;
    const char* scene;
    /** Empty for all of it. */
    juce::Rectangle<int> part;
};

/** All that the guide and the readme show. */
const std::vector<GuidePicture>& guidePictures();

} // namespace quorel
