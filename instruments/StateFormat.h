// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Programs.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorel
{

using Bytes = std::vector<std::uint8_t>;

/** Whose data this is: part of every chunk and file. */
struct FormatOwner
{
    std::string name; ///< the instrument's
    int numPrograms;  ///< in a whole state
    int numParameters;
    const StarterInstrument* info;
};

/*
    State chunks: little-endian, of one size for an instrument.
    "OstS" (whole) or "OstP" (program), version, hash of the instrument's name, [current program, 40 bytes
   bank name,] programs of 24 bytes name and 16 floats, hash of all bytes before. The readers return false for
   anything else and leave their output alone.
*/
Bytes writeState(const FormatOwner& owner, const InstrumentState& state);
bool readState(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, InstrumentState& state);
Bytes writeProgram(const FormatOwner& owner, const Program& program);
bool readProgram(const FormatOwner& owner, const std::uint8_t* data, std::size_t size, Program& program);

/*
    .fxb and .fxp files: the classic big-endian "CcnK" containers. Written with a chunk inside; read with a
   chunk or with plain parameters.
*/
Bytes writeBankFile(const FormatOwner& owner, const InstrumentState& state);
Bytes writeProgramFile(const FormatOwner& owner, const Program& program);
bool readBankFile(const FormatOwner& owner, const Bytes& file, std::vector<Program>& programs);
bool readProgramFile(const FormatOwner& owner, const Bytes& file, Program& program);

} // namespace quorel
