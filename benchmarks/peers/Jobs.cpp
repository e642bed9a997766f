// SPDX-License-Identifier: GPL-3.0-or-later
#include "Jobs.h"

namespace quorel::peers
{
namespace
{
using Controls = std::vector<std::pair<std::string, float>>;

LV2Setup calf(const std::string& name, Controls controls = {})
{
    return {"http://calf.sourceforge.net/plugins/" + name, std::move(controls)};
}

LV2Setup mda(const std::string& name, Controls controls = {})
{
    return {"http://drobilla.net/plugins/mda/" + name, std::move(controls)};
}

LV2Setup gx(const std::string& name, Controls controls = {})
{
    return {"http://guitarix.sourceforge.net/plugins/" + name, std::move(controls)};
}

LV2Setup lsp(const std::string& name, Controls controls = {})
{
    return {"http://lsp-plug.in/plugins/lv2/" + name, std::move(controls)};
}

LV2Setup zam(const std::string& name, Controls controls = {})
{
    return {"urn:zamaudio:" + name, std::move(controls)};
}

LV2Setup ardour(const std::string& name, Controls controls = {})
{
    return {"urn:ardour:" + name, std::move(controls)};
}

Peer juce(const std::string& effect, int combs = 0)
{
    return {"JUCE " + effect, {}, effect, combs};
}

Peer lv2(const std::string& name, LV2Setup plugin)
{
    return {name, {std::move(plugin)}, {}};
}

Peer lesser(const std::string& name, LV2Setup plugin, const std::string& lacks)
{
    return {name, {std::move(plugin)}, {}, 0, lacks};
}

OwnType kind(const std::string& type, int number, float kinds, const std::string& label)
{
    return {type, label, (static_cast<float>(number) + 0.5f) / kinds};
}

Peer chain(const std::string& name, LV2Setup first, LV2Setup second)
{
    return {name, {std::move(first), std::move(second)}, {}};
}

const LV2Setup gxChorus = gx("gx_chorus_stereo#_chorus_stereo");
const LV2Setup gxEcho = gx("gx_echo_stereo#_echo_stereo");
const LV2Setup gxAutoWah = gx("gxautowah#autowah");
const LV2Setup mdaDelay = mda("Delay");
const LV2Setup mdaWah = mda("RezFilter");

// Plug-ins that do nothing at their defaults are given values; all others stay as they are.
std::vector<Job> makeJobs()
{
    return {
        {"Reverb",
         {{"HQ Reverb", {}, -1.0f, 60 + 12}},
         {juce("Reverb", 16 + 8), lv2("Guitarix Reverb", gx("gx_reverb_stereo#_reverb_stereo")),
          Peer{"Ardour a-Reverb", {ardour("a-reverb")}, {}, 8 + 6},
          lesser("mda Ambience", mda("Ambience"), "four all-passes"), lv2("Calf Reverb", calf("Reverb")),
          lv2("Dragonfly Plate", {"urn:dragonfly:plate", {}}),
          lv2("Dragonfly Room", {"urn:dragonfly:room", {}}),
          lv2("Dragonfly Hall", {"https://github.com/michaelwillis/dragonfly-reverb", {}}),
          lv2("Guitarix Zita Rev1", gx("gx_zita_rev1_stereo#_zita_rev1_stereo"))}},
        {"Delay",
         {{"Mono Delay"}, {"Stereo Delay"}},
         {lv2("Calf Vintage Delay", calf("VintageDelay")), lesser("mda Delay", mdaDelay, "no modulation"),
          lv2("Guitarix Echo", gxEcho), lv2("Guitarix Delay", gx("gx_delay_stereo#_delay_stereo")),
          lv2("Guitarix Digital Delay", gx("gx_digital_delay_st_#_digital_delay_st_")),
          lv2("ZamDelay, two", zam("ZamDelay", {{"feedb", 0.5f}})),
          lv2("Ardour a-Delay, two", ardour("a-delay"))}},
        {"Tape delay",
         {{"Mono Tape Delay"}, {"Stereo Tape Delay"}},
         {lv2("mda DubDelay, modulated", mda("DubDelay", {{"lfo_depth", 0.5f}})),
          lv2("Guitarix Echo Cat, two",
              gx("gxechocat#echocat", {{"swell", 0.5f}, {"sustain", 0.5f}, {"head1", 1.0f}})),
          chain("Guitarix Tape, Guitarix Echo", gx("gxtape_st#tape"), gxEcho),
          chain("Calf Tape Simulator, Calf Vintage Delay", calf("TapeSimulator"), calf("VintageDelay"))}},
        {"Comb",
         {{"Comb Filter"}},
         {lv2("Calf Flanger", calf("Flanger")), lv2("mda ThruZero", mda("ThruZero")),
          lv2("Guitarix Echo, 1 ms",
              gx("gx_echo_stereo#_echo_stereo", {{"timt_l", 1.0f}, {"timt_r", 1.0f}}))}},
        {"Chorus",
         {{"Chorus"}, {"Tape Chorus"}, {"Ensemble"}},
         {juce("Chorus"), lv2("Calf MultiChorus", calf("MultiChorus")), lv2("Guitarix Chorus", gxChorus)}},
        {"Chorus and delay",
         {{"Chorus / Delay"}},
         {chain("Guitarix Chorus, Guitarix Echo", gxChorus, gxEcho),
          chain("Guitarix Chorus, mda Delay", gxChorus, mdaDelay),
          chain("Calf MultiChorus, Calf Vintage Delay", calf("MultiChorus"), calf("VintageDelay"))}},
        {"Flanger",
         {{"Flanger"}, {"Tape Flanger"}},
         {juce("Chorus as flanger"), lv2("Calf Flanger", calf("Flanger")),
          lv2("mda ThruZero", mda("ThruZero")),
          lv2("Guitarix Flanger, two", gx("gx_flanger#_flanger", {{"dry_wet", 50.0f}}))}},
        {"Phaser",
         {{"Phaser"}, {"Ana. Phaser"}},
         {juce("Phaser"), lv2("Calf Phaser", calf("Phaser")),
          lv2("Guitarix Phaser, two", gx("gx_phaser#_phaser"))}},
        {"Ring modulator",
         {{"Ring-Mod"}},
         {lv2("Calf Ring Modulator", calf("RingModulator")), lv2("mda RingMod", mda("RingMod"))}},
        {"Distortion",
         {{"Distort"},
          {"Multi Distort"},
          kind("Multi Distort", 0, 11.99f, "first curve"),
          kind("Multi Distort", 11, 11.99f, "last curve"),
          {"Waveshaper"},
          {"Clipper"}},
         {lv2("mda Overdrive", mda("Overdrive", {{"drive", 0.5f}, {"muffle", 0.5f}})),
          lv2("Calf Saturator", calf("Saturator")), lv2("Guitarix TS9, two", gx("gxts9#ts9sim")),
          lv2("Guitarix Scream, two", gx("gx_scream_#_scream_")),
          lv2("Guitarix Muff, two", gx("gx_muff_#_muff_")),
          lv2("Guitarix MXR Dist, two", gx("gx_mxrdist_#_mxrdist_")),
          lesser("ZamAutoSat, two", zam("ZamAutoSat"), "no controls")}},
        {"Low fidelity",
         {{"Low Fi"}},
         {lv2("Calf Crusher", calf("Crusher")), lv2("mda Degrade", mda("Degrade"))}},
        {"Cabinet",
         {{"Cabinet"}},
         {lesser("mda Combo", mda("Combo", {{"stereo", 1.0f}}), "no impulse response"),
          lv2("Guitarix Cabinet, two", gx("gx_cabinet#CABINET"))}},
        {"Amplifier",
         {{"Amp Sim"}},
         {lv2("mda Combo", mda("Combo", {{"stereo", 1.0f}})),
          lv2("Guitarix Amp", gx("gx_amp_stereo#GUITARIX_ST")),
          lv2("Guitarix JCM 800 Preamp", gx("gx_jcm800pre_st#_jcm800pre_st")),
          lv2("Guitarix Studio Preamp", gx("gx_studiopre_st#studiopre_st")),
          lv2("Guitarix Redeye Chump, two", gx("gx_redeye#chump")),
          lv2("ZamTube, two", zam("ZamTube", {{"tubedrive", 5.0f}}))}},
        {"Stereo width",
         {{"Widener"}},
         {lv2("mda Stereo, modulated", mda("Stereo", {{"mod", 0.5f}})),
          lv2("Calf Haas Enhancer", calf("HaasEnhancer"))}},
        {"Pan",
         {{"AutoPan"}},
         {lv2("mda RoundPan", mda("RoundPan")), lv2("Calf Pulsator", calf("Pulsator"))}},
        {"Tremolo",
         {{"Tremelo"}, {"Kappel"}},
         {lv2("Calf Pulsator", calf("Pulsator")), lv2("Guitarix Tremolo, two", gx("gx_tremolo#_tremolo")),
          lv2("Guitarix Tube Tremolo, two", gx("gxtubetremelo#tubetremelo")),
          lv2("Guitarix Switched Tremolo, two", gx("gx_switched_tremolo_#_switched_tremolo_"))}},
        {"Compressor",
         {{"Compressor"}},
         {juce("Compressor"), lv2("Calf Compressor", calf("Compressor")),
          lv2("LSP Compressor", lsp("compressor_stereo")),
          lv2("ZamCompX2", zam("ZamCompX2", {{"thr", -20.0f}})),
          lv2("Ardour a-Compressor", ardour("a-comp#stereo", {{"thr", -20.0f}})),
          lv2("mda Dynamics", mda("Dynamics")),
          lv2("Guitarix Compressor, two", gx("gx_compressor#_compressor"))}},
        {"Gate",
         {{"Noise-Gate"}},
         {juce("NoiseGate"), lv2("Calf Gate", calf("Gate")), lv2("LSP Gate", lsp("gate_stereo")),
          lv2("ZamGateX2", zam("ZamGateX2", {{"thr", -30.0f}})),
          lv2("Ardour a-Expander", ardour("a-exp#stereo")),
          lv2("mda Dynamics, gating", mda("Dynamics", {{"gate_thr", 0.5f}})),
          lv2("Guitarix Expander, two", gx("gx_expander#_expander"))},
         true},
        {"Filter, 12 dB",
         {kind("Filter", 3, 29.99f, "state-variable low-pass"), kind("Filter", 7, 29.99f, "biquad low-pass")},
         {juce("StateVariableTPTFilter"), lv2("Calf Filter", calf("Filter")),
          lv2("mda RezFilter, with LFO", mdaWah)}},
        {"Filter, 24 dB",
         {{"Filter"}, kind("Filter", 17, 29.99f, "ladder low-pass")},
         {juce("LadderFilter"), lv2("Calf Filter, 24 dB", calf("Filter", {{"mode", 1.0f}}))}},
        {"Bass",
         {{"Bass"}},
         {lv2("Calf Bass Enhancer", calf("BassEnhancer")),
          lv2("mda SubSynth", mda("SubSynth", {{"thresh", 0.1f}}))}},
        {"Wah and delay",
         {{"WahWah Delay"}},
         {chain("mda RezFilter, mda Delay", mdaWah, mdaDelay),
          chain("Guitarix Auto-Wah (two), Guitarix Echo", gxAutoWah, gxEcho)}},
        {"Auto-wah",
         {{"AutoWah"}},
         {lv2("Guitarix Auto-Wah, two", gxAutoWah), lv2("Calf Envelope Filter", calf("EnvelopeFilter")),
          lv2("mda RezFilter", mdaWah)}},
        {"Equaliser",
         {{eqBandsName}},
         {juce("IIR peaks"),
          lv2("Calf Equalizer 5 Band, three peaks", calf("Equalizer5Band", {{"p1_active", 1.0f},
                                                                            {"p2_active", 1.0f},
                                                                            {"p3_active", 1.0f},
                                                                            {"p1_level", 2.0f},
                                                                            {"p2_level", 2.0f},
                                                                            {"p3_level", 2.0f}})),
          lv2("LSP Parametric Equalizer x16, three bells", lsp("para_equalizer_x16_stereo", {{"ft_0", 1.0f},
                                                                                             {"ft_1", 1.0f},
                                                                                             {"ft_2", 1.0f},
                                                                                             {"f_0", 250.0f},
                                                                                             {"f_1", 1000.0f},
                                                                                             {"f_2", 4000.0f},
                                                                                             {"g_0", 2.0f},
                                                                                             {"g_1", 2.0f},
                                                                                             {"g_2", 2.0f}})),
          lv2("ZamEQ2, two", zam("ZamEQ2", {{"boost1", 6.0f}, {"boost2", 6.0f}})),
          lv2("Ardour a-EQ, two", ardour("a-eq", {{"g1", 6.0f}, {"g2", 6.0f}, {"g3", 6.0f}}))}},
        {"Equaliser's filters",
         {{eqLaddersName}},
         {juce("LadderFilter pair"), chain("Calf Filter, 24 dB, two", calf("Filter", {{"mode", 1.0f}}),
                                           calf("Filter", {{"mode", 4.0f}}))}},
    };
}
} // namespace

const std::vector<Job>& allJobs()
{
    static const std::vector<Job> jobs = makeJobs();
    return jobs;
}
} // namespace quorel::peers
