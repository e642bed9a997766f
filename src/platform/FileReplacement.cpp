// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReplacement.h"

#include "platform/FileOperations.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"

namespace quorel
{

namespace
{
constexpr int mostTries = 10;

juce::Result failure(const std::error_code& error)
{
    return juce::Result::fail(messageOf(error));
}

/** The file that is to be replaced for `file`: itself, or what its link leads to. */
juce::Result followLink(const juce::File& file, juce::File& target)
{
    target = isLink(file) ? endOfLink(file) : reachable(file);
    return target == juce::File() ? juce::Result::fail("the link leads nowhere") : juce::Result::ok();
}

juce::Result checkReplaceable(const juce::File& target)
{
    std::error_code error;

    switch (kindOf(target, error))
    {
    case PathKind::nothing:
        return juce::Result::ok();

    case PathKind::folder:
        return failure(std::make_error_code(std::errc::is_a_directory));

    case PathKind::other:
        return juce::Result::fail("not a regular file");

    case PathKind::file:
        break;
    }

    return target.hasWriteAccess() ? juce::Result::ok()
                                   : failure(std::make_error_code(std::errc::permission_denied));
}
} // namespace

/** Counts what it is given: the stream below doesn't report a last buffer that was written in part, as
    happens when the disk fills up. */
class FileReplacement::CheckedStream final : public juce::OutputStream
{
public:
    explicit CheckedStream(const juce::File& file)
        : stream(file)
    {
    }

    void flush() override { stream.flush(); }

    bool setPosition(juce::int64 position) override { return note(stream.setPosition(position)); }

    juce::int64 getPosition() override { return stream.getPosition(); }

    bool write(const void* bytes, size_t numBytes) override
    {
        const bool written = note(numBytes == 0 || stream.write(bytes, numBytes));
        length = juce::jmax(length, stream.getPosition());
        return written;
    }

    juce::Result status() const
    {
        // The system's own messages end in a new line on Windows.
        if (!stream.openedOk() || stream.getStatus().failed())
            return juce::Result::fail(stream.getStatus().getErrorMessage().trim());

        return complete ? juce::Result::ok() : failure(std::make_error_code(std::errc::no_space_on_device));
    }

    /** Once all is flushed. */
    juce::Result checkLength(const juce::File& file)
    {
        note(file.getSize() == length);
        return status();
    }

private:
    bool note(bool worked) noexcept
    {
        complete = complete && worked;
        return worked;
    }

    juce::FileOutputStream stream;
    juce::int64 length = 0;
    bool complete = true;
};

FileReplacement::FileReplacement(const juce::File& file)
    : opened(open(file))
{
}

FileReplacement::~FileReplacement()
{
    output.reset();

    if (mark != nullptr)
        temporary.deleteFile();
}

juce::Result FileReplacement::open(const juce::File& file)
{
    if (file == juce::File())
        return juce::Result::fail("there is no such place");

    if (const auto result = findReplaced(file, target); result.failed())
        return result;

    const auto folder = target.getParentDirectory();

    if (const auto result = createFolder(folder); result.failed())
        return juce::Result::fail(result.getErrorMessage().trim());

    removeLeftovers(folder);

    std::error_code error;

    // Another process may take the file for a left-over before it is marked.
    for (int tries = 0; mark == nullptr && tries < mostTries; ++tries)
    {
        // In the same folder, so that the move is one step of the file system.
        temporary = temporaryIn(folder);
        mark = createMarkedFile(temporary, error);
    }

    if (mark == nullptr)
        return failure(error);

    if (target.exists())
        copyMode(target, temporary);

    output = std::make_unique<CheckedStream>(temporary);
    return output->status();
}

juce::Result FileReplacement::status() const
{
    return opened.failed() || output == nullptr ? opened : output->status();
}

juce::OutputStream& FileReplacement::stream() noexcept
{
    jassert(output != nullptr);
    return *output;
}

juce::Result FileReplacement::finish()
{
    if (opened.failed())
        return opened;

    output->flush();
    auto result = output->checkLength(temporary);
    output.reset();

    if (result.failed())
        return result;

    result = moveFile(temporary, target);

    if (result.wasOk())
        mark.reset();

    return result;
}

juce::Result findReplaced(const juce::File& file, juce::File& target)
{
    const auto result = followLink(file, target);
    return result.failed() ? result : checkReplaceable(target);
}

} // namespace quorel
