// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The editor's pages, as the view parameter counts them. */
enum class Page
{
    layers,
    effects,
    presetManager,
    multiControls
};

constexpr int numPages = 4;

/** The view parameter's value for a page. */
constexpr float viewOf(Page page) noexcept
{
    return 0.1f * static_cast<float>(page);
}

/** The page that a value of the view parameter asks for; the layers for one that asks for none. */
constexpr Page pageOf(float view) noexcept
{
    const int number = static_cast<int>(view * 10.0f);
    return number >= 0 && number < numPages ? static_cast<Page>(number) : Page::layers;
}

} // namespace quorel
