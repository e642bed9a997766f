// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/LayerEqPanel.h"

#include "ui/Geometry.h"

namespace quorel
{

LayerEqPanel::LayerEqPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost,
                           const EditorImages& editorImages, int layer)
    : ControlPage(pluginProcessor, editorHost, editorImages)
    , controls(*this, layer, pluginProcessor, editorImages)
{
    setSize(geometry::strip::width, geometry::strip::height);
}

void LayerEqPanel::refresh()
{
    controls.refresh();
}

} // namespace quorel
