// SPDX-License-Identifier: GPL-3.0-or-later
// The file of a bank with a plug-in's own bytes in it, as JUCE's VST3 client writes it around the state so that hosts
// can move a project between the formats. All numbers are big-endian; JUCE's VST2 host reads the same layout. No system
// header may be included here.
#pragma once

struct fxBank
{
    int chunkMagic;   ///< "CcnK"
    int byteSize;     ///< of what follows
    int fxMagic;      ///< "FBCh"
    int version;
    int fxID;         ///< the plug-in's
    int fxVersion;
    int numPrograms;
    char future[128]; ///< zeros

    union
    {
        struct
        {
            int size;
            char chunk[8]; ///< `size` bytes
        } data;
    } content;
};
