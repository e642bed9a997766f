// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hosting/InstrumentWindow.h"

namespace quorel::test
{

/** A hosted instrument's window that stays open until its layer closes it, and then says so. */
class OpenWindow final : public InstrumentWindow
{
public:
    explicit OpenWindow(bool& closedFlag)
        : closed(closedFlag)
    {
    }

    ~OpenWindow() override { closed = true; }

    bool isShowing() const override { return true; }

private:
    bool& closed;
};

} // namespace quorel::test
