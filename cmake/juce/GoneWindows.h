// SPDX-License-Identifier: GPL-3.0-or-later
// For JUCE's window system, in whose file it is included.
//
// A host may take a window away while JUCE asks about it. That is no error for as long as this lives: hosts that leave
// errors to Xlib or to GTK would end.

struct GoneWindowsAreNoError
{
    explicit GoneWindowsAreNoError (::Display* connection)
        : display (connection),
          handlerBefore (X11Symbols::getInstance()->xSetErrorHandler ([] (::Display*, XErrorEvent*) { return 0; }))
    {
    }

    ~GoneWindowsAreNoError()
    {
        X11Symbols::getInstance()->xSync (display, False);
        X11Symbols::getInstance()->xSetErrorHandler (handlerBefore);
    }

    ::Display* const display;
    const XErrorHandler handlerBefore;
};
