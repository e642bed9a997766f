// SPDX-License-Identifier: GPL-3.0-or-later
// What is the same on all platforms.
#include "HostWindow.h"

#include <utility>

namespace quorel::test
{

bool HostWindow::comesTo(const std::function<bool()>& done)
{
    for (int tries = 0; tries < 200 && !done(); ++tries)
        idle(20);

    return done();
}

std::string HostWindow::takeKeys(std::size_t expected)
{
    comesTo([&] { return keys.size() >= expected; });
    idle(100);
    return std::exchange(keys, {});
}

} // namespace quorel::test
