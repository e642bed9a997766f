// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/Page.h"
#include "parameters/ParameterAccess.h"
#include "parameters/ParameterLayout.h"

#include <atomic>

namespace quorel
{

/** What the engine wants of the editor. Nobody calls an editor, as there may be none: it looks here at each
    of its passes. Any thread, where not stated. */
class EditorRequests
{
public:
    explicit EditorRequests(ParameterAccess& parameterTable) noexcept
        : parameters(parameterTable)
    {
    }

    /** The editor is to rebuild its picture. */
    void requestRefresh() noexcept { refreshRequested.store(true); }

    /** True once after one or more requests. */
    bool takeRefresh() noexcept { return refreshRequested.exchange(false); }

    /** The page that an editor shows, and returns to after a change of sound. */
    Page getPage() const noexcept { return page.load(std::memory_order_relaxed); }

    void setPage(Page newPage) noexcept { page.store(newPage, std::memory_order_relaxed); }

    /** Writes the page to the view parameter, which a change of sound has moved. Message thread. */
    void bringPageBack() { parameters.writeParameter(slot::view, viewOf(getPage())); }

private:
    ParameterAccess& parameters;
    std::atomic<Page> page{Page::multiControls};
    std::atomic<bool> refreshRequested{false};
};

} // namespace quorel
