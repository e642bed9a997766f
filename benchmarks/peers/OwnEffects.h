// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Candidate.h"

#include <memory>

namespace quorel::peers
{
/** A slot of one type, all parameters at 0.5, or the first at `firstParameter` if that isn't below 0; its
    parameters are taken over in each block. */
std::unique_ptr<Candidate> makeOwnEffect(int type, float firstParameter = -1.0f);

/** The equaliser of a layer with three bands, or with both ladders. */
std::unique_ptr<Candidate> makeOwnEq(bool bands, bool filters);
} // namespace quorel::peers
