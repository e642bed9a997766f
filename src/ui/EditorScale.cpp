// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/EditorScale.h"

#include "platform/UserPaths.h"

#include <algorithm>
#include <cstdlib>

namespace quorel
{

int readEditorScale(const UserStore& store)
{
    const int stored = store.read(pathSetting::key, pathSetting::editorScale).getIntValue();
    const int wanted =
        stored > 0 ? juce::jlimit(editorScales.front(), editorScales.back(), stored) : defaultEditorScale;
    return *std::min_element(editorScales.begin(), editorScales.end(),
                             [wanted](int a, int b) { return std::abs(a - wanted) < std::abs(b - wanted); });
}

bool writeEditorScale(UserStore& store, int percent)
{
    return store.write(pathSetting::key, pathSetting::editorScale, juce::String(percent));
}

} // namespace quorel
