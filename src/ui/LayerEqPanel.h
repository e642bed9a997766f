// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/EqControls.h"

namespace quorel
{

/** The EQ panel of a layer's strip: curve, switches and knobs. The strip draws the panel's image below it.
    As large as the strip. Message thread. */
class LayerEqPanel : public ControlPage
{
public:
    /** `layer` is 0 to 3. */
    LayerEqPanel(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages,
                 int layer);

    void refresh() override;

private:
    EqControls controls;
};

} // namespace quorel
