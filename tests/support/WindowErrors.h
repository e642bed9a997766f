// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if !defined(_WIN32)
#include <dlfcn.h>
#endif

namespace quorel::test
{

/** Has this program go on, as hosts do, when the X server says that a window is gone: a window manager takes some away
    between a question about them and its answer. */
inline void surviveWindowErrors()
{
#if !defined(_WIN32)
    using Handler = int (*)(void* display, void* event);

    if (auto* library = dlopen("libX11.so.6", RTLD_NOW))
        if (auto* set = reinterpret_cast<Handler (*)(Handler)>(dlsym(library, "XSetErrorHandler")))
            set([](void*, void*) { return 0; });
#endif
}

} // namespace quorel::test
