// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The window of a hosted instrument, as its layer sees it. The layer owns it and closes it, by deleting it,
    before the instrument goes. Message thread. */
class InstrumentWindow
{
public:
    virtual ~InstrumentWindow() = default;

    virtual bool isShowing() const = 0;
};

} // namespace quorel
