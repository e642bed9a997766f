// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <ostream>

namespace quorel
{

/** A place for JUCE's writer of WAV files that can't go back, such as a pipe. JUCE writes a header of an empty file
    first and the right one at the end: here the first one goes out with the lengths that the sound will have. */
class OneWayWav final : public juce::OutputStream
{
public:
    /** `soundBytes` will follow the header. A sound of more than 4 GB is given the greatest length there is, which
        readers of streams take for "to the end". */
    OneWayWav(std::shared_ptr<std::ostream> destination, juce::int64 soundBytes);

    /** Sends the header unless it has been sent. The writer has been made. */
    void sendHeader();

    /** True if all went out, as much as was said. */
    bool isWhole() const;

    bool write(const void* bytes, size_t numBytes) override;
    void flush() override;
    juce::int64 getPosition() override;
    bool setPosition(juce::int64 newPosition) override;

private:
    const std::shared_ptr<std::ostream> stream;
    const juce::int64 wanted;
    juce::MemoryBlock header;
    bool isHeaderSent = false;
    juce::int64 position = 0;
    /** Position behind all that went out, header included. */
    juce::int64 end = 0;
};

} // namespace quorel
