// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the platform's seam that goes into every DLL: the C++ library lies in it, and keeps 73 kB in reserve for
// exceptions when memory has run out. They would stay each time that an instrument is unloaded.

namespace __gnu_cxx
{
void __freeres();
}

namespace
{
struct Reserve
{
    ~Reserve() { __gnu_cxx::__freeres(); }
};

// Made first, gone last.
__attribute__((init_priority(101))) Reserve reserve;
} // namespace
