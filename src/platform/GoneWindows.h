// SPDX-License-Identifier: GPL-3.0-or-later
// Needs JUCE's X headers, and includes nothing: JUCE's own window system includes it inside its namespace.
#pragma once

/** A host may take a window away while it is asked about. That is no error for as long as this lives: hosts that leave
    errors to Xlib or to GTK would end. To be made and destroyed with JUCE's lock on the connection held. */
class GoneWindowsAreNoError
{
public:
    /** `waits` for errors to come; requests with an answer have brought theirs with it. */
    explicit GoneWindowsAreNoError(::Display* connection, bool waits = true)
        : display(connection)
        , waitsForErrors(waits)
        , handlerBefore(
              juce::X11Symbols::getInstance()->xSetErrorHandler([](::Display*, XErrorEvent*) { return 0; }))
    {
    }

    ~GoneWindowsAreNoError()
    {
        if (waitsForErrors)
            juce::X11Symbols::getInstance()->xSync(display, False);

        juce::X11Symbols::getInstance()->xSetErrorHandler(handlerBefore);
    }

    GoneWindowsAreNoError(const GoneWindowsAreNoError&) = delete;
    GoneWindowsAreNoError& operator=(const GoneWindowsAreNoError&) = delete;

private:
    ::Display* const display;
    const bool waitsForErrors;
    const XErrorHandler handlerBefore;
};
