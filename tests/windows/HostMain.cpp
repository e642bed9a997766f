// SPDX-License-Identifier: GPL-3.0-or-later
// A VST2 host for Windows that needs nothing but the system: it loads a plug-in by its path, asks it who it is, gives it a
// sound, plays it, shows its editor, saves, and restores in a second instance.
#include "HostPicture.h"
#include "support/HostSeam.h"
#include "support/HostWindow.h"

#include <CLI/CLI.hpp>

#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace quorel::test
{

namespace
{
using Bytes = std::vector<std::uint8_t>;

struct Order
{
    std::string plugin;
    std::string chunk;
    std::vector<std::string> notes;
    double seconds = 2.0;
    double rate = 44100.0;
    int block = 512;
    std::string wav;
    double loudness = -200.0;
    double editorSeconds = 0.0;
    std::string picture;
    std::string save;
    bool again = false;
};

std::string utf8(const std::wstring& text)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, result.data(), length, nullptr, nullptr);
    result.pop_back();
    return result;
}

/** The command line in UTF-8, from the end, as CLI11 takes it. */
std::vector<std::string> arguments()
{
    int count = 0;
    auto** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = count; --i > 0;)
        result.push_back(utf8(words[i]));
    LocalFree(words);
    return result;
}

Bytes readFile(const std::string& path)
{
    std::ifstream file(fs::u8path(path), std::ios::binary);
    if (!file)
        throw std::runtime_error(path + " can't be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, const Bytes& bytes)
{
    std::ofstream file(fs::u8path(path), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error(path + " can't be written");
}

/** Notes as "KEY[:START[:LENGTH]]", milliseconds. */
std::vector<MidiEvent> eventsOf(const Order& order)
{
    constexpr std::uint8_t noteOn = 0x90, noteOff = 0x80, velocity = 100;
    std::vector<MidiEvent> events;
    for (const auto& text : order.notes)
    {
        int key = 60, start = 0, length = 500;
        if (std::sscanf(text.c_str(), "%d:%d:%d", &key, &start, &length) < 1 || key < 0 || key > 127)
            throw CLI::ValidationError("--note", text + " is no KEY:START:LENGTH");
        const auto at = [&](int millis) { return static_cast<int>(millis * order.rate / 1000.0); };
        events.push_back({at(start), {noteOn, static_cast<std::uint8_t>(key), velocity}});
        events.push_back({at(start + length), {noteOff, static_cast<std::uint8_t>(key), 0}});
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const auto& a, const auto& b) { return a.sample < b.sample; });
    return events;
}

template <typename Word>
void append(Bytes& bytes, Word word)
{
    const auto* first = reinterpret_cast<const std::uint8_t*>(&word);
    bytes.insert(bytes.end(), first, first + sizeof(word));
}

/** 32-bit floats, as rendered. */
Bytes wavOf(const StereoBuffer& audio, double rate)
{
    constexpr std::uint16_t floats = 3, channels = 2, frameBytes = 8, bits = 32;
    const auto dataBytes = static_cast<std::uint32_t>(audio.left.size() * frameBytes);
    const auto text = [](Bytes& bytes, const char* name) { bytes.insert(bytes.end(), name, name + 4); };
    Bytes bytes;
    text(bytes, "RIFF");
    append(bytes, dataBytes + 36);
    text(bytes, "WAVE");
    text(bytes, "fmt ");
    append(bytes, std::uint32_t{16});
    append(bytes, floats);
    append(bytes, channels);
    append(bytes, static_cast<std::uint32_t>(rate));
    append(bytes, static_cast<std::uint32_t>(rate) * frameBytes);
    append(bytes, frameBytes);
    append(bytes, bits);
    text(bytes, "data");
    append(bytes, dataBytes);
    for (std::size_t i = 0; i < audio.left.size(); ++i)
    {
        append(bytes, audio.left[i]);
        append(bytes, audio.right[i]);
    }
    return bytes;
}

double decibels(double level)
{
    return level > 0.0 ? 20.0 * std::log10(level) : -200.0;
}

void introduce(RawVst2Host& host)
{
    const auto& effect = host.effect();
    std::printf("name: %s\nvendor: %s\nparameters: %d\nprograms: %d\ninputs: %d\noutputs: %d\nsynth: %s\n",
                host.text(effGetEffectName).c_str(), host.text(effGetVendorString).c_str(), effect.numParams,
                effect.numPrograms, effect.numInputs, effect.numOutputs,
                (effect.flags & effFlagsIsSynth) != 0 ? "yes" : "no");
}

void giveSound(RawVst2Host& host, const Bytes& chunk, const Order& order)
{
    if (!chunk.empty())
        host.setChunk(chunk);

    // Whatever the plug-in leaves to its message loop. The first block after a restore is mute.
    constexpr int settlesMillis = 300;
    letPluginsRun(settlesMillis);
    host.render(order.block);
    std::printf("program: %s\n", host.programName(0).c_str());
}

StereoBuffer play(RawVst2Host& host, const Order& order)
{
    const auto audio = host.render(static_cast<int>(order.seconds * order.rate), eventsOf(order));
    double peak = 0.0, squares = 0.0;
    for (const auto* channel : {&audio.left, &audio.right})
        for (const float x : *channel)
        {
            if (!std::isfinite(x))
                throw std::runtime_error("a sample is no number");
            peak = std::max(peak, static_cast<double>(std::abs(x)));
            squares += static_cast<double>(x) * x;
        }
    const auto level = decibels(peak);
    std::printf("peak: %.2f dBFS\nrms: %.2f dBFS\n", level,
                decibels(std::sqrt(squares / (2.0 * static_cast<double>(audio.left.size())))));
    if (level < order.loudness)
        throw std::runtime_error("that is too quiet");
    return audio;
}

void showEditor(RawVst2Host& host, const Order& order)
{
    HostWindow window(host);
    if (!window.isOpen())
        throw std::runtime_error("the editor doesn't open");

    constexpr double millis = 1000.0;
    window.idle(static_cast<int>(order.editorSeconds * millis));
    const HostPicture picture(window.editor());
    std::printf("editor: %dx%d, %d colours\n", picture.width(), picture.height(), picture.numColours());
    if (!order.picture.empty())
        writeFile(order.picture, picture.bmp());
}

int work(const Order& order)
{
    std::optional<RawVst2Host> host(std::in_place, order.plugin, order.rate, order.block);
    introduce(*host);
    const auto given = order.chunk.empty() ? Bytes() : readFile(order.chunk);
    giveSound(*host, given, order);
    if (order.editorSeconds > 0.0)
        showEditor(*host, order);

    const auto saved = host->chunk();
    std::printf("chunk: %u bytes\n", static_cast<unsigned>(saved.size()));
    if (!order.save.empty())
        writeFile(order.save, saved);

    const auto audio = play(*host, order);
    if (!order.wav.empty())
        writeFile(order.wav, wavOf(audio, order.rate));

    if (order.again)
    {
        RawVst2Host second(order.plugin, order.rate, order.block);
        giveSound(second, saved, order);
        if (second.chunk() != saved)
            throw std::runtime_error("the second instance saves something else");
        std::puts("again: the same state");
        play(second, order);
    }

    host.reset();
    std::puts("closed");
    return 0;
}

void addOptions(CLI::App& app, Order& order)
{
    app.add_option("PLUGIN", order.plugin, "The plug-in's file")->required();
    app.add_option("--chunk", order.chunk, "A state to give it, such as a preset (.qrl)");
    app.add_option("--note", order.notes, "KEY:START:LENGTH in milliseconds, any number of times")
        ->type_name("NOTE")
        ->allow_extra_args(false);
    app.add_option("--seconds", order.seconds, "How long it plays")->capture_default_str();
    app.add_option("--rate", order.rate, "Sample rate")->capture_default_str();
    app.add_option("--block", order.block, "Samples in a block")->capture_default_str();
    app.add_option("--wav", order.wav, "File for what it plays, 32-bit floats");
    app.add_option("--at-least", order.loudness, "Peak in dBFS below which this fails");
    app.add_option("--editor", order.editorSeconds, "Shows the editor for so many seconds, before it plays");
    app.add_option("--picture", order.picture, "File for a picture of the editor (.bmp)");
    app.add_option("--save", order.save, "File for the state that it saves");
    app.add_flag("--again", order.again, "Restores that state in a second instance and plays it there");
}

int run()
{
    CLI::App app("Opens a VST2 plug-in, asks, plays, saves and closes it, a line for each. Exit code 0 if "
                 "all went well, "
                 "1 with a line of the reason on standard error, 2 for wrong use.",
                 "vst2-host");
    // A path may begin with a slash.
    app.allow_windows_style_options(false);
    Order order;
    addOptions(app, order);
    try
    {
        app.parse(arguments());
        return work(order);
    }
    catch (const CLI::Success& answer)
    {
        return app.exit(answer);
    }
    catch (const CLI::ParseError& error)
    {
        std::cerr << "vst2-host: " << error.what() << std::endl;
        return 2;
    }
    catch (const std::exception& error)
    {
        std::cerr << "vst2-host: " << error.what() << std::endl;
        return 1;
    }
}
} // namespace
} // namespace quorel::test

int main()
{
    return quorel::test::run();
}
