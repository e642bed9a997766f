// SPDX-License-Identifier: GPL-3.0-or-later
// For JUCE's window system, in whose namespace and file it is included.
//
// JUCE handles the X server's events when its connection can be read. A question to the server, such as where the pointer
// is, reads events off the connection along with its answer; they would lie in Xlib's queue until something else
// arrives, a key or a click for seconds.

struct QueuedXEvents final : private Timer
{
    QueuedXEvents (::Display* connection, std::function<void (int)> handler)
        : display (connection), handle (std::move (handler))
    {
        constexpr int lookMillis = 40;
        startTimer (lookMillis);
    }

    ~QueuedXEvents() override { stopTimer(); }

    void timerCallback() override
    {
        const auto anyQueued = [this]
        {
            XWindowSystemUtilities::ScopedXLock xLock;
            return X11Symbols::getInstance()->xEventsQueued (display, QueuedAlready) > 0;
        }();

        if (anyQueued)
            handle (0);
    }

    ::Display* const display;
    const std::function<void (int)> handle;
};

static std::unique_ptr<QueuedXEvents> queuedXEvents;
