// SPDX-License-Identifier: GPL-3.0-or-later
// The finished plug-in's editor in a host's window: who gets the keys.
#include "RawVst2Host.h"

#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <string>
#include <thread>

namespace quorel::test
{

namespace
{
constexpr int viewParameter = 2;
constexpr float multiPage = 0.3f;
constexpr int firstMultiName = 1370;

/** A host's window with the editor in it, and a user in front of them. */
class HostWindow
{
public:
    HostWindow()
        : display(XOpenDisplay(nullptr))
        , host(QUOREL_PLUGIN_FILE)
    {
        host.setParameter(viewParameter, multiPage);
        ERect* size = nullptr;
        host.dispatch(effEditGetRect, 0, 0, &size);
        window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0,
                                     static_cast<unsigned int>(size->right - size->left),
                                     static_cast<unsigned int>(size->bottom - size->top), 0, 0, 0);
        XSelectInput(display, window, KeyPressMask | StructureNotifyMask);
        XMapWindow(display, window);
        EXPECT_TRUE(comesTo([this] { return focus() == window; }));
        host.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(window));
        EXPECT_TRUE(comesTo([this] { return editor() != 0; }));
        idle(500);
    }

    ~HostWindow()
    {
        host.dispatch(effEditClose);
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }

    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void idle(int millis)
    {
        for (int waited = 0; waited < millis; waited += 5)
        {
            host.dispatch(effEditIdle);

            while (XPending(display) > 0)
            {
                XEvent event;
                XNextEvent(display, &event);
                std::array<char, 8> text{};

                if (event.type == KeyPress &&
                    XLookupString(&event.xkey, text.data(), 7, nullptr, nullptr) > 0)
                    keys += text.data();
            }

            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    bool comesTo(const std::function<bool()>& done)
    {
        for (int tries = 0; tries < 200 && !done(); ++tries)
            idle(20);

        return done();
    }

    bool hasKeyboard()
    {
        return comesTo([this] { return focus() == window; });
    }

    bool editorHasKeyboard()
    {
        return comesTo([this] { return focus() == editor(); });
    }

    void click(int x, int y)
    {
        XWarpPointer(display, None, editor(), 0, 0, 0, 0, x, y);
        idle(100);

        for (const auto type : {ButtonPress, ButtonRelease})
        {
            XEvent event{};
            event.xbutton.type = type;
            event.xbutton.window = editor();
            event.xbutton.root = DefaultRootWindow(display);
            event.xbutton.x = x;
            event.xbutton.y = y;
            event.xbutton.button = Button1;
            event.xbutton.state = type == ButtonRelease ? Button1Mask : 0u;
            event.xbutton.same_screen = True;
            XSendEvent(display, editor(), True, NoEventMask, &event);
            idle(200);
        }
    }

    /** The pointer stays over the editor: there the server delivers keys to it, whether it has the keyboard or a
        window around it. */
    void type(int symbol)
    {
        for (const auto type : {KeyPress, KeyRelease})
        {
            XEvent event{};
            event.xkey.type = type;
            event.xkey.root = DefaultRootWindow(display);
            event.xkey.keycode = XKeysymToKeycode(display, static_cast<KeySym>(symbol));
            event.xkey.same_screen = True;
            event.xkey.window = editor();
            XSendEvent(display, editor(), True, type == KeyPress ? KeyPressMask : KeyReleaseMask, &event);
            XFlush(display);
            idle(50);
        }
    }

    /** The keys that have come to the host since the last call. */
    std::string takeKeys()
    {
        idle(100);
        return std::exchange(keys, {});
    }

    std::string multiControlName()
    {
        std::string name;
        constexpr float codes = 256.0f;

        for (int i = firstMultiName;
             const int code = static_cast<int>(std::lround(host.parameter(i) * codes)); ++i)
            name += static_cast<char>(code);

        return name;
    }

private:
    Window focus()
    {
        Window focused = 0;
        int revert = 0;
        XGetInputFocus(display, &focused, &revert);
        return focused;
    }

    Window editor()
    {
        Window root = 0, parent = 0, *children = nullptr;
        unsigned int count = 0;
        XQueryTree(display, window, &root, &parent, &children, &count);
        const Window first = count > 0 ? children[0] : 0;
        XFree(children);
        return first;
    }

    Display* display;
    RawVst2Host host;
    Window window = 0;
    std::string keys;
};
} // namespace

TEST(EditorInHost, takes_the_keyboard_for_what_it_is_for_and_gives_it_back)
{
    HostWindow host;
    constexpr int nameX = 530, nameY = 327;
    constexpr int groundX = 700, groundY = 770;

    // Opening takes nothing, nor does the pointer over the editor.
    EXPECT_TRUE(host.hasKeyboard());
    host.type(XK_space);
    EXPECT_EQ(host.takeKeys(), " ");

    // A click takes the keyboard, and the first key that is not for the editor brings it back.
    host.click(groundX, groundY);
    EXPECT_TRUE(host.editorHasKeyboard());
    host.type(XK_space);
    EXPECT_EQ(host.takeKeys(), " ");
    EXPECT_TRUE(host.hasKeyboard());

    const auto before = host.multiControlName();
    host.click(nameX, nameY);
    EXPECT_TRUE(host.editorHasKeyboard());

    for (const auto symbol : {XK_a, XK_space, XK_b})
        host.type(symbol);

    host.type(XK_Escape);
    EXPECT_TRUE(host.hasKeyboard());
    EXPECT_EQ(host.multiControlName(), before);

    host.click(nameX, nameY);

    for (const auto symbol : {XK_a, XK_space, XK_b})
        host.type(symbol);

    host.type(XK_Return);
    EXPECT_TRUE(host.hasKeyboard());
    EXPECT_EQ(host.multiControlName(), "a b") << "What was there is selected, and typed over";
    EXPECT_EQ(host.takeKeys(), "");

    host.click(nameX, nameY);
    host.type(XK_c);
    host.click(groundX, groundY);
    EXPECT_EQ(host.multiControlName(), "c");
    host.type(XK_space);
    EXPECT_EQ(host.takeKeys(), " ");
    EXPECT_TRUE(host.hasKeyboard());
}

} // namespace quorel::test
