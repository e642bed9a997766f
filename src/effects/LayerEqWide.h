// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/LayerEq.h"

namespace quorel
{
/** True where the processor has registers of 256 bits and this build makes use of them. */
bool wideLanesWork();

/** Runs up to `maxEqUnitsTogether` enabled units over at most `fxChunk` samples from `start` with the instructions that
    every processor of this kind has. */
void processBaselineLanes(const EqBlock* blocks, int numBlocks, int start, int num);

/** The same to the bit, two units to a register. Only where `wideLanesWork`. */
void processWideLanes(const EqBlock* blocks, int numBlocks, int start, int num);
} // namespace quorel
