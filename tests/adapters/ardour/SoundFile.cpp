// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the state chunk of a sound to a file, for a host's session: one instrument on the first layer, and
// the master volume at a value that nothing else has.
#include "SavedSound.h"
#include "ScratchUser.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

using namespace quorel::test;

int main(int argc, char** argv)
try
{
    if (argc != 4)
    {
        std::cerr << "usage: " << argv[0] << " INSTRUMENT MASTER-VOLUME FILE\n";
        return 2;
    }
    const ScratchUser user;
    RawVst2Host quorel(QUOREL_PLUGIN_FILE);
    RawVst2Host instrument(instrumentFile(argv[1]));
    SavedSound sound(quorel.chunk());
    sound.setLayer(0, argv[1], hostedState(instrument, {argv[1]}), 0, instrument.effect().numPrograms);
    sound.parameters[1] = std::strtof(argv[2], nullptr);

    const auto bytes = sound.bytes();
    std::ofstream file(argv[3], std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return file.flush() ? 0 : 1;
}

catch (const std::exception& error)
{
    std::cerr << error.what() << '\n';
    return 1;
}
