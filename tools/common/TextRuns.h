// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterLayout.h"

#include <optional>

namespace quorel
{

/** Consecutive parameters that hold one text, a character each. */
struct TextRun
{
    int first;
    int count;
};

/** The text that begins at a parameter, if any. */
inline std::optional<TextRun> textRunFrom(int index)
{
    if (index == slot::presetNameText || index == slot::folderNameText)
        return TextRun{index, slot::nameTextLength};
    if (isLayerParameter(index) && numberInLayer(index) == layerSlot::pluginNameText)
        return TextRun{index, slot::nameTextLength};

    const int name = index - slot::multiName;
    const bool isMultiName = name >= 0 && name < numMultiFaders * slot::multiNameLength;
    if (isMultiName && name % slot::multiNameLength == 0)
        return TextRun{index, slot::multiNameLength};
    return std::nullopt;
}

} // namespace quorel
