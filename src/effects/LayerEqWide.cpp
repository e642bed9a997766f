// SPDX-License-Identifier: GPL-3.0-or-later
// Compiled for AVX2 where the build can, without fused multiply-add: see src/CMakeLists.txt.
#include "effects/LayerEqWide.h"

#if defined(__AVX2__)
#include "effects/LayerEqLanes.h"
#endif

namespace quorel
{
#if defined(__AVX2__)

bool wideLanesWork()
{
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}

void processWideLanes(const EqBlock* blocks, int numBlocks, int start, int num)
{
    processLanes<WideLanes>(blocks, numBlocks, start, num);
}

#else

bool wideLanesWork()
{
    return false;
}

void processWideLanes(const EqBlock*, int, int, int)
{
}

#endif
} // namespace quorel
