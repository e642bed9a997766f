// SPDX-License-Identifier: GPL-3.0-or-later
#include "StateFormat.h"

#include <cmath>
#include <cstring>

namespace quorel
{

namespace
{

constexpr std::uint32_t stateVersion = 1;
constexpr std::size_t fileNameField = 28;  // program name in an .fxp header
constexpr std::size_t reservedField = 128; // spare bytes in an .fxb header
constexpr std::size_t mostFilePrograms = 128;

class Writer
{
public:
    explicit Writer(bool big)
        : bigEndian(big)
    {
    }

    void word(std::uint32_t x)
    {
        for (unsigned i = 0; i < 4; ++i)
            bytes.push_back(static_cast<std::uint8_t>(x >> (8 * (bigEndian ? 3 - i : i))));
    }

    void real(float x)
    {
        std::uint32_t bits;
        std::memcpy(&bits, &x, sizeof(bits));
        word(bits);
    }

    void text(const char* source, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(static_cast<std::uint8_t>(source[i]));
    }

    void zeros(std::size_t count) { bytes.insert(bytes.end(), count, 0); }

    void append(const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

    Bytes bytes;

private:
    bool bigEndian;
};

/** Reads past the end give zeros and clear `ok`. */
class Reader
{
public:
    Reader(const std::uint8_t* start, std::size_t length, bool big)
        : data(start)
        , size(length)
        , bigEndian(big)
    {
    }

    std::uint32_t word()
    {
        std::uint32_t x = 0;
        const auto* source = take(4);
        for (unsigned i = 0; source != nullptr && i < 4; ++i)
            x |= static_cast<std::uint32_t>(source[i]) << (8 * (bigEndian ? 3 - i : i));
        return x;
    }

    /** A parameter value: finite and 0..1, or the data are no good. */
    float value()
    {
        const auto bits = word();
        float x;
        std::memcpy(&x, &bits, sizeof(x));
        if (std::isfinite(x) && x >= 0.0f && x <= 1.0f)
            return x;
        ok = false;
        return 0.0f;
    }

    void text(char* target, std::size_t count)
    {
        if (const auto* source = take(count))
            std::memcpy(target, source, count);
    }

    void skip(std::size_t count) { take(count); }

    void expect(std::uint32_t wanted) { ok = word() == wanted && ok; }

    const std::uint8_t* take(std::size_t count)
    {
        if (!ok || count > size - position)
        {
            ok = false;
            return nullptr;
        }
        position += count;
        return data + position - count;
    }

    bool atEnd() const { return position == size; }

    bool ok = true;

private:
    const std::uint8_t* data;
    std::size_t size;
    std::size_t position = 0;
    bool bigEndian;
};

constexpr std::uint32_t fourBytes(const char (&text)[5])
{
    std::uint32_t x = 0;
    for (int i = 0; i < 4; ++i)
        x = (x << 8) | static_cast<std::uint8_t>(text[i]);
    return x;
}

constexpr auto stateMagic = fourBytes("StsO"),
               programMagic = fourBytes("PtsO"); // "OstS" and "OstP" in the bytes' order
constexpr auto container = fourBytes("CcnK");
constexpr auto programOfParameters = fourBytes("FxCk"), programOfChunk = fourBytes("FPCh");
constexpr auto bankOfPrograms = fourBytes("FxBk"), bankOfChunk = fourBytes("FBCh");

std::uint32_t nameHash(const FormatOwner& owner)
{
    return hashBytes(owner.name.data(), owner.name.size());
}

std::uint32_t fileId(const FormatOwner& owner)
{
    return static_cast<std::uint32_t>(uniqueIdOf(owner.name));
}

void appendProgram(Writer& out, const Program& program)
{
    out.text(program.name.data(), program.name.size());
    for (const float x : program.values)
        out.real(x);
}

Program takeProgram(Reader& in)
{
    Program program;
    in.text(program.name.data(), program.name.size());
    for (float& x : program.values)
        x = in.value();
    return program;
}

void appendHash(Writer& out)
{
    out.word(hashBytes(out.bytes.data(), out.bytes.size()));
}

/** Checks the hash at the end and the header, and leaves what lies between to be read. */
Reader openChunk(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, std::uint32_t magic)
{
    if (data == nullptr || size < 16)
    {
        Reader none(data, 0, false);
        none.ok = false;
        return none;
    }
    Reader in(data, size - 4, false);
    Reader end(data + size - 4, 4, false);
    in.ok = end.word() == hashBytes(data, size - 4);
    in.expect(magic);
    in.expect(stateVersion);
    in.expect(nameHash(owner));
    return in;
}

/** Wraps contents whose first field is `kind` in a container. */
Bytes wrap(std::uint32_t kind, const Bytes& contents)
{
    Writer out(true);
    out.word(container);
    out.word(static_cast<std::uint32_t>(contents.size() + 4));
    out.word(kind);
    out.append(contents);
    return out.bytes;
}

/** One program's container, alone in a file or inside a bank. */
bool takeProgramContainer(const FormatOwner& owner, Reader& in, Program& program)
{
    in.expect(container);
    in.word(); // the size is wrong in files of some hosts
    const auto kind = in.word();
    in.word(); // format version
    in.expect(fileId(owner));
    in.word(); // the writer's version
    const auto numParameters = in.word();
    char name[fileNameField + 1]{};
    in.text(name, fileNameField);
    if (!in.ok)
        return false;

    Program result;
    if (kind == programOfChunk)
    {
        const auto size = in.word();
        const auto* data = in.take(size);
        if (data == nullptr || !readProgram(owner, data, size, result))
            return false;
    }
    else if (kind == programOfParameters && numParameters == static_cast<std::uint32_t>(owner.numParameters))
    {
        setText(result.name.data(), result.name.size(), name);
        for (int i = 0; i < owner.numParameters && in.ok; ++i)
        {
            const float x = in.value();
            if (const int live = liveParameterAt(*owner.info, i); live >= 0)
                result.values[static_cast<std::size_t>(live)] = x;
        }
        if (!in.ok)
            return false;
    }
    else
    {
        return false;
    }
    program = result;
    return true;
}

} // namespace

Bytes writeState(const FormatOwner& owner, const InstrumentState& state)
{
    Writer out(false);
    out.word(stateMagic);
    out.word(stateVersion);
    out.word(nameHash(owner));
    out.word(static_cast<std::uint32_t>(state.currentProgram));
    out.text(state.bankName.data(), state.bankName.size());
    for (int i = 0; i < owner.numPrograms; ++i)
    {
        const auto index = static_cast<std::size_t>(i);
        appendProgram(out, index < state.programs.size() ? state.programs[index] : Program{});
    }
    appendHash(out);
    return out.bytes;
}

bool readState(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, InstrumentState& state)
{
    auto in = openChunk(owner, data, size, stateMagic);
    InstrumentState result;
    const auto current = in.word();
    in.text(result.bankName.data(), result.bankName.size());
    for (int i = 0; i < owner.numPrograms && in.ok; ++i)
        result.programs.push_back(takeProgram(in));
    if (!in.ok || !in.atEnd() || current >= static_cast<std::uint32_t>(owner.numPrograms))
        return false;
    result.currentProgram = static_cast<int>(current);
    state = std::move(result);
    return true;
}

Bytes writeProgram(const FormatOwner& owner, const Program& program)
{
    Writer out(false);
    out.word(programMagic);
    out.word(stateVersion);
    out.word(nameHash(owner));
    appendProgram(out, program);
    appendHash(out);
    return out.bytes;
}

bool readProgram(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, Program& program)
{
    auto in = openChunk(owner, data, size, programMagic);
    const auto result = takeProgram(in);
    if (!in.ok || !in.atEnd())
        return false;
    program = result;
    return true;
}

Bytes writeBankFile(const FormatOwner& owner, const InstrumentState& state)
{
    const auto chunk = writeState(owner, state);
    Writer out(true);
    out.word(1);
    out.word(fileId(owner));
    out.word(stateVersion);
    out.word(static_cast<std::uint32_t>(owner.numPrograms));
    out.zeros(reservedField);
    out.word(static_cast<std::uint32_t>(chunk.size()));
    out.append(chunk);
    return wrap(bankOfChunk, out.bytes);
}

Bytes writeProgramFile(const FormatOwner& owner, const Program& program)
{
    const auto chunk = writeProgram(owner, program);
    Writer out(true);
    out.word(1);
    out.word(fileId(owner));
    out.word(stateVersion);
    out.word(static_cast<std::uint32_t>(owner.numParameters));
    out.text(program.name.data(), program.name.size());
    out.zeros(fileNameField - program.name.size());
    out.word(static_cast<std::uint32_t>(chunk.size()));
    out.append(chunk);
    return wrap(programOfChunk, out.bytes);
}

bool readBankFile(const FormatOwner& owner, const Bytes& file, std::vector<Program>& programs)
{
    Reader in(file.data(), file.size(), true);
    in.expect(container);
    in.word();
    const auto kind = in.word();
    in.word();
    in.expect(fileId(owner));
    in.word();
    const auto count = in.word();
    in.skip(reservedField);
    if (!in.ok)
        return false;

    if (kind == bankOfChunk)
    {
        const auto size = in.word();
        const auto* data = in.take(size);
        InstrumentState state;
        if (data == nullptr || !readState(owner, data, size, state))
            return false;
        programs = std::move(state.programs);
        return true;
    }
    if (kind != bankOfPrograms || count == 0 || count > mostFilePrograms)
        return false;
    std::vector<Program> result(count);
    for (auto& program : result)
    {
        if (!takeProgramContainer(owner, in, program))
            return false;
    }
    programs = std::move(result);
    return true;
}

bool readProgramFile(const FormatOwner& owner, const Bytes& file, Program& program)
{
    Reader in(file.data(), file.size(), true);
    return takeProgramContainer(owner, in, program);
}

} // namespace quorel
