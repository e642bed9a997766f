// SPDX-License-Identifier: GPL-3.0-or-later
// Names and sizes of all built-in images, read by the image table and by the artwork that draws them.
#pragma once

#include <array>

namespace quorel
{

/** Rows of a bitmap font: one for each character of its set but the blank. */
constexpr int numGlyphRows = 40;

/** Frames in one of a film's tiles. Side by side they compress better than one under the other: what a frame
    has in common with its neighbour is then close by in every row. */
constexpr int framesPerTile = 8;

/** One image. Sizes are layout pixels: those of the whole image, with all its frames one under the other. */
struct ImageListing
{
    /** Folded name, as look-ups make it. */
    const char* name;
    int width;
    int height;
    /** 1; or 2 for up and down; or the frames of a film; or the rows of a bitmap font. */
    int frames;
    /** Drawn at double resolution too, as all images on the pages are. */
    bool doubled;

    constexpr int frameHeight() const noexcept { return height / frames; }

    /** Positions of a knob or a fader. */
    constexpr bool isFilm() const noexcept { return frames > numGlyphRows; }
};

constexpr int numImages = 129;

/** All images in the order of the table. The first one stands in for names that aren't there. The icons are
    those of the twelve short names, of the two small siblings that share one, and of any other plug-in. */
inline constexpr std::array<ImageListing, numImages> imageList{{
    {"arrowbigleft_png", 11, 22, 2, true},
    {"arrowbigright_png", 11, 22, 2, true},
    {"arrowmidleft_png", 10, 20, 2, true},
    {"arrowmidright_png", 10, 20, 2, true},
    {"big_fader_142_frames_png", 57, 23998, 142, true},
    {"big_pan__137_frames_png", 47, 6439, 137, false},
    {"big_volume__137_frames_png", 47, 6439, 137, true},
    {"cap__handle_background_png", 28, 98, 1, false},
    {"cap_png", 28, 16, 1, false},
    {"eqbluelinebitmap_png", 1, 82, 1, false},
    {"eqgreenlinebitmap_png", 1, 82, 1, false},
    {"eqredlinebitmap_png", 1, 82, 1, false},
    {"fader_81_frames_png", 28, 8036, 82, true},
    {"horizontal_separation_line_panels_png", 650, 3, 1, false},
    {"ico_dorvik_png", 54, 54, 1, true},
    {"ico_dorvikk_png", 54, 54, 1, true},
    {"ico_fenn2_png", 54, 54, 1, true},
    {"ico_glsn2_png", 54, 54, 1, true},
    {"ico_glsn_png", 54, 54, 1, true},
    {"ico_gray_dorvik_png", 54, 54, 1, true},
    {"ico_gray_dorvikk_png", 54, 54, 1, true},
    {"ico_gray_fenn2_png", 54, 54, 1, true},
    {"ico_gray_glsn2_png", 54, 54, 1, true},
    {"ico_gray_glsn_png", 54, 54, 1, true},
    {"ico_gray_hexley2_png", 54, 54, 1, true},
    {"ico_gray_hexley_png", 54, 54, 1, true},
    {"ico_gray_hexleymini_png", 54, 54, 1, true},
    {"ico_gray_imre_png", 54, 54, 1, true},
    {"ico_gray_orlen_png", 54, 54, 1, true},
    {"ico_gray_plugin_png", 54, 54, 1, true},
    {"ico_gray_tarn2_png", 54, 54, 1, true},
    {"ico_gray_tarn_png", 54, 54, 1, true},
    {"ico_gray_tarnmini_png", 54, 54, 1, true},
    {"ico_gray_zeph_png", 54, 54, 1, true},
    {"ico_hexley2_png", 54, 54, 1, true},
    {"ico_hexley_png", 54, 54, 1, true},
    {"ico_hexleymini_png", 54, 54, 1, true},
    {"ico_imre_png", 54, 54, 1, true},
    {"ico_orlen_png", 54, 54, 1, true},
    {"ico_plugin_png", 54, 54, 1, true},
    {"ico_tarn2_png", 54, 54, 1, true},
    {"ico_tarn_png", 54, 54, 1, true},
    {"ico_tarnmini_png", 54, 54, 1, true},
    {"ico_zeph_png", 54, 54, 1, true},
    {"icons_mute1_png", 28, 64, 2, true},
    {"icons_mute_png", 227, 64, 2, false},
    {"icons_note1_png", 32, 64, 2, true},
    {"icons_note_png", 227, 64, 2, false},
    {"icons_user_guide1_png", 34, 64, 2, false},
    {"icons_user_guide2_png", 34, 64, 2, true},
    {"icons_user_guide_png", 227, 64, 2, false},
    {"key_edit_png", 100, 64, 2, true},
    {"key_fx_png", 100, 64, 2, true},
    {"key_help_png", 100, 64, 2, false},
    {"key_layers_png", 100, 64, 2, true},
    {"key_manager_png", 100, 64, 2, true},
    {"key_mcp_png", 227, 64, 2, false},
    {"key_mcp_short_png", 100, 64, 2, true},
    {"key_orig_png", 100, 64, 2, true},
    {"label_text_strip_png", 12, 480, 40, true},
    {"lcdmulti120x31_png", 120, 31, 1, true},
    {"panel_dorvik_png", 650, 141, 1, true},
    {"panel_eq_png", 650, 141, 1, true},
    {"panel_midicc_png", 650, 141, 1, true},
    {"panel_synth_png", 650, 141, 1, true},
    {"paneldorvik_png", 515, 140, 1, false},
    {"paneleasy_png", 515, 140, 1, false},
    {"paneleq2_png", 515, 140, 1, false},
    {"panelsynth_png", 515, 140, 1, false},
    {"quorel038emptymanager_png", 1110, 786, 1, false},
    {"quorel038emptymanagercat_png", 1110, 786, 1, false},
    {"quorel_back_png", 1110, 786, 1, true},
    {"quorel_eq_png", 1110, 786, 1, false},
    {"quorel_ez_edit1_png", 1110, 786, 1, false},
    {"quorel_ez_edit2_png", 1110, 786, 1, true},
    {"quorel_ez_edit2_standalone_png", 1110, 786, 1, false},
    {"quorel_ez_edit_png", 1110, 786, 1, false},
    {"quorel_fx1_png", 1110, 786, 1, false},
    {"quorel_fx2_png", 1110, 786, 1, true},
    {"quorel_fx2_standalone_png", 1110, 786, 1, false},
    {"quorel_fx_png", 1110, 786, 1, false},
    {"quorel_manager1_png", 1110, 786, 1, false},
    {"quorel_manager2_png", 1110, 786, 1, true},
    {"quorel_manager2_standalone_png", 1110, 786, 1, false},
    {"quorel_manager_png", 1110, 786, 1, false},
    {"quorel_mcp2_png", 1110, 786, 1, true},
    {"quorel_mcp2_standalone_png", 1110, 786, 1, false},
    {"quorel_mcp_empty_png", 1110, 786, 1, false},
    {"quorel_mcp_reference_jpg", 1110, 786, 1, false},
    {"quorel_reference_easy_edit_jpg", 1110, 786, 1, false},
    {"quorel_reference_eq_jpg", 1110, 786, 1, false},
    {"quorel_reference_key_layout_jpg", 1110, 786, 1, false},
    {"quorel_reference_midi_filters_jpg", 1110, 786, 1, false},
    {"quorelfront_fx_png", 1110, 786, 1, false},
    {"quorelfront_png", 1110, 786, 1, false},
    {"readout120_png", 120, 16, 1, true},
    {"readout160_png", 160, 16, 1, true},
    {"readout180_png", 160, 16, 1, true},
    {"readout30_png", 30, 16, 1, true},
    {"readout40_png", 40, 16, 1, true},
    {"readout60_png", 60, 16, 1, true},
    {"readout80_png", 160, 16, 1, true},
    {"small_knob_pan_amber_png", 47, 6439, 137, false},
    {"small_knob_pan_blue_png", 47, 6439, 137, true},
    {"small_knob_pan_green_png", 47, 6439, 137, true},
    {"small_knob_pan_grey_png", 47, 6439, 137, false},
    {"small_knob_pan_rose_png", 47, 6439, 137, true},
    {"small_knob_pan_violet_png", 47, 6439, 137, false},
    {"small_knob_vol_amber_png", 47, 6439, 137, false},
    {"small_knob_vol_blue_png", 47, 6439, 137, true},
    {"small_knob_vol_green_png", 47, 6439, 137, true},
    {"small_knob_vol_grey_png", 47, 6439, 137, false},
    {"small_knob_vol_rose_png", 47, 6439, 137, true},
    {"small_knob_vol_violet_png", 47, 6439, 137, false},
    {"small_knobs_pan__137_frames_png", 47, 6439, 137, true},
    {"small_knobs_vol__137_frames_png", 47, 6439, 137, true},
    {"small_switch2_png", 16, 32, 2, true},
    {"small_switch_png", 10, 20, 2, true},
    {"switch_png", 20, 40, 2, true},
    {"switch_small_blue_png", 20, 40, 2, true},
    {"switch_small_green_png", 20, 40, 2, true},
    {"switch_small_png", 20, 40, 2, true},
    {"switch_small_rose_png", 20, 40, 2, true},
    {"tap_button_greyed_out_png", 61, 28, 2, true},
    {"tap_button_png", 61, 28, 2, false},
    {"text_strip_a_png", 11, 360, 40, true},
    {"text_strip_b_png", 17, 680, 40, true},
    {"vertical_separation_line_panels_png", 3, 141, 1, false},
    {"vline_png", 1, 64, 1, false},
}};

} // namespace quorel
