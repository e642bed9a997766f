// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostWindow.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <array>
#include <chrono>
#include <thread>
#include <utility>

namespace quorel::test
{

struct HostWindow::Native
{
    Native() { XSelectInput(display, window, KeyPressMask | StructureNotifyMask); }

    ~Native()
    {
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }

    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    Window focus() const
    {
        Window focused = 0;
        int revert = 0;
        XGetInputFocus(display, &focused, &revert);
        return focused;
    }

    Window editor() const
    {
        Window root = 0, parent = 0, *children = nullptr;
        unsigned int count = 0;
        XQueryTree(display, window, &root, &parent, &children, &count);
        const Window first = count > 0 ? children[0] : 0;
        XFree(children);
        return first;
    }

    /** As hosts do once that embed a window by a toolkit: an action that soon is long ago. */
    void noteUserAction() const
    {
        constexpr unsigned long time = 1;
        XChangeProperty(display, editor(), XInternAtom(display, "_NET_WM_USER_TIME", False), XA_CARDINAL, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&time), 1);
    }

    Display* const display{XOpenDisplay(nullptr)};
    const Window window{XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0)};
};

HostWindow::HostWindow(RawVst2Host& pluginHost)
    : host(pluginHost)
    , native(std::make_unique<Native>())
{
    ERect* size = nullptr;
    host.dispatch(effEditGetRect, 0, 0, &size);
    XResizeWindow(native->display, native->window, static_cast<unsigned int>(size->right - size->left),
                  static_cast<unsigned int>(size->bottom - size->top));
    XMapWindow(native->display, native->window);
    comesTo([this] { return native->focus() == native->window; });
    host.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(native->window));
    comesTo([this] { return isOpen(); });
    native->noteUserAction();
    constexpr int settlesMillis = 500;
    idle(settlesMillis);
}

HostWindow::~HostWindow()
{
    host.dispatch(effEditClose);
}

void HostWindow::idle(int millis)
{
    for (int waited = 0; waited < millis; waited += 5)
    {
        host.dispatch(effEditIdle);

        while (XPending(native->display) > 0)
        {
            XEvent event;
            XNextEvent(native->display, &event);
            std::array<char, 8> text{};

            if (event.type == KeyPress && XLookupString(&event.xkey, text.data(), 7, nullptr, nullptr) > 0)
                keys += text.data();
        }

        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

bool HostWindow::isOpen()
{
    return native->editor() != 0;
}

bool HostWindow::hasKeyboard()
{
    return comesTo([this] { return native->focus() == native->window; });
}

bool HostWindow::editorHasKeyboard()
{
    return comesTo([this] { return native->focus() == native->editor(); });
}

void HostWindow::click(int x, int y)
{
    XWarpPointer(native->display, None, native->editor(), 0, 0, 0, 0, x, y);
    idle(100);

    for (const auto type : {ButtonPress, ButtonRelease})
    {
        XEvent event{};
        event.xbutton.type = type;
        event.xbutton.window = native->editor();
        event.xbutton.root = DefaultRootWindow(native->display);
        event.xbutton.x = x;
        event.xbutton.y = y;
        event.xbutton.button = Button1;
        event.xbutton.state = type == ButtonRelease ? Button1Mask : 0u;
        event.xbutton.same_screen = True;
        XSendEvent(native->display, native->editor(), True, NoEventMask, &event);
        idle(200);
    }
}

/** Over the editor the server delivers keys to it, whether it has the keyboard or a window around it. */
void HostWindow::type(char key)
{
    constexpr KeySym keysWithoutSign = 0xff00;
    const auto code = static_cast<KeySym>(key);

    for (const auto type : {KeyPress, KeyRelease})
    {
        XEvent event{};
        event.xkey.type = type;
        event.xkey.root = DefaultRootWindow(native->display);
        event.xkey.keycode = XKeysymToKeycode(native->display, key < ' ' ? code | keysWithoutSign : code);
        event.xkey.same_screen = True;
        event.xkey.window = native->editor();
        XSendEvent(native->display, native->editor(), True, type == KeyPress ? KeyPressMask : KeyReleaseMask,
                   &event);
        XFlush(native->display);
        idle(50);
    }
}

void* HostWindow::editor()
{
    return reinterpret_cast<void*>(native->editor());
}

static int countTitled(Display* display, Window window, const std::string& title)
{
    XTextProperty name{};
    XGetWMName(display, window, &name);
    const auto* text = reinterpret_cast<const char*>(name.value);
    int count = text != nullptr && text == title ? 1 : 0;
    XFree(name.value);
    Window root = 0, parent = 0, *children = nullptr;
    unsigned int numChildren = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &numChildren) == 0)
        return count;
    for (unsigned int i = 0; i < numChildren; ++i)
        count += countTitled(display, children[i], title);
    XFree(children);
    return count;
}

int numWindowsTitled(const std::string& title)
{
    // Windows come and go while they are counted.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    auto* display = XOpenDisplay(nullptr);
    const int count = countTitled(display, DefaultRootWindow(display), title);
    XCloseDisplay(display);
    return count;
}

} // namespace quorel::test
