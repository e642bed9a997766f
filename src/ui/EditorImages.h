// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "resources/CBitmap.h"

#include <array>

namespace quorel
{

/** The images of the editor's controls, looked up once for each editor. Controls share them by pointer.
    Message thread. */
struct EditorImages
{
    // Page backgrounds, by page number, and the back panel.
    std::array<CBitmap, 4> pages{CBitmap("quorel_ez_edit2_png"), CBitmap("quorel_fx2_png"),
                                 CBitmap("quorel_manager2_png"), CBitmap("quorel_mcp2_png")};
    CBitmap back{"quorel_back_png"};

    // Films.
    CBitmap masterVolume{"big_volume__137_frames_png"};
    CBitmap knobVolume{"small_knobs_vol__137_frames_png"};
    CBitmap knobPan{"small_knobs_pan__137_frames_png"};
    CBitmap bigFader{"big_fader_142_frames_png"};
    CBitmap easyFader{"fader_81_frames_png"};
    /** EQ bands 0 to 2: frequency and bandwidth, then gain. */
    std::array<CBitmap, 3> eqKnobVolume{CBitmap("small_knob_vol_green_png"),
                                        CBitmap("small_knob_vol_blue_png"),
                                        CBitmap("small_knob_vol_rose_png")};
    std::array<CBitmap, 3> eqKnobPan{CBitmap("small_knob_pan_green_png"), CBitmap("small_knob_pan_blue_png"),
                                     CBitmap("small_knob_pan_rose_png")};

    // Header keys and icons.
    CBitmap keyEdit{"key_Edit_png"};
    CBitmap keyOrig{"key_Orig_png"};
    CBitmap keyLayers{"key_Layers_png"};
    CBitmap keyFx{"key_Fx_png"};
    CBitmap keyManager{"key_Manager_png"};
    CBitmap keyMulti{"key_MCP_short_png"};
    CBitmap iconMute{"icons_mute1_png"};
    CBitmap iconNote{"icons_note1_png"};
    CBitmap iconUserGuide{"icons_user_guide2_png"};
    CBitmap tap{"tap_button_greyed_out_png"};

    // Switches and arrows.
    CBitmap onOff{"switch_png"};
    CBitmap smallOnOff{"switch_small_png"};
    std::array<CBitmap, 3> eqOnOff{CBitmap("switch_small_green_png"), CBitmap("switch_small_blue_png"),
                                   CBitmap("switch_small_rose_png")};
    CBitmap tinyOnOff{"small_switch_png"};
    CBitmap holdOnOff{"small_switch2_png"};
    CBitmap arrowBigLeft{"arrowbigleft_png"};
    CBitmap arrowBigRight{"arrowbigright_png"};
    CBitmap arrowMidLeft{"arrowmidleft_png"};
    CBitmap arrowMidRight{"arrowmidright_png"};

    // Read-outs, by their nominal width.
    CBitmap readout30{"readout30_png"};
    CBitmap readout40{"readout40_png"};
    CBitmap readout60{"readout60_png"};
    CBitmap readout80{"readout80_png"};
    CBitmap readout120{"readout120_png"};
    CBitmap readout160{"readout160_png"};
    CBitmap readout180{"readout180_png"};
    CBitmap multiTarget{"lcdmulti120x31_png"};

    // Bitmap fonts: the first character set in two sizes, and the second.
    CBitmap textStripA{"text_strip_a_png"};
    CBitmap textStripB{"text_strip_b_png"};
    CBitmap labelTextStrip{"label_text_strip_png"};

    // Strip panels.
    CBitmap panelSynth{"panel_synth_png"};
    CBitmap panelZones{"panel_dorvik_png"};
    CBitmap panelEq{"panel_eq_png"};
    CBitmap panelMidi{"panel_midicc_png"};

    /** One-column fills under the curves of EQ bands 0 to 2. */
    std::array<CBitmap, 3> eqLine{CBitmap("eqgreenlinebitmap_png"), CBitmap("eqbluelinebitmap_png"),
                                  CBitmap("eqredlinebitmap_png")};
};

} // namespace quorel
