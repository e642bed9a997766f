// SPDX-License-Identifier: GPL-3.0-or-later
// The X headers come with JUCE's, whose connection to the server is used.
#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1

#include "platform/PlatformSeamWindow.h"

#if JUCE_WINDOWS
#include <cstdio>
#include <windows.h>
#endif

namespace quorel
{

void setWindowIcons(juce::ComponentPeer& peer, const std::vector<juce::Image>& icons)
{
    peer.setIcon(icons.back());

#if !JUCE_WINDOWS
    // JUCE has put one icon into the property that takes any number: width, height, and the pixels of each.
    std::vector<unsigned long> data;
    for (const auto& icon : icons)
    {
        data.push_back(static_cast<unsigned long>(icon.getWidth()));
        data.push_back(static_cast<unsigned long>(icon.getHeight()));
        for (int y = 0; y < icon.getHeight(); ++y)
            for (int x = 0; x < icon.getWidth(); ++x)
                data.push_back(icon.getPixelAt(x, y).getARGB());
    }

    const juce::XWindowSystemUtilities::ScopedXLock lock;
    auto* display = juce::XWindowSystem::getInstance()->getDisplay();
    const auto* x = juce::X11Symbols::getInstance();
    constexpr int bitsOfAnItem = 32;
    x->xChangeProperty(display, reinterpret_cast<::Window>(peer.getNativeHandle()),
                       x->xInternAtom(display, "_NET_WM_ICON", False), XA_CARDINAL, bitsOfAnItem,
                       PropModeReplace, reinterpret_cast<const unsigned char*>(data.data()),
                       static_cast<int>(data.size()));
#endif
}

void printToCallersConsole()
{
#if JUCE_WINDOWS
    const auto leadsNowhere = [](DWORD stream)
    { return GetFileType(GetStdHandle(stream)) == FILE_TYPE_UNKNOWN; };
    const bool output = leadsNowhere(STD_OUTPUT_HANDLE);
    const bool errors = leadsNowhere(STD_ERROR_HANDLE);

    if ((!output && !errors) || AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return;

    if (output)
        juce::ignoreUnused(std::freopen("CONOUT$", "w", stdout));

    if (errors)
        juce::ignoreUnused(std::freopen("CONOUT$", "w", stderr));
#endif
}

} // namespace quorel
