// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavedSound.h"

#include "ScratchUser.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace quorel::test
{

static constexpr std::size_t sizesOffset = 88;
static constexpr std::size_t parametersOffset = 104;

static std::int32_t readInt(const Bytes& bytes, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | bytes.at(offset + i);
    return static_cast<std::int32_t>(value);
}

static void appendInt(Bytes& bytes, std::uint32_t value, bool isBigEndian = false)
{
    for (unsigned i = 0; i < 4; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * (isBigEndian ? 3 - i : i)));
}

SavedSound::SavedSound(const Bytes& chunk)
{
    if (chunk.size() < parametersOffset || std::memcmp(chunk.data(), "dmtk", 4) != 0 ||
        readInt(chunk, 12) != numHostParameters || readInt(chunk, 16) != numLayers || readInt(chunk, 20) != 1)
        throw std::runtime_error("not a state chunk");

    std::copy_n(chunk.begin(), header.size(), header.begin());
    std::size_t offset = parametersOffset;
    for (int i = 0; i < numHostParameters; ++i, offset += 4)
    {
        const auto word = readInt(chunk, offset);
        float value = 0.0f;
        std::memcpy(&value, &word, sizeof(value));
        parameters.push_back(value);
    }
    for (std::size_t layer = 0; layer < layers.size(); ++layer)
    {
        const auto size = static_cast<std::size_t>(readInt(chunk, sizesOffset + 4 * layer));
        if (size > chunk.size() - offset)
            throw std::runtime_error("a layer's state is cut off");
        const auto begin = chunk.begin() + static_cast<std::ptrdiff_t>(offset);
        layers[layer].assign(begin, begin + static_cast<std::ptrdiff_t>(size));
        offset += size;
    }
    if (offset != chunk.size())
        throw std::runtime_error("bytes behind the last layer's state");
}

Bytes SavedSound::bytes() const
{
    Bytes chunk(header.begin(), header.end());
    for (const auto& layer : layers)
        appendInt(chunk, static_cast<std::uint32_t>(layer.size()));
    for (const float value : parameters)
    {
        std::uint32_t word = 0;
        std::memcpy(&word, &value, sizeof(word));
        appendInt(chunk, word);
    }
    for (const auto& layer : layers)
        chunk.insert(chunk.end(), layer.begin(), layer.end());
    return chunk;
}

void SavedSound::setLayer(int layer, const std::string& instrument, const Bytes& state, int program,
                          int numPrograms)
{
    // One character a parameter, as code / 256.
    const auto name = parameters.begin() + layerParameter(layer, 200);
    std::fill(name, name + 32, 0.0f);
    std::transform(instrument.begin(), instrument.end(), name,
                   [](char c) { return static_cast<float>(c) / 256.0f; });
    parameters[static_cast<std::size_t>(layerParameter(layer, 242))] =
        static_cast<float>(program) / static_cast<float>(numPrograms);
    layers[static_cast<std::size_t>(layer)] = state;
}

Bytes hostedState(RawVst2Host& instrument, const InstrumentChoice& choice)
{
    instrument.dispatch(effSetProgram, 0, choice.program);
    const auto chunk = instrument.chunk();
    const auto& effect = instrument.effect();

    Bytes file{'C', 'c', 'n', 'K', 0, 0, 0, 0, 'F', 'B', 'C', 'h'};
    for (const auto word : {1, static_cast<int>(effect.uniqueID), effect.version, effect.numPrograms})
        appendInt(file, static_cast<std::uint32_t>(word), true);
    file.resize(file.size() + 128);
    appendInt(file, static_cast<std::uint32_t>(chunk.size()), true);
    file.insert(file.end(), chunk.begin(), chunk.end());
    return file;
}

SavedSound soundOf(RawVst2Host& quorel, const std::array<InstrumentChoice, numLayers>& choices)
{
    SavedSound sound(quorel.chunk());
    for (int layer = 0; layer < numLayers; ++layer)
    {
        const auto& choice = choices[static_cast<std::size_t>(layer)];
        RawVst2Host instrument(instrumentFile(choice.name));
        sound.setLayer(layer, choice.name, hostedState(instrument, choice), choice.program,
                       instrument.effect().numPrograms);
    }
    return sound;
}

} // namespace quorel::test
