// SPDX-License-Identifier: GPL-3.0-or-later
// How large the editor is drawn, in percent of its 1110 by 786 layout: a setting of the user, not of a
// preset.
#pragma once

#include "platform/UserStore.h"

#include <array>

namespace quorel
{

constexpr std::array<int, 8> editorScales{75, 100, 125, 150, 175, 200, 225, 250};
constexpr int defaultEditorScale = 100;

/** The user's choice, rounded to the nearest of `editorScales`; the default if none is stored. Message
    thread. */
int readEditorScale(const UserStore& store);

/** False if the settings can't be written. */
bool writeEditorScale(UserStore& store, int percent);

} // namespace quorel
