// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Programs.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorel
{

using Bytes = std::vector<std::uint8_t>;

/** The instrument that data belong to, which every chunk and file names. */
struct FormatOwner
{
    std::string name; ///< the instrument's
    int numPrograms;  ///< in a whole state
    int numParameters;
    const StarterInstrument* info;
};

// State chunks are little-endian, and all those of one instrument have the same size: "OstS" (whole) or
// "OstP" (program), version, hash of the instrument's name, [current program, 40 bytes of bank name,]
// programs of 24 bytes of name and 16 floats, hash of all bytes before. For anything else the readers return
// false and leave their output alone.
Bytes writeState(const FormatOwner& owner, const InstrumentState& state);
bool readState(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, InstrumentState& state);
Bytes writeProgram(const FormatOwner& owner, const Program& program);
bool readProgram(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, Program& program);

// .fxb and .fxp files are the big-endian "CcnK" containers of VST2. They are written with a chunk inside, and
// read with a chunk or with plain parameters.
Bytes writeBankFile(const FormatOwner& owner, const InstrumentState& state);
Bytes writeProgramFile(const FormatOwner& owner, const Program& program);
bool readBankFile(const FormatOwner& owner, const Bytes& file, std::vector<Program>& programs);
bool readProgramFile(const FormatOwner& owner, const Bytes& file, Program& program);

} // namespace quorel
