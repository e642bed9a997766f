// SPDX-License-Identifier: GPL-3.0-or-later
#include "CategoryWords.h"

#include <array>

namespace quorel {

namespace {
constexpr int firstCategoryParameter = 10;
constexpr int bitsPerParameter = 11;
constexpr int categoriesPerGroup = 22;
constexpr float bitScale = 4096.0f;

/** The names of each group's first bits, in their order. */
constexpr std::array<std::array<const char *, 18>, 3> names{{
    {"Lead", "Bass", "Sub Bass", "Synth", "Key", "Arp-Seq", "Arp", "Seq", "SFX",
     "Drum", "Perc", "Chord", "Pad", "Acoustic Instr.", "Velocity Layer",
     "Split Layer", "Misc", ""},
    {"Synced", "XY Live", "XY Synced", "Slow", "Fast", "Percussive", "Spacey",
     "Drone", "Short Att", "Long Att", "Short Rel", "Long Rel", "Mono",
     "Legato", "Poly", "Kappel FX", "Riser", "DownRiser"},
    {"Dark", "Bright", "Distorted", "Clean", "FX", "Mod Wheel Timbre Change",
     "Pitch Wheel Timbre Change"},
}};
} // namespace

bool setCategory(ParameterAccess &parameters, const juce::String &name) {
  for (std::size_t group = 0; group < names.size(); ++group) {
    for (std::size_t item = 0; item < names[group].size(); ++item) {
      const char *candidate = names[group][item];
      if (candidate == nullptr || *candidate == 0 || name != candidate)
        continue;
      const int flag =
          static_cast<int>(group) * categoriesPerGroup + static_cast<int>(item);
      const int index = firstCategoryParameter + flag / bitsPerParameter;
      const int bits =
          static_cast<int>(parameters.readParameter(index) * bitScale) |
          1 << flag % bitsPerParameter;
      // The half keeps the bits from being rounded down on the way back.
      parameters.writeParameter(index,
                                (static_cast<float>(bits) + 0.5f) / bitScale);
      return true;
    }
  }
  return false;
}

} // namespace quorel
