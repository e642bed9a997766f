// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/KeyboardStrip.h"
#include "ui/StripPanel.h"
#include "ui/widgets/myIntBox2.h"
#include "ui/widgets/myOnOff.h"

#include <array>
#include <memory>

namespace quorel
{

/** The eight zones of a layer with a drum instrument: a switch, a key range and a velocity range each. */
class ZonePanel : public StripPanel
{
public:
    ZonePanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
              int layerIndex);

    void refresh() override;

    void follow() override { keyboard.follow(); }

private:
    /** Lowest and highest key, lowest and highest velocity. */
    static constexpr int boxesPerZone = 4;

    struct Zone
    {
        std::unique_ptr<myOnOff> on;
        std::array<std::unique_ptr<myIntBox2>, boxesPerZone> boxes;
    };

    std::array<Zone, numZones> zones;
    KeyboardStrip keyboard;
};

} // namespace quorel
