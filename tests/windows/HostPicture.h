// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quorel::test
{

/** What a window shows. */
class HostPicture
{
public:
    /** `window` is the system's name of it. */
    explicit HostPicture(void* window);

    int width() const { return numColumns; }

    int height() const { return numRows; }

    int numColours() const;

    /** The picture as a file. */
    std::vector<std::uint8_t> bmp() const;

private:
    int numColumns = 0;
    int numRows = 0;
    /** Blue, green, red and nothing, from the top. */
    std::vector<std::uint32_t> pixels;
};

} // namespace quorel::test
