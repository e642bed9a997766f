// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSeam.h"
#include "HostWindow.h"

#include <windows.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorel::test
{

struct HostWindow::Native
{
    explicit Native(std::string& keysThatCame)
    {
        const auto instance = GetModuleHandleW(nullptr);
        WNDCLASSW kind{};
        kind.lpfnWndProc = handle;
        kind.hInstance = instance;
        kind.lpszClassName = L"HostWindow";
        kind.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        RegisterClassW(&kind);
        window = CreateWindowExW(0, kind.lpszClassName, L"A host", style, CW_USEDEFAULT, CW_USEDEFAULT, 100,
                                 100, nullptr, nullptr, instance, nullptr);

        if (window == nullptr)
            throw std::runtime_error("no window: error " + std::to_string(GetLastError()));

        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&keysThatCame));
    }

    ~Native() { DestroyWindow(window); }

    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM word, LPARAM more)
    {
        if (message == WM_CHAR)
            *reinterpret_cast<std::string*>(GetWindowLongPtrW(window, GWLP_USERDATA)) +=
                static_cast<char>(word);

        return DefWindowProcW(window, message, word, more);
    }

    HWND editor() const { return GetWindow(window, GW_CHILD); }

    static constexpr DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    HWND window = nullptr;
};

HostWindow::HostWindow(RawVst2Host& pluginHost)
    : host(pluginHost)
    , native(std::make_unique<Native>(keys))
{
    ERect* size = nullptr;
    host.dispatch(effEditGetRect, 0, 0, &size);
    RECT outside{0, 0, size->right - size->left, size->bottom - size->top};
    AdjustWindowRect(&outside, Native::style, FALSE);
    SetWindowPos(native->window, nullptr, 0, 0, outside.right - outside.left, outside.bottom - outside.top,
                 SWP_NOZORDER);
    ShowWindow(native->window, SW_SHOWNORMAL);
    // Keys go to the window in front, which a busy system makes this one only after a while.
    comesTo(
        [this]
        {
            SetForegroundWindow(native->window);
            SetFocus(native->window);
            return GetForegroundWindow() == native->window;
        });
    host.dispatch(effEditOpen, 0, 0, native->window);
    comesTo([this] { return isOpen(); });
    constexpr int settlesMillis = 500;
    idle(settlesMillis);
}

HostWindow::~HostWindow()
{
    host.dispatch(effEditClose);
}

void HostWindow::idle(int millis)
{
    constexpr int roundMillis = 10;

    for (int waited = 0; waited < millis; waited += roundMillis)
    {
        host.dispatch(effEditIdle);
        letPluginsRun(roundMillis);
    }
}

bool HostWindow::isOpen()
{
    return native->editor() != nullptr;
}

bool HostWindow::hasKeyboard()
{
    return comesTo([this] { return GetFocus() == native->window; });
}

bool HostWindow::editorHasKeyboard()
{
    return comesTo([this] { return GetFocus() == native->editor(); });
}

void HostWindow::click(int x, int y)
{
    POINT place{x, y};
    ClientToScreen(native->editor(), &place);
    SetCursorPos(place.x, place.y);
    idle(100);

    for (const DWORD what : {DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}})
    {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = what;
        SendInput(1, &input, sizeof(input));
    }

    // Only then: on a busy machine the press would grow too long for a click.
    idle(400);
}

void HostWindow::type(char key)
{
    const auto virtualKey =
        key < ' ' ? static_cast<WORD>(key) : static_cast<WORD>(VkKeyScanW(static_cast<WCHAR>(key)) & 0xff);

    for (const DWORD what : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}})
    {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = virtualKey;
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = what;
        SendInput(1, &input, sizeof(input));
        idle(50);
    }
}

void* HostWindow::editor()
{
    return native->editor();
}

static std::vector<HWND> windowsTitled(const std::string& title)
{
    struct Search
    {
        const std::string& title;
        std::vector<HWND> found;
    } search{title, {}};

    EnumWindows(
        [](HWND window, LPARAM given) -> WINBOOL
        {
            auto& wanted = *reinterpret_cast<Search*>(given);
            std::array<char, 256> text{};
            GetWindowTextA(window, text.data(), static_cast<int>(text.size()));

            if (IsWindowVisible(window) != FALSE && text.data() == wanted.title)
                wanted.found.push_back(window);

            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

int numWindowsTitled(const std::string& title)
{
    return static_cast<int>(windowsTitled(title).size());
}

void closeWindowsTitled(const std::string& title)
{
    for (auto* const window : windowsTitled(title))
        PostMessageW(window, WM_CLOSE, 0, 0);
}

} // namespace quorel::test
