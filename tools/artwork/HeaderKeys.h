// SPDX-License-Identifier: GPL-3.0-or-later
// Where the header's keys are drawn within their frames, 100 by 32 pixels each. The frames overlap their
// neighbours; the drawn keys line up in three columns and two rows.
#pragma once

#include "ui/Geometry.h"

namespace quorel::artwork::headerKeyFaces
{

inline juce::Rectangle<int> at(juce::Point<int> frame, int x, int y, int width)
{
    constexpr int height = 26;
    return {x - frame.x, y - frame.y, width, height};
}

constexpr int firstRow = 32;
constexpr int secondRow = 61;

inline const auto edit = at(geometry::header::editKey, 499, firstRow, 64);
inline const auto orig = at(geometry::header::origKey, 499, secondRow, 64);
inline const auto layers = at(geometry::header::layersKey, 570, firstRow, 68);
inline const auto fx = at(geometry::header::fxKey, 570, secondRow, 68);
inline const auto manager = at(geometry::header::managerKey, 645, firstRow, 68);
inline const auto multi = at(geometry::header::multiKey, 645, secondRow, 68);

} // namespace quorel::artwork::headerKeyFaces
