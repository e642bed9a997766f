// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EditorScale.h"

#include "platform/UserPaths.h"
#include "ui/Geometry.h"

namespace quorel
{
namespace
{
/** Pixels of a window's title bar and borders. */
constexpr int frameHeight = 40;
constexpr int frameWidth = 4;
constexpr float hundredPercent = 100.0f;

int fittingScale(juce::Rectangle<int> area, float hostScale)
{
    const auto width = static_cast<float>(area.getWidth() - frameWidth) / static_cast<float>(geometry::width);
    const auto height =
        static_cast<float>(area.getHeight() - frameHeight) / static_cast<float>(geometry::height);
    return static_cast<int>(juce::jmin(width, height) / hostScale * hundredPercent);
}
} // namespace

int readEditorScale(const UserStore& store)
{
    const int stored = store.read(pathSetting::key, pathSetting::editorScale).getIntValue();
    return stored > 0 ? juce::jlimit(smallestEditorScale, largestEditorScale, stored) : defaultEditorScale;
}

bool writeEditorScale(UserStore& store, int percent)
{
    return store.write(pathSetting::key, pathSetting::editorScale, juce::String(percent));
}

juce::Rectangle<int> editorSizeAt(int percent)
{
    const float scale = static_cast<float>(percent) / hundredPercent;
    return {juce::roundToInt(static_cast<float>(geometry::width) * scale),
            juce::roundToInt(static_cast<float>(geometry::height) * scale)};
}

int largestFittingScale(const juce::Component& shown, float hostScale)
{
    const auto& displays = juce::Desktop::getInstance().getDisplays();

    if (displays.displays.isEmpty())
        return largestEditorScale;

    int fitting = 0;

    if (shown.isShowing())
        fitting = fittingScale(displays.getDisplayForRect(shown.getScreenBounds())->userArea, hostScale);
    else
        for (const auto& display : displays.displays)
            fitting = juce::jmax(fitting, fittingScale(display.userArea, hostScale));

    return juce::jlimit(smallestEditorScale, largestEditorScale, fitting);
}

} // namespace quorel
