// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RawVst2Host.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quorel::test
{

using Bytes = std::vector<std::uint8_t>;

constexpr int numHostParameters = 1507;
constexpr int numLayers = 4;

/** Parameter `n` (200 to 399) of layer 0 to 3. */
constexpr int layerParameter(int layer, int n)
{
    return 200 * layer + n;
}

/** The state chunk taken apart and put together by its published layout, without the plug-in's own code:
    little-endian; magic at 0, number of parameters at 12, of layers at 16, version at 20, two names of 32
    bytes at 24 and 56, the layers' sizes from 88, the parameters from 104, the layers' states behind. */
struct SavedSound
{
    /** Throws std::runtime_error if the bytes aren't a whole chunk. */
    explicit SavedSound(const Bytes& chunk);

    Bytes bytes() const;

    /** Puts an instrument into a layer, with its state as `hostedState` gives it. */
    void setLayer(int layer, const std::string& instrument, const Bytes& state, int program, int numPrograms);

    std::array<std::uint8_t, 88> header{};
    std::vector<float> parameters;
    std::array<Bytes, numLayers> layers;
};

/** A way to set an instrument up before its state is taken. */
struct InstrumentChoice
{
    std::string name;
    int program = 0;
};

/** What the instrument saves with that program chosen, in the bank file (.fxb) form in which hosted states
    are kept. `instrument` is then set up that way. */
Bytes hostedState(RawVst2Host& instrument, const InstrumentChoice& choice);

/** A chunk of four instruments over the plug-in's defaults. */
SavedSound soundOf(RawVst2Host& quorel, const std::array<InstrumentChoice, numLayers>& choices);

} // namespace quorel::test
