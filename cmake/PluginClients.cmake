# SPDX-License-Identifier: GPL-3.0-or-later
# JUCE's clients for VST3 and LV2 in changed copies, and the tool that writes the descriptions of an LV2 plug-in.
set(quorelClients "${JUCE_MODULES_DIR}/juce_audio_plugin_client")

# Puts a changed client in the place of JUCE's. `variable` holds its text.
function(quorel_replace_client format file variable)
    set(folder "${CMAKE_BINARY_DIR}/patched-juce/${format}-client")
    file(CONFIGURE OUTPUT "${folder}/${file}" CONTENT "${${variable}}" @ONLY)
    set(main "juce_audio_plugin_client_${format}.cpp")
    configure_file("${quorelClients}/${main}" "${folder}/${main}" COPYONLY)
    set(client "juce_audio_plugin_client_${format}")
    get_target_property(sources ${client} INTERFACE_SOURCES)
    list(FILTER sources EXCLUDE REGEX "/${main}$")
    set_target_properties(${client} PROPERTIES INTERFACE_SOURCES "${sources};${folder}/${main}")
    # From where the copy stands, the original looked around.
    cmake_path(GET file PARENT_PATH subfolder)
    target_include_directories(${client} INTERFACE "${quorelClients}/${subfolder}" "${quorelClients}")
endfunction()

#---------------------------------------------------------------------------------------------------------------
# VST3

quorel_read_source("${quorelClients}/VST3/juce_VST3_Wrapper.cpp" vst3Text)

function(quorel_change_vst3 count old new)
    quorel_change_source(vst3Text cmake/PluginClients.cmake ${count} "${old}" "${new}")
    set(vst3Text "${vst3Text}" PARENT_SCOPE)
endfunction()

# Parameters are numbered as in VST2: hosts that replace one format by the other keep their automation.
quorel_change_vst3(1
    "        auto juceParamID = LegacyAudioParameter::getParamID (param, false);\n\n      #if JUCE_FORCE_USE_LEGACY_PARAM_IDS\n"
    "        return static_cast<Vst::ParamID> (param->getParameterIndex());\n\n        auto juceParamID = LegacyAudioParameter::getParamID (param, false);\n\n      #if JUCE_FORCE_USE_LEGACY_PARAM_IDS\n")

# What can't be automated has no name either: hosts leave it out of their lists.
quorel_change_vst3(1
    "info.flags = param.isAutomatable() ? Vst::ParameterInfo::kCanAutomate : 0;"
    "info.flags = param.isAutomatable() ? Vst::ParameterInfo::kCanAutomate : Vst::ParameterInfo::kIsHidden;")

# The bytes that are stored are the instrument's alone, the same in every format. The bypass goes into the wrapping
# around them.
quorel_change_vst3(1
    "    void getStateInformation (MemoryBlock& destData)\n    {\n        pluginInstance->getStateInformation (destData);\n"
    "    void getStateInformation (MemoryBlock& destData)\n    {\n        pluginInstance->getStateInformation (destData);\n        return;\n")
quorel_change_vst3(1
    "    void loadStateData (const void* data, int size)\n    {\n"
    "    void loadStateData (const void* data, int size)\n    {\n        const auto state = quorel::Vst3StateReader::read (data, (size_t) jmax (0, size));\n\n        if (! state)\n            return;\n\n        if (state->isBypassed && comPluginInstance->getBypassParameter() != nullptr)\n            setBypassed (*state->isBypassed);\n\n        setStateInformation (state->data, (int) state->size);\n        return;\n\n")
quorel_change_vst3(1
    "        // Check if this data was written with a newer JUCE version\n        // and if it has the JUCE private data magic code at the end\n"
    "        if (size > 0)\n            pluginInstance->setStateInformation (data, static_cast<int> (size));\n\n        return;\n\n")
quorel_change_vst3(1
    "#include <juce_audio_processors/format_types/juce_VST3Common.h>\n"
    "#include <juce_audio_processors/format_types/juce_VST3Common.h>\n#include \"${PROJECT_SOURCE_DIR}/cmake/juce/Vst3State.h\"\n")

# Values that come with another sound are the host's to read, and no moves of a hand for it to record.
quorel_change_vst3(1
    "            if (details.programChanged)\n            {\n"
    "            if (details.programChanged)\n            {\n                for (auto vstParamId : audioProcessor->getParamIDs())\n                    if (auto* param = audioProcessor->getParamForVSTParamID (vstParamId))\n                        setParamNormalized (vstParamId, (double) param->getValue());\n\n                flags |= Vst::kParamValuesChanged;\n")

# While no editor is open, JUCE's own message thread works for the instance, and may be telling the host something when that
# ends the controller or takes its ear away.
quorel_change_vst3(1
    "    tresult PLUGIN_API terminate() override\n    {\n        if (auto* pluginInstance = getPluginInstance())\n            pluginInstance->removeListener (this);\n\n        audioProcessor = nullptr;\n"
    "    tresult PLUGIN_API setComponentHandler (Vst::IComponentHandler* newHandler) override\n    {\n        if (componentHandler == nullptr)\n            return EditController::setComponentHandler (newHandler);\n\n        const MessageThreadLock messageLock;\n        return EditController::setComponentHandler (newHandler);\n    }\n\n    tresult PLUGIN_API terminate() override\n    {\n        const MessageThreadLock messageLock;\n\n        if (auto* pluginInstance = getPluginInstance())\n            pluginInstance->removeListener (this);\n\n        audioProcessor = nullptr;\n")
quorel_change_vst3(1
    "class JuceVST3EditController : public Vst::EditController,\n"
    "struct MessageThreadLock\n{\n   #if JUCE_LINUX || JUCE_BSD\n    const ScopedJuceInitialiser_GUI libraryInitialiser;\n    const SharedResourcePointer<MessageThread> messageThread;\n    const MessageManagerLock lock;\n   #else\n    MessageThreadLock() {}\n   #endif\n};\n\nclass JuceVST3EditController : public Vst::EditController,\n")

# A host that brings a sound reads its values here, and needn't be told of them.
quorel_change_vst3(1
    "                setParamNormalized (vstParamId, paramValue);\n            }\n        }\n\n        if (auto* handler = getComponentHandler())\n"
    "                setParamNormalized (vstParamId, paramValue);\n            }\n\n            if (auto* reader = dynamic_cast<quorel::HostReads*> (pluginInstance))\n                reader->hostHasReadAll();\n        }\n\n        if (auto* handler = getComponentHandler())\n")
quorel_change_vst3(1
    "#include \"${PROJECT_SOURCE_DIR}/cmake/juce/Vst3State.h\"\n"
    "#include \"${PROJECT_SOURCE_DIR}/cmake/juce/Vst3State.h\"\n#include \"${PROJECT_SOURCE_DIR}/cmake/juce/Vst3Blocks.h\"\n#include \"${PROJECT_SOURCE_DIR}/src/adapters/HostReads.h\"\n")

# A block that is longer than announced finds no room in JUCE's buffers, and none may be taken here.
quorel_change_vst3(1
    "        if (pluginInstance == nullptr)\n            return kResultFalse;\n\n        if ((processSetup.symbolicSampleSize == Vst::kSample64) != pluginInstance->isUsingDoublePrecision())\n            return kResultFalse;\n"
    "        if (pluginInstance == nullptr)\n            return kResultFalse;\n\n        if ((processSetup.symbolicSampleSize == Vst::kSample64) != pluginInstance->isUsingDoublePrecision())\n            return kResultFalse;\n\n        if (data.numSamples > processSetup.maxSamplesPerBlock)\n        {\n            quorel::silence (data);\n            return kResultFalse;\n        }\n")
quorel_replace_client(VST3 VST3/juce_VST3_Wrapper.cpp vst3Text)

#---------------------------------------------------------------------------------------------------------------
# LV2

quorel_read_source("${quorelClients}/LV2/juce_LV2_Client.cpp" lv2Text)

function(quorel_change_lv2 count old new)
    quorel_change_source(lv2Text cmake/PluginClients.cmake ${count} "${old}" "${new}")
    set(lv2Text "${lv2Text}" PARENT_SCOPE)
endfunction()

# Parameters without a name are not for hosts.
quorel_change_lv2(1
    "                                           const AudioProcessorParameter& param)\n        {\n"
    "                                           const AudioProcessorParameter& param)\n        {\n            if (! param.isAutomatable())\n                return;\n\n")
quorel_change_lv2(1
    "                for (const auto* param : legacyParameters)\n                {\n"
    "                for (const auto* param : legacyParameters)\n                {\n                    if (! param->isAutomatable())\n                        continue;\n\n")

# The one program is the sound as it is: there is nothing to choose.
quorel_change_lv2(1
    "        for (auto i = 0, end = proc.getNumPrograms(); i < end; ++i)\n        {\n            os << \"<\" << getPresetUri (i)"
    "        for (auto i = 0, end = proc.getNumPrograms(); end > 1 && i < end; ++i)\n        {\n            os << \"<\" << getPresetUri (i)")

# There is no page and no address to name.
quorel_change_lv2(1
    "              \"\\t\\tfoaf:homepage <\" JucePlugin_ManufacturerWebsite \"> ;\\n\"\n              \"\\t\\tfoaf:mbox <\" JucePlugin_ManufacturerEmail \"> ;\\n\"\n"
    "")
quorel_change_lv2(1
    "              \"\\tdoap:description \\\"\" JucePlugin_Desc \"\\\" ;\\n\"\n"
    "              \"\\tdoap:description \\\"\" JucePlugin_Desc \"\\\" ;\\n\"\n              \"\\tdoap:license <https://spdx.org/licenses/GPL-3.0-or-later> ;\\n\"\n")

# What the vocabularies ask for.
quorel_change_lv2(1 "              \"lv2:InstrumentPlugin\"\n" "              \"lv2:InstrumentPlugin , doap:Project\"\n")
quorel_change_lv2(1
    "              \"\\t\\tui:noUserResize ,\\n\" // resize and noUserResize are always present in the extension data array\n"
    "")
quorel_change_lv2(1
    "              \"\\t\\topts:interface ,\\n\"\n              \"\\t\\topts:options ;\\n\\n\"\n"
    "              \"\\t\\topts:options ;\\n\\n\"\n")

# A state says how long it is: no more than its letters hold is believed.
quorel_change_lv2(1
    "        MemoryBlock block;\n        block.fromBase64Encoding (text);\n"
    "        const auto stated = text.upToFirstOccurrenceOf (\".\", false, false).getLargeIntValue();\n\n        if (stated < 0 || stated > text.length())\n            return LV2_STATE_ERR_UNKNOWN;\n\n        MemoryBlock block;\n        block.fromBase64Encoding (text);\n")

# While no editor is open, JUCE's own message thread works for the instance, and may be loading an instrument when the host
# deletes it. (It can't be locked while one is made: the first one scans, which needs that thread.)
quorel_change_lv2(1
    "                delete static_cast<LV2PluginInstance*> (instance);\n"
    "                const ScopedJuceInitialiser_GUI libraryInitialiser;\n               #if JUCE_LINUX || JUCE_BSD\n                const SharedResourcePointer<MessageThread> messageThread;\n               #endif\n                const MessageManagerLock messageLock;\n                delete static_cast<LV2PluginInstance*> (instance);\n")

# There is one editor: a second one for the same instance would delete it a second time.
quorel_change_lv2(1
    "    std::unique_ptr<AudioProcessorEditor> createEditor()\n"
    "    bool hasEditor() const { return processor->getActiveEditor() != nullptr; }\n\n    std::unique_ptr<AudioProcessorEditor> createEditor()\n")
quorel_change_lv2(1
    "                // No instance access\n                jassertfalse;\n                return nullptr;\n            }\n"
    "                // No instance access\n                jassertfalse;\n                return nullptr;\n            }\n\n            if (plugin->hasEditor())\n                return nullptr;\n")

# What the audio thread passes on for the host is no news to it. What another thread tells meanwhile is.
quorel_change_lv2(1 "    bool ignoreCallbacks = false;\n" "    static inline thread_local bool ignoreCallbacks = false;\n")

# Hosts tell the beat within the bar, or the beat within the song, or both.
quorel_change_lv2(1
    "        info->setPpqPosition (parser.parseNumericAtom<double> (atomBeat));\n"
    "")
quorel_change_lv2(1
    "        info->setBarCount (parser.parseNumericAtom<int64_t> (atomBar));\n"
    "        quorel::setBeats (*info, parser.parseNumericAtom<double> (atomBeat), parser.parseNumericAtom<int64_t> (atomBar), parser.parseNumericAtom<double> (atomBarBeat));\n")
quorel_change_lv2(1
    "        const LV2_Atom* atomBeat           = nullptr;\n"
    "        const LV2_Atom* atomBeat           = nullptr;\n        const LV2_Atom* atomBarBeat        = nullptr;\n")
quorel_change_lv2(1
    "{ mLV2_TIME__beat,              &atomBeat },\n"
    "{ mLV2_TIME__beat,              &atomBeat },\n                                        { mLV2_TIME__barBeat,           &atomBarBeat },\n")
quorel_change_lv2(1 "    X (LV2_TIME__beat)\n" "    X (LV2_TIME__beat)\n    X (LV2_TIME__barBeat)\n")

# Hosts tell of changes of the transport alone: in between the position goes on.
quorel_change_lv2(1 "    void invalidate() { info = nullopt; }\n"
    "    void advance (int numSamples)\n    {\n        const auto numBefore = std::exchange (changedAt, 0);\n\n        if (info.hasValue() && info->getIsPlaying())\n            quorel::advancePosition (*info, (double) (numSamples - numBefore), speed, sampleRate);\n    }\n")
quorel_change_lv2(1
    "        info->setIsPlaying (parser.parseNumericAtom<float> (atomSpeed).orFallback (0.0f) != 0.0f);\n"
    "        speed = parser.parseNumericAtom<float> (atomSpeed).orFallback (0.0f);\n        changedAt = static_cast<int> (event->time.frames);\n        info->setIsPlaying (speed != 0.0f);\n")
quorel_change_lv2(1
    "    Optional<PositionInfo> info;\n    double sampleRate;\n"
    "    Optional<PositionInfo> info;\n    double sampleRate;\n    float speed = 0.0f;\n    int changedAt = 0;\n")
quorel_change_lv2(1 "        playHead.invalidate();\n" "")
quorel_change_lv2(1
    "        ports.prepareToWrite();\n        auto* forge = ports.forge.get();\n"
    "        playHead.advance ((int) numSteps);\n        ports.prepareToWrite();\n        auto* forge = ports.forge.get();\n")
quorel_change_lv2(1
    "#include <juce_audio_processors/format_types/juce_LV2Common.h>\n"
    "#include <juce_audio_processors/format_types/juce_LV2Common.h>\n#include \"${PROJECT_SOURCE_DIR}/cmake/juce/Lv2Time.h\"\n")
quorel_replace_client(LV2 LV2/juce_LV2_Client.cpp lv2Text)

# JUCE's tool loads the finished plug-in and has it describe itself. It is a user of its own then, without settings,
# and leaves none behind.
if(NOT TARGET juce_lv2_helper AND TARGET juce::juce_lv2_helper)
    get_target_property(lv2Describer juce::juce_lv2_helper IMPORTED_LOCATION_NONE)
    file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/describe-lv2.sh" @ONLY CONTENT
"#!/bin/sh
user=$(mktemp -d)
trap 'rm -rf \"$user\"' EXIT
HOME=\"$user\" XDG_CONFIG_HOME=\"$user/config\" XDG_DATA_HOME=\"$user/data\" \"@lv2Describer@\" \"$@\"
")
    file(CHMOD "${CMAKE_BINARY_DIR}/describe-lv2.sh" FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    add_executable(juce_lv2_helper IMPORTED GLOBAL)
    set_target_properties(juce_lv2_helper PROPERTIES IMPORTED_LOCATION "${CMAKE_BINARY_DIR}/describe-lv2.sh")
endif()
