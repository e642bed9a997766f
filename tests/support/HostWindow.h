// SPDX-License-Identifier: GPL-3.0-or-later
// A host's window with a plug-in's editor in it, and a user in front of them. Each platform has its own file of this.
#pragma once

#include "RawVst2Host.h"

#include <functional>
#include <memory>
#include <string>

namespace quorel::test
{

class HostWindow
{
public:
    /** Opens the editor in a window of its size, which has the keyboard. */
    explicit HostWindow(RawVst2Host& pluginHost);
    /** Closes it. */
    ~HostWindow();

    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /** Goes on for a time as hosts do. */
    void idle(int millis);
    bool comesTo(const std::function<bool()>& done);

    bool isOpen();
    bool hasKeyboard();
    bool editorHasKeyboard();

    /** At a place in the editor, where the pointer stays. */
    void click(int x, int y);
    /** A character, '\r' for Return or '\x1b' for Escape. */
    void type(char key);

    /** The characters that have come to the host since the last call; waits for as many as are expected, and
        for what comes besides. */
    std::string takeKeys(std::size_t expected);

    /** The system's name of the editor's window. */
    void* editor();

private:
    struct Native;

    RawVst2Host& host;
    std::string keys;
    std::unique_ptr<Native> native;
};

/** How many windows of this title the screen shows. */
int numWindowsTitled(const std::string& title);

/** Asks them to close, as their buttons do. On Windows alone. */
void closeWindowsTitled(const std::string& title);

} // namespace quorel::test
