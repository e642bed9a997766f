# SPDX-License-Identifier: GPL-3.0-or-later
# What `SharedJuce.cmake` changes in JUCE's VST2 host: a changed copy of it goes into the build tree. Configuring stops if
# JUCE's text isn't what is expected here.
quorel_read_source("${juceProcessors}/format_types/juce_VSTPluginFormat.cpp" vstFormatText)

function(quorel_change_vst_host count old new)
    quorel_change_source(vstFormatText cmake/VstHost.cmake ${count} "${old}" "${new}")
    set(vstFormatText "${vstFormatText}" PARENT_SCOPE)
endfunction()

# Hosted instruments ask for their host's name, and the answer must not depend on the program around us: a standalone
# application's name overrides JUCE_VST_FALLBACK_HOST_NAME.
quorel_change_vst_host(1
    "        if (auto* app = JUCEApplicationBase::getInstance())\n            hostName = app->getApplicationName();\n"
    "")

# No exception of an instrument leaves its host, but for those of processing, which our block catches. One that is without
# what processes, or has an absurd number of channels, is of no use.
quorel_change_vst_host(1
    "typedef Vst2::AEffect* (VSTCALLBACK *MainCall) (Vst2::audioMasterCallback);\n"
    "typedef Vst2::AEffect* (VSTCALLBACK *MainCall) (Vst2::audioMasterCallback);\n#include \"${changesDir}/GuardedVstCalls.h\"\n#include \"${changesDir}/VstLimits.h\"\n")
quorel_change_vst_host(1
    "            newEffect->dispatcher (newEffect, Vst2::effOpen, 0, 0, nullptr, 0);\n"
    "            if (! guardedOpen (newEffect) || ! isUsable (newEffect))\n            {\n                newModule->closeEffect (newEffect);\n                return nullptr;\n            }\n\n")
quorel_change_vst_host(3 "newEffect->dispatcher (newEffect, " "guardedDispatch (newEffect, ")
quorel_change_vst_host(2 "vstEffect->dispatcher (vstEffect, " "guardedDispatch (vstEffect, ")
quorel_change_vst_host(2 "eff->dispatcher (eff, " "guardedDispatch (eff, ")
quorel_change_vst_host(5 "effect->dispatcher (effect," "guardedDispatch (effect,")
quorel_change_vst_host(2 "effect->getParameter (effect, " "guardedGetParameter (effect, ")
quorel_change_vst_host(1 "effect->setParameter (effect, " "guardedSetParameter (effect, ")

# The lock that JUCE holds during its calls to the instrument, so that a caller can see whether it is free.
quorel_change_vst_host(1
    "    bool updateSizeFromEditor (int w, int h);\n\n    Vst2::AEffect* vstEffect;\n"
    "    bool updateSizeFromEditor (int w, int h);\n\n    const CriticalSection& callLock() const noexcept    { return lock; }\n\n    Vst2::AEffect* vstEffect;\n")
string(APPEND vstFormatText "\n#include \"${changesDir}/InstrumentLock.h\"\n")

# The block neither waits for an instrument that sends MIDI from a thread of its own, nor takes memory for one with 32
# channels or more, as an AudioBuffer that refers to them does.
quorel_change_vst_host(1
    "            const ScopedLock sl (midiInLock);\n\n            midiMessages.swapWith (incomingMidi);\n            incomingMidi.clear();\n"
    "            const ScopedTryLock sl (midiInLock);\n\n            if (sl.isLocked())\n            {\n                midiMessages.swapWith (incomingMidi);\n                incomingMidi.clear();\n            }\n")
quorel_change_vst_host(1
    "                AudioBuffer<FloatType> processBuffer (channels, maxChannels, numSamples);\n\n                invokeProcessFunction (processBuffer, numSamples);\n"
    "                invokeProcessFunction (channels, maxChannels, numSamples);\n")
quorel_change_vst_host(1
    "    inline void invokeProcessFunction (AudioBuffer<float>& buffer, int32 sampleFrames)\n"
    "    template <typename FloatType>\n    void invokeProcessFunction (FloatType** channels, int numChannels, int numSamples)\n    {\n        if constexpr (std::is_same_v<FloatType, float>)\n        {\n            if ((vstEffect->flags & Vst2::effFlagsCanReplacing) != 0)\n            {\n                vstEffect->processReplacing (vstEffect, tempChannelPointers[0].copyOf (channels, numChannels),\n                                             tempChannelPointers[1].copyOf (channels, numChannels), numSamples);\n                return;\n            }\n        }\n\n        AudioBuffer<FloatType> buffer (channels, numChannels, numSamples);\n        invokeProcessFunction (buffer, numSamples);\n    }\n\n    inline void invokeProcessFunction (AudioBuffer<float>& buffer, int32 sampleFrames)\n")
quorel_change_vst_host(1
    "private:\n    template <typename> struct Tag {};\n"
    "    float** copyOf (float** channels, int numChannels)\n    {\n        floatPointers.resize (jmax (floatPointers.size(), (size_t) numChannels));\n        std::copy (channels, channels + numChannels, floatPointers.begin());\n        return floatPointers.data();\n    }\n\nprivate:\n    template <typename> struct Tag {};\n")

# An instrument may answer anything. Programs beyond the last would be written behind a bank's end, or looked
# up in a list of names as long.
quorel_change_vst_host(1
    "    int getCurrentProgram() override       { return (int) dispatch (Vst2::effGetProgram, 0, 0, nullptr, 0); }\n"
    "    int getCurrentProgram() override\n    {\n        return (int) jmin<pointer_sized_int> (dispatch (Vst2::effGetProgram, 0, 0, nullptr, 0), jmax (0, getNumPrograms() - 1));\n    }\n")
quorel_change_vst_host(1
    "                auto len = (size_t) (progLen * jmax (1, numPrograms)) + (sizeof (fxSet) - sizeof (fxProgram));\n"
    "                auto len = (size_t) progLen * (size_t) jmax (1, numPrograms) + (sizeof (fxSet) - sizeof (fxProgram));\n\n                if (len > ((size_t) maxSizeMB << 20))\n                    return false;\n\n")

# Its outputs may become more. The buffers have room for some, and beyond these it is silent until it is prepared anew.
quorel_change_vst_host(1
    "            auto maxChannels = jmax (1, jmax (vstEffect->numInputs, vstEffect->numOutputs));\n\n            tmpBufferFloat"
    "            if (! isPowerOn)\n                setPower (true);\n\n            auto maxChannels = jmax (spareChannels, jmax (vstEffect->numInputs, vstEffect->numOutputs));\n\n            tmpBufferFloat")
quorel_change_vst_host(1
    "            outOfPlaceBuffer.setSize (jmax (1, vstEffect->numOutputs), samplesPerBlockExpected);\n\n            if (! isPowerOn)\n                setPower (true);\n"
    "            outOfPlaceBuffer.setSize (jmax (1, vstEffect->numOutputs), samplesPerBlockExpected);\n\n            for (auto& pointers : tempChannelPointers)\n                pointers.copyOf (channelBufferFloat.get(), maxChannels);\n")
quorel_change_vst_host(1
    "            auto channels = channelBuffer.get();\n\n            if (numChannels < maxChannels)\n            {\n                if (numSamples > tmpBuffer.getNumSamples())\n                    tmpBuffer.setSize (tmpBuffer.getNumChannels(), numSamples);\n\n                tmpBuffer.clear();\n            }\n"
    "            auto channels = channelBuffer.get();\n\n            if (maxChannels > tmpBuffer.getNumChannels())\n            {\n                buffer.clear();\n                return;\n            }\n\n            if (numChannels < maxChannels)\n            {\n                if (numSamples > tmpBuffer.getNumSamples())\n                    tmpBuffer.setSize (tmpBuffer.getNumChannels(), numSamples);\n\n                for (int ch = numChannels; ch < maxChannels; ++ch)\n                    tmpBuffer.clear (ch, 0, numSamples);\n            }\n")

# It may ask for idle time in the midst of a call. Timers and messages of ours would take it away from under itself, or
# wait for the end of that call.
quorel_change_vst_host(1
    "            Timer::callPendingTimersSynchronously();\n            handleUpdateNowIfNeeded();\n\n" "")

# It may ask for another size of its window on any thread, as that of the block: it waits for nobody there. No screen
# needs a size beyond the largest.
quorel_change_vst_host(1
    "       #if JUCE_LINUX || JUCE_BSD\n        const MessageManagerLock mmLock;\n       #endif\n\n        updateSizeFromEditor (width, height);\n"
    "        if (MessageManager::getInstance()->isThisTheMessageThread())\n        {\n            updateSizeFromEditor (width, height);\n            return;\n        }\n\n        sizeAskedFor.ask (width, height);\n        triggerAsyncUpdate();\n")
quorel_change_vst_host(1
    "    void handleAsyncUpdate() override\n    {\n        updateHostDisplay"
    "    void handleAsyncUpdate() override\n    {\n        int width = 0, height = 0;\n\n        if (sizeAskedFor.take (width, height))\n            updateSizeFromEditor (width, height);\n\n        updateHostDisplay")
quorel_change_vst_host(1
    "    CriticalSection midiInLock;\n    MidiBuffer incomingMidi;\n"
    "    WindowSize sizeAskedFor;\n    CriticalSection midiInLock;\n    MidiBuffer incomingMidi;\n")
quorel_change_vst_host(1
    "        const auto correctedBounds = vstToComponentRect (*this, { w, h });\n        setSize"
    "        const auto correctedBounds = vstToComponentRect (*this, { jlimit (1, largestWindow, w), jlimit (1, largestWindow, h) });\n        setSize")

# It may take its window away, or put another in its place.
quorel_change_vst_host(1
    "struct VSTPluginWindow;\n"
    "#if JUCE_LINUX || JUCE_BSD\n#include \"${PROJECT_SOURCE_DIR}/src/platform/GoneWindows.h\"\n#endif\n\nstruct VSTPluginWindow;\n")
quorel_change_vst_host(1
    "                auto clip = componentToVstRect"
    "                XWindowSystemUtilities::ScopedXLock xLock;\n                const GoneWindowsAreNoError guard (display);\n                auto clip = componentToVstRect")
quorel_change_vst_host(1
    "            if (pluginWindow != 0)\n            {\n                auto* symbols"
    "            if (pluginWindow != 0)\n                updatePluginWindowHandle();\n\n            if (pluginWindow != 0)\n            {\n                XWindowSystemUtilities::ScopedXLock xLock;\n                const GoneWindowsAreNoError guard (display);\n                auto* symbols")
quorel_change_vst_host(1
    "        if (pluginWindow != 0)\n            X11Symbols::getInstance()->xMapRaised (display, pluginWindow);\n"
    "        if (pluginWindow != 0)\n        {\n            XWindowSystemUtilities::ScopedXLock xLock;\n            const GoneWindowsAreNoError guard (display);\n            X11Symbols::getInstance()->xMapRaised (display, pluginWindow);\n        }\n")

# It may send MIDI while no block runs that takes it.
quorel_change_vst_host(1
    "            const ScopedLock sl (midiInLock);\n            VSTMidiEventList::addEventsToMidiBuffer (events, incomingMidi);\n"
    "            const ScopedLock sl (midiInLock);\n\n            if (incomingMidi.data.size() < mostMidiBytes)\n                VSTMidiEventList::addEventsToMidiBuffer (events, incomingMidi);\n")

file(CONFIGURE OUTPUT "${patchedDir}/format_types/juce_VSTPluginFormat.cpp" CONTENT "${vstFormatText}" @ONLY)
configure_file("${juceProcessors}/juce_audio_processors.cpp" "${patchedDir}/juce_audio_processors.cpp" COPYONLY)
get_target_property(processorSources juce_audio_processors INTERFACE_SOURCES)
list(FILTER processorSources EXCLUDE REGEX "/juce_audio_processors\\.cpp$")
set_target_properties(juce_audio_processors PROPERTIES INTERFACE_SOURCES "${processorSources}")
