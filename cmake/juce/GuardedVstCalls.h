// SPDX-License-Identifier: GPL-3.0-or-later
// For the changed copy of JUCE's VST2 host, which includes this in its own namespace and makes its calls to
// instruments through it. What an instrument throws ends here: it would leave through JUCE's timers and the
// host's calls otherwise. A call that throws answers 0. Any thread.
#pragma once

inline pointer_sized_int guardedDispatch(Vst2::AEffect* effect, int opcode, int index,
                                         pointer_sized_int value, void* pointer, float option,
                                         bool* threw = nullptr) noexcept
{
    try
    {
        return effect->dispatcher(effect, opcode, index, value, pointer, option);
    }
    catch (...)
    {
        if (threw != nullptr)
            *threw = true;

        return 0;
    }
}

/** False if the instrument throws: it is then of no use. */
inline bool guardedOpen(Vst2::AEffect* effect) noexcept
{
    bool threw = false;
    guardedDispatch(effect, Vst2::effOpen, 0, 0, nullptr, 0.0f, &threw);
    return !threw;
}

inline float guardedGetParameter(Vst2::AEffect* effect, int index) noexcept
{
    try
    {
        return effect->getParameter != nullptr ? effect->getParameter(effect, index) : 0.0f;
    }
    catch (...)
    {
        return 0.0f;
    }
}

inline void guardedSetParameter(Vst2::AEffect* effect, int index, float value) noexcept
{
    try
    {
        if (effect->setParameter != nullptr)
            effect->setParameter(effect, index, value);
    }
    catch (...)
    {
    }
}
