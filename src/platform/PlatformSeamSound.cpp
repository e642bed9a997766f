// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamSound.h"

#include <juce_core/juce_core.h>

#if !JUCE_WINDOWS
#include <alsa/asoundlib.h>
#include <dlfcn.h>
#endif

namespace quorel
{

#if JUCE_WINDOWS
void quietenSoundLibraries()
{
}
#else
namespace
{
void ignoreAlsa(const char*, int, const char*, int, const char*, ...)
{
}

void ignoreJack(const char*)
{
}
} // namespace

void quietenSoundLibraries()
{
    snd_lib_error_set_handler(ignoreAlsa);

    // JACK is there or not: JUCE opens it by this name, too. It stays open, since it keeps the functions.
    void* const jack = dlopen("libjack.so.0", RTLD_LAZY);

    if (jack == nullptr)
        return;

    using SetFunction = void (*)(void (*)(const char*));
    for (const char* name : {"jack_set_error_function", "jack_set_info_function"})
        if (void* const found = dlsym(jack, name))
            reinterpret_cast<SetFunction>(found)(ignoreJack);
}
#endif

} // namespace quorel
