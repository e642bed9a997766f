// SPDX-License-Identifier: GPL-3.0-or-later
#include "OneWayWav.h"

#include <algorithm>
#include <utility>

namespace quorel
{

OneWayWav::OneWayWav(std::shared_ptr<std::ostream> destination, juce::int64 soundBytes)
    : stream(std::move(destination))
    , wanted(soundBytes)
{
}

void OneWayWav::sendHeader()
{
    if (isHeaderSent)
        return;

    constexpr juce::int64 longest = 0xffffffff;
    constexpr size_t numberSize = 4;
    constexpr size_t riffSizeAt = 4; // and it counts what follows it
    const auto numBytes = static_cast<juce::int64>(header.getSize());
    const auto padded = wanted + (wanted & 1);
    const bool isShort = numBytes + padded <= longest;
    const auto put = [this](size_t at, juce::int64 number)
    {
        const auto bytes = juce::ByteOrder::swapIfBigEndian(static_cast<juce::uint32>(number));
        header.copyFrom(&bytes, static_cast<int>(at), numberSize);
    };
    put(riffSizeAt, isShort ? numBytes + padded - 8 : longest);
    // The chunk with the sound is the last one.
    put(header.getSize() - numberSize, isShort ? wanted : longest);
    stream->write(static_cast<const char*>(header.getData()), static_cast<std::streamsize>(header.getSize()));
    isHeaderSent = true;
    end = position;
}

bool OneWayWav::isWhole() const
{
    const auto sound = end - static_cast<juce::int64>(header.getSize());
    return stream->good() && (sound == wanted || sound == wanted + (wanted & 1));
}

bool OneWayWav::write(const void* bytes, size_t numBytes)
{
    const auto size = static_cast<juce::int64>(numBytes);

    if (!isHeaderSent)
        header.append(bytes, numBytes);
    else if (position == end)
        stream->write(static_cast<const char*>(bytes), static_cast<std::streamsize>(numBytes));

    position += size;
    end = std::max(end, position);
    return stream->good();
}

void OneWayWav::flush()
{
    stream->flush();
}

juce::int64 OneWayWav::getPosition()
{
    return position;
}

bool OneWayWav::setPosition(juce::int64 newPosition)
{
    position = newPosition;
    return true;
}

} // namespace quorel
