// SPDX-License-Identifier: GPL-3.0-or-later
#include "RawVst2Host.h"

#include "support/HostSeam.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace quorel::test
{

using EntryPoint = AEffect* (*)(audioMasterCallback);

RawVst2Host::RawVst2Host(const std::string& path, double sampleRate, int blockSize)
    : library(openLibrary(fs::u8path(path)))
{
    const auto entry =
        library != nullptr ? reinterpret_cast<EntryPoint>(findInLibrary(library, "VSTPluginMain")) : nullptr;
    plugin = entry != nullptr ? entry(answer) : nullptr;
    if (plugin == nullptr || plugin->magic != kEffectMagic)
        throw std::runtime_error("no VST2 plug-in in " + path);
    plugin->user = this;
    dispatch(effOpen);
    setFormat(sampleRate, blockSize);
}

RawVst2Host::~RawVst2Host()
{
    dispatch(effMainsChanged, 0, 0);
    dispatch(effClose);
    closeLibrary(library);
}

t_fstPtrInt RawVst2Host::answer(AEffect* effect, int opcode, int index, t_fstPtrInt, void* data, float option)
{
    auto* host = effect != nullptr ? static_cast<RawVst2Host*>(effect->user) : nullptr;
    switch (opcode)
    {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetSampleRate:
        return host != nullptr ? static_cast<t_fstPtrInt>(host->rate) : 44100;
    case audioMasterGetBlockSize:
        return host != nullptr ? host->block : 512;
    case audioMasterGetVendorString:
    case audioMasterGetProductString:
        std::strcpy(static_cast<char*>(data), "RawVst2Host");
        return 1;
    case audioMasterGetVendorVersion:
        return 1;
    case audioMasterUpdateDisplay:
        if (host != nullptr)
            ++host->displayUpdates;
        return 1;
    case audioMasterAutomate:
        if (host != nullptr)
        {
            const std::lock_guard<std::mutex> lock(host->changesLock);
            host->changes.push_back({index, option});
        }
        return 1;
    default:
        return 0;
    }
}

std::vector<RawVst2Host::Change> RawVst2Host::takeChanges()
{
    const std::lock_guard<std::mutex> lock(changesLock);
    return std::exchange(changes, {});
}

t_fstPtrInt RawVst2Host::dispatch(int opcode, int index, t_fstPtrInt value, void* data, float option)
{
    return plugin->dispatcher(plugin, opcode, index, value, data, option);
}

void RawVst2Host::setFormat(double sampleRate, int blockSize)
{
    rate = sampleRate;
    block = blockSize;
    dispatch(effMainsChanged, 0, 0);
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(rate));
    dispatch(effSetBlockSize, 0, block);
    dispatch(effMainsChanged, 0, 1);
}

StereoBuffer RawVst2Host::render(int n, const std::vector<MidiEvent>& events)
{
    // Filled with what no plug-in writes, so that a sample left out shows.
    const auto size = static_cast<std::size_t>(n);
    StereoBuffer out{std::vector<float>(size, 1.0e9f), std::vector<float>(size, 1.0e9f)};
    for (int start = 0; start < n; start += block)
    {
        const int length = std::min(block, n - start);
        std::vector<MidiEvent> inBlock;
        for (auto event : events)
        {
            event.sample -= start;
            if (event.sample >= 0 && event.sample < length)
                inBlock.push_back(event);
        }
        renderBlock(out.left.data() + start, out.right.data() + start, length, inBlock);
    }
    return out;
}

void RawVst2Host::renderBlock(float* left, float* right, int n, const std::vector<MidiEvent>& events)
{
    if (!events.empty())
    {
        std::vector<VstMidiEvent> messages(events.size());
        // A list of pointers behind a header, as the format has it.
        const auto storage = std::make_unique<void*[]>(sizeof(VstEvents) / sizeof(void*) + events.size() + 1);
        auto* list = reinterpret_cast<VstEvents*>(storage.get());
        list->numEvents = static_cast<int>(events.size());
        for (std::size_t i = 0; i < events.size(); ++i)
        {
            messages[i].type = kVstMidiType;
            messages[i].byteSize = sizeof(VstMidiEvent);
            messages[i].deltaFrames = events[i].sample;
            std::copy(events[i].bytes.begin(), events[i].bytes.end(), messages[i].midiData);
            list->events[i] = reinterpret_cast<VstEvent*>(&messages[i]);
        }
        dispatch(effProcessEvents, 0, 0, list);
    }
    const auto size = static_cast<std::size_t>(n);
    const auto inputs = static_cast<std::size_t>(std::max(plugin->numInputs, 2));
    const auto outputs = static_cast<std::size_t>(std::max(plugin->numOutputs, 2));
    std::vector<float> scratch(size * (inputs + outputs), 0.0f);
    std::vector<float*> in(inputs), out(outputs);
    for (std::size_t i = 0; i < inputs; ++i)
        in[i] = scratch.data() + i * size;
    for (std::size_t i = 0; i < outputs; ++i)
        out[i] = scratch.data() + (inputs + i) * size;
    out[0] = left;
    out[1] = right;
    plugin->processReplacing(plugin, in.data(), out.data(), n);
}

std::string RawVst2Host::text(int opcode, int index)
{
    std::array<char, 256> buffer{};
    dispatch(opcode, index, 0, buffer.data());
    buffer.back() = '\0';
    return buffer.data();
}

std::vector<std::uint8_t> RawVst2Host::chunk(bool programOnly)
{
    void* data = nullptr;
    const auto size = dispatch(effGetChunk, programOnly ? 1 : 0, 0, &data);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return size > 0 && bytes != nullptr ? std::vector<std::uint8_t>(bytes, bytes + size)
                                        : std::vector<std::uint8_t>();
}

bool RawVst2Host::setChunk(std::vector<std::uint8_t> bytes, bool programOnly)
{
    std::uint8_t none = 0;
    auto* data = bytes.empty() ? &none : bytes.data();
    return dispatch(effSetChunk, programOnly ? 1 : 0, static_cast<t_fstPtrInt>(bytes.size()), data) != 0;
}

} // namespace quorel::test
