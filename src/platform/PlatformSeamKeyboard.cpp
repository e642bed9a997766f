// SPDX-License-Identifier: GPL-3.0-or-later
// The X headers come with JUCE's, whose connection to the server is used.
#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1

#include "platform/PlatformSeamKeyboard.h"

#if JUCE_WINDOWS
#include <windows.h>
#else
#include "platform/GoneWindows.h"
#endif

namespace quorel
{

#if JUCE_WINDOWS

namespace
{
HWND ownWindow(const juce::ComponentPeer& peer)
{
    return static_cast<HWND>(peer.getNativeHandle());
}

HWND hostWindow(const juce::ComponentPeer& peer)
{
    return GetAncestor(ownWindow(peer), GA_ROOT);
}

/** From JUCE's code: that of most characters is the character, that of the other keys the lower byte, marked or below
    the blank. */
UINT virtualKeyOf(int code)
{
    constexpr int mark = 0x10000;
    constexpr int lowerByte = 0xff;
    const bool isCharacter = code >= ' ' && (code & mark) == 0;
    return static_cast<UINT>((isCharacter ? VkKeyScanW(static_cast<WCHAR>(code)) : code) & lowerByte);
}
} // namespace

bool isInHostWindow(const juce::ComponentPeer& peer)
{
    return hostWindow(peer) != ownWindow(peer);
}

void giveKeyboardToHost(const juce::ComponentPeer& peer)
{
    SetFocus(hostWindow(peer));
}

bool giveKeyToHost(const juce::ComponentPeer& peer, const juce::KeyPress& key)
{
    if (!isInHostWindow(peer) || GetFocus() != ownWindow(peer))
        return false;

    giveKeyboardToHost(peer);
    const auto virtualKey = virtualKeyOf(key.getKeyCode());
    constexpr unsigned scanCodeShift = 16;
    constexpr LPARAM once = 1;
    const auto scanCode = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    // The host's own loop makes a character of it, as of every key that is pressed.
    PostMessageW(hostWindow(peer), WM_KEYDOWN, virtualKey, scanCode << scanCodeShift | once);
    return true;
}

#else

namespace
{
/** JUCE's connection, held for as long as this lives. */
class Connection
{
public:
    ::Display* get() const noexcept { return display; }

    const juce::X11Symbols* operator->() const noexcept { return juce::X11Symbols::getInstance(); }

    bool hasProperty(::Window window, Atom property) const
    {
        Atom type = 0;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* data = nullptr;
        constexpr long noData = 0;
        const auto* x = juce::X11Symbols::getInstance();
        x->xGetWindowProperty(display, window, property, 0, noData, False, AnyPropertyType, &type, &format,
                              &count, &left, &data);

        if (data != nullptr)
            x->xFree(data);

        return type != 0;
    }

    /** The window that the window manager knows; without one, that below the root. */
    ::Window topLevelAround(::Window window) const
    {
        const auto* x = juce::X11Symbols::getInstance();
        const auto managed = x->xInternAtom(display, "WM_STATE", False);

        for (;;)
        {
            const auto parent = hasProperty(window, managed) ? 0 : parentOf(window);

            if (parent == 0)
                return window;

            window = parent;
        }
    }

    bool isInside(::Window window, ::Window outer) const
    {
        while (window != 0 && window != outer)
            window = parentOf(window);

        return window != 0;
    }

private:
    /** 0 for a window below the root. */
    ::Window parentOf(::Window window) const
    {
        const auto* x = juce::X11Symbols::getInstance();
        ::Window root = 0;
        ::Window parent = 0;
        ::Window* children = nullptr;
        unsigned int numChildren = 0;
        x->xQueryTree(display, window, &root, &parent, &children, &numChildren);

        if (children != nullptr)
            x->xFree(children);

        return parent == root ? 0 : parent;
    }

    ::Display* const display{juce::XWindowSystem::getInstance()->getDisplay()};
    juce::XWindowSystemUtilities::ScopedXLock lock;
    const GoneWindowsAreNoError noError{display};
};

::Window ownWindow(const juce::ComponentPeer& peer)
{
    return reinterpret_cast<::Window>(peer.getNativeHandle());
}

/** The key's symbol, from JUCE's code: that of most characters is the character, that of the other keys the lower
    byte, marked or below the blank. */
KeySym symbolOf(int code)
{
    constexpr int mark = 0x10000000;
    constexpr int lowerByte = 0xff;
    constexpr int otherKeys = 0xff00;
    constexpr int lastLatin = 0xff;
    constexpr int unicode = 0x01000000;

    if ((code & mark) != 0 || code < ' ')
        return static_cast<KeySym>((code & lowerByte) | otherKeys);

    return static_cast<KeySym>(code > lastLatin ? code | unicode : code);
}

unsigned int stateOf(juce::ModifierKeys keys)
{
    return (keys.isShiftDown() ? ShiftMask : 0u) | (keys.isCtrlDown() ? ControlMask : 0u) |
           (keys.isAltDown() ? Mod1Mask : 0u);
}

/** False where the host's window can't have the keyboard. */
bool focusHost(const Connection& x, ::Window host)
{
    XWindowAttributes attributes{};

    // Only a window on the screen can have it.
    if (x->xGetWindowAttributes(x.get(), host, &attributes) == 0 || attributes.map_state != IsViewable)
        return false;

    x->xSetInputFocus(x.get(), host, RevertToParent, CurrentTime);
    x->xFlush(x.get());
    return true;
}
} // namespace

bool isInHostWindow(const juce::ComponentPeer& peer)
{
    const Connection x;
    return x.topLevelAround(ownWindow(peer)) != ownWindow(peer);
}

void giveKeyboardToHost(const juce::ComponentPeer& peer)
{
    const Connection x;
    focusHost(x, x.topLevelAround(ownWindow(peer)));
}

bool giveKeyToHost(const juce::ComponentPeer& peer, const juce::KeyPress& key)
{
    const Connection x;
    const auto own = ownWindow(peer);
    ::Window focused = 0;
    int revert = 0;
    x->xGetInputFocus(x.get(), &focused, &revert);

    // With the focus on a window around the one under the pointer, keys go to the latter.
    const bool came = focused > PointerRoot && focused != own && x.isInside(own, focused);
    const auto host = came ? focused : x.topLevelAround(own);

    if (host == own || (!came && (focused != own || !focusHost(x, host))))
        return false;

    // Its name in the X headers is that of JUCE's class.
    constexpr int keyPressType = 2;
    XEvent event{};
    event.xkey.type = keyPressType;
    event.xkey.display = x.get();
    event.xkey.window = host;
    event.xkey.root = DefaultRootWindow(x.get());
    event.xkey.time = CurrentTime;
    event.xkey.state = stateOf(key.getModifiers());
    event.xkey.keycode = x->xKeysymToKeycode(x.get(), symbolOf(key.getKeyCode()));
    event.xkey.same_screen = True;
    x->xSendEvent(x.get(), host, True, KeyPressMask, &event);
    x->xFlush(x.get());
    return true;
}

#endif

} // namespace quorel
