// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace quorel::test
{

struct MidiEvent
{
    int sample; ///< within the block
    std::array<std::uint8_t, 3> bytes;
};

struct StereoBuffer
{
    std::vector<float> left, right;
};

/** A VST2 plug-in driven through its binary interface, as by a host, with no library in between. The first
    two outputs are heard; further ones and all inputs get scratch buffers. */
class RawVst2Host
{
public:
    /** Loads and opens a plug-in; throws std::runtime_error if it can't be had. */
    explicit RawVst2Host(const std::string& path, double sampleRate = 44100.0, int blockSize = 512);
    ~RawVst2Host();

    RawVst2Host(const RawVst2Host&) = delete;
    RawVst2Host& operator=(const RawVst2Host&) = delete;

    AEffect& effect() { return *plugin; }

    t_fstPtrInt dispatch(int opcode, int index = 0, t_fstPtrInt value = 0, void* data = nullptr,
                         float option = 0);

    void setFormat(double sampleRate, int blockSize);

    /** Renders n samples in blocks of the set size. Events count from the start of the whole stretch. */
    StereoBuffer render(int n, const std::vector<MidiEvent>& events = {});

    float parameter(int index) { return plugin->getParameter(plugin, index); }

    void setParameter(int index, float value) { plugin->setParameter(plugin, index, value); }

    /** What a text opcode writes, at most 255 bytes. */
    std::string text(int opcode, int index = 0);

    std::string programName(int index) { return text(effGetProgramNameIndexed, index); }

    std::vector<std::uint8_t> chunk(bool programOnly = false);
    bool setChunk(std::vector<std::uint8_t> bytes, bool programOnly = false);

    /** How often the plug-in asked its host to refresh the display, from whichever thread. */
    std::atomic<int> displayUpdates{0};

    struct Change
    {
        int index;
        float value;
    };

    /** The changes of parameters that the plug-in has told since the last call, from whichever thread. */
    std::vector<Change> takeChanges();

private:
    static t_fstPtrInt answer(AEffect* effect, int opcode, int index, t_fstPtrInt value, void* data,
                              float option);
    void renderBlock(float* left, float* right, int n, const std::vector<MidiEvent>& events);

    std::mutex changesLock;
    std::vector<Change> changes;
    void* library = nullptr;
    AEffect* plugin = nullptr;
    double rate = 44100.0;
    int block = 512;
};

} // namespace quorel::test
