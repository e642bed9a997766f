// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The window of a hosted instrument, as its layer sees it: the layer owns it and takes it down before the
    instrument goes. Destruction closes the window. Message thread. */
class InstrumentWindow
{
public:
    virtual ~InstrumentWindow() = default;

    virtual bool isShowing() const = 0;
};

} // namespace quorel
