// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <juce_core/juce_core.h>

namespace quorel::test
{

/** Sets a variable of this process and of those that it starts. Before the first thread starts. */
inline void setVariable(const juce::String& name, const juce::String& value)
{
#if JUCE_WINDOWS
    _wputenv_s(name.toWideCharPointer(), value.toWideCharPointer());
#else
    setenv(name.toRawUTF8(), value.toRawUTF8(), 1);
#endif
}

} // namespace quorel::test
