// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstrumentTestTools.h"

#include "support/HostSeam.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace quorel::test
{

std::string binaryOf(const std::string& name)
{
    return std::string(OSTRAND_FOLDER) + "/" + name + "/" + name + OSTRAND_SUFFIX;
}

std::string testName(const testing::TestParamInfo<StarterInstrument>& info)
{
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::string bankNameOf(RawVst2Host& host, const StarterInstrument& info)
{
    std::string name;
    for (int i = 0; i < 38; ++i)
    {
        const int c =
            static_cast<int>(static_cast<double>(host.parameter(info.firstBankNameParameter + i)) * 255.9);
        if (c < 32 || c > 127)
            break;
        name += static_cast<char>(c);
    }
    return name;
}

static std::uint8_t byte(int x)
{
    return static_cast<std::uint8_t>(x);
}

MidiEvent noteOn(int sample, int note, int velocity)
{
    return {sample, {0x90, byte(note), byte(velocity)}};
}

MidiEvent noteOff(int sample, int note)
{
    return {sample, {0x80, byte(note), 0}};
}

MidiEvent controller(int sample, int number, int value)
{
    return {sample, {0xb0, byte(number), byte(value)}};
}

MidiEvent programChange(int sample, int program)
{
    return {sample, {0xc0, byte(program), 0}};
}

float peakOf(const StereoBuffer& audio, int from, int to)
{
    const auto end = to < 0 ? audio.left.size() : static_cast<std::size_t>(to);
    float peak = 0.0f;
    for (auto i = static_cast<std::size_t>(from); i < end; ++i)
        peak = std::max({peak, std::abs(audio.left[i]), std::abs(audio.right[i])});
    return peak;
}

TemporaryBanks::TemporaryBanks(bool withBanks)
{
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    root = fs::temp_directory_path() / ("ostrand 'a' & b " + std::to_string(stamp));
    fs::create_directories(root / "config" / "Ostrand");
    adoptUser(root);
    if (!withBanks)
        return;
    const auto tool = fs::path(OSTRAND_BANKS_TOOL).make_preferred();
    const auto command = "\"" + tool.string() + "\" \"" + (root / "made").string() + "\"";
    if (std::system(inShell(command).c_str()) != 0)
        throw std::runtime_error("cannot run " + command);

    // A name that no code page of the West has.
    banks = root / fs::u8path("\xd0\x91\xd0\xb0\xd0\xbd\xd0\xba\xd0\xb8 1");
    fs::rename(root / "made", banks);
    std::string escaped;
    for (const char c : banks.u8string())
        escaped += c == '&' ? "&amp;" : (c == '\'' ? "&#39;" : std::string(1, c));
    std::ofstream file(root / "config" / "Ostrand" / "Registry.xml");
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n<PROPERTIES>\n";
    for (const auto& info : starterInstruments())
        file << "  <VALUE name=\"" << info.registryKey << '\\' << info.bankValue << "\" val=\"" << escaped
             << '/' << info.name << "\"/>\n";
    file << "</PROPERTIES>\n";
}

TemporaryBanks::~TemporaryBanks()
{
    std::error_code ignored; // a leftover in the temporary folder harms nobody
    fs::remove_all(root, ignored);
}

} // namespace quorel::test
