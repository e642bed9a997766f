// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterAccess.h"
#include "platform/UserInteraction.h"

#include <juce_audio_basics/juce_audio_basics.h>

namespace quorel
{

class MultiControls;
class UserStore;

/** What a layer needs from the processor that it belongs to. */
class LayerOwner : public ParameterAccess
{
public:
    /** Handed to every hosted instrument. */
    virtual juce::AudioPlayHead& layerPlayHead() = 0;
    virtual UserInteraction& userInteraction() = 0;
    virtual UserStore& userStore() = 0;
    virtual MultiControls& multiControls() = 0;
    /** The rate (Hz) and block size that this processor was last prepared with; 0 before. */
    virtual double preparedSampleRate() const noexcept = 0;
    virtual int preparedBlockSize() const noexcept = 0;
    /** A hosted instrument has changed this parameter, and nobody else: as `writeParameterNotifyingHost`. Any
        thread. */
    virtual void takeReportedValue(int index, float value) = 0;
    /** Asks the editor to rebuild its view. */
    virtual void requestEditorRefresh() noexcept = 0;
};

} // namespace quorel
