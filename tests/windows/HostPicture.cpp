// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostPicture.h"

#include <windows.h>

#include <cstring>
#include <set>
#include <stdexcept>

namespace quorel::test
{

static BITMAPINFOHEADER headerOf(int width, int height)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof(header);
    header.biWidth = width;
    // Rows from the top.
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    return header;
}

HostPicture::HostPicture(void* window)
{
    auto* const handle = static_cast<HWND>(window);
    RECT size{};
    GetClientRect(handle, &size);
    numColumns = size.right;
    numRows = size.bottom;

    BITMAPINFO info{};
    info.bmiHeader = headerOf(numColumns, numRows);
    void* memory = nullptr;
    auto* const screen = GetDC(handle);
    auto* const copy = CreateCompatibleDC(screen);
    auto* const bitmap = CreateDIBSection(copy, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    auto* const before = SelectObject(copy, bitmap);
    const bool copied =
        bitmap != nullptr && BitBlt(copy, 0, 0, numColumns, numRows, screen, 0, 0, SRCCOPY) != FALSE;
    GdiFlush();

    if (copied)
    {
        const auto* words = static_cast<const std::uint32_t*>(memory);
        pixels.assign(words, words + static_cast<std::ptrdiff_t>(numColumns) * numRows);
    }

    SelectObject(copy, before);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(handle, screen);

    if (!copied)
        throw std::runtime_error("the window can't be copied");
}

int HostPicture::numColours() const
{
    std::set<std::uint32_t> colours;
    constexpr std::uint32_t colour = 0xffffff;
    for (const auto pixel : pixels)
        colours.insert(pixel & colour);
    return static_cast<int>(colours.size());
}

std::vector<std::uint8_t> HostPicture::bmp() const
{
    const auto header = headerOf(numColumns, numRows);
    BITMAPFILEHEADER file{};
    constexpr WORD letters = 0x4d42;
    file.bfType = letters;
    file.bfOffBits = sizeof(file) + sizeof(header);
    file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size() * sizeof(pixels[0]));
    std::vector<std::uint8_t> bytes(file.bfSize);
    std::memcpy(bytes.data(), &file, sizeof(file));
    std::memcpy(bytes.data() + sizeof(file), &header, sizeof(header));
    std::memcpy(bytes.data() + file.bfOffBits, pixels.data(), pixels.size() * sizeof(pixels[0]));
    return bytes;
}

} // namespace quorel::test
