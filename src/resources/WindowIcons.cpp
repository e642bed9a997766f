// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/WindowIcons.h"

#include "resources/BuiltInData.h"

namespace quorel
{

std::vector<juce::Image> windowIcons()
{
    const auto file = iconFile();
    const auto all = juce::ImageFileFormat::loadFrom(file.data, file.size);
    std::vector<juce::Image> icons;
    int x = 0;
    for (const int size : iconSizes)
    {
        icons.push_back(all.getClippedImage({x, 0, size, size}).createCopy());
        x += size;
    }
    return icons;
}

} // namespace quorel
