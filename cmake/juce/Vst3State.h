// SPDX-License-Identifier: GPL-3.0-or-later
// What hosts hand a VST3 plug-in to restore: the plug-in's own bytes, or those within what VST2 hosts store around
// them, in a project or in a preset file. Its size fields are untrusted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace quorel
{

/** The bytes of the plug-in itself, and what was stored beside them. */
struct Vst3State
{
    const char* data = nullptr;
    std::size_t size = 0;
    std::optional<bool> isBypassed;
};

/** Finds them in place. Nothing where a size points out of the data. */
class Vst3StateReader
{
public:
    static std::optional<Vst3State> read(const void* data, std::size_t size)
    {
        return within({static_cast<const char*>(data), size, {}});
    }

private:
    static std::optional<Vst3State> within(Vst3State state)
    {
        // A preset file holds a list of its parts; a project's wrapping begins with the state of the bypass; a bank
        // or a program of VST2 holds the bytes behind their size.
        if (begins(state, 0, "VST3"))
            return ofPresetFile(state);

        if (begins(state, 0, "VstW"))
        {
            const std::size_t headerEnd = std::size_t{8} + bigEndian(state, 4);

            if (headerEnd < 8 || headerEnd > state.size)
                return {};

            if (headerEnd >= 16)
                state.isBypassed = bigEndian(state, 12) != 0;

            const auto inner = from(state, headerEnd, state.size - headerEnd);
            // Wrappings within wrappings could recurse without end.
            return begins(inner, 0, "VstW") || begins(inner, 0, "VST3") ? std::nullopt : within(inner);
        }

        if (begins(state, 0, "CcnK"))
        {
            const bool isBank = begins(state, 8, "FBCh");
            const std::size_t begin = isBank ? 160 : 60;

            if (state.size < begin || (!isBank && !begins(state, 8, "FPCh")))
                return {};

            const std::size_t stored = bigEndian(state, begin - 4);

            if (stored > state.size - begin)
                return {};

            return from(state, begin, stored);
        }

        return state;
    }

    static std::optional<Vst3State> ofPresetFile(const Vst3State& file)
    {
        constexpr std::size_t headerSize = 48, entrySize = 20;

        if (file.size < headerSize)
            return {};

        const auto list = littleEndian(file, 40);

        if (list > file.size || file.size - list < 8 || !begins(file, static_cast<std::size_t>(list), "List"))
            return {};

        for (std::size_t entry = static_cast<std::size_t>(list) + 8; file.size - entry >= entrySize;
             entry += entrySize)
        {
            if (!begins(file, entry, "Comp"))
                continue;

            const auto begin = littleEndian(file, entry + 4), count = littleEndian(file, entry + 12);

            if (begin > file.size || count > file.size - begin)
                return {};

            const auto part = from(file, static_cast<std::size_t>(begin), static_cast<std::size_t>(count));
            // So could files within files.
            return begins(part, 0, "VST3") ? std::nullopt : within(part);
        }

        return {};
    }

    static Vst3State from(const Vst3State& state, std::size_t begin, std::size_t size)
    {
        return {state.data + begin, size, state.isBypassed};
    }

    static bool begins(const Vst3State& state, std::size_t at, const char* name)
    {
        return state.size >= 4 && at <= state.size - 4 && std::memcmp(state.data + at, name, 4) == 0;
    }

    /** 0 beyond the end. */
    static std::uint32_t bigEndian(const Vst3State& state, std::size_t at)
    {
        std::uint32_t value = 0;

        for (std::size_t i = at; i < at + 4; ++i)
            value = value << 8 | byte(state, i);

        return value;
    }

    static std::uint64_t littleEndian(const Vst3State& state, std::size_t at)
    {
        std::uint64_t value = 0;

        for (std::size_t i = at + 8; i-- > at;)
            value = value << 8 | byte(state, i);

        return value;
    }

    static std::uint8_t byte(const Vst3State& state, std::size_t at)
    {
        return at < state.size ? static_cast<std::uint8_t>(state.data[at]) : std::uint8_t{0};
    }
};

} // namespace quorel
