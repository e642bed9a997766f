-- SPDX-License-Identifier: GPL-3.0-or-later
-- The steps of the test in Ardour: session.lua FOLDER create | play MASTER-VOLUME
local folder, step, wantedVolume = arg[1], arg[2], arg[3]
local rate = 48000
local masterVolume, layerVolume = 1, 232
local volumeLabel = "Layer1 Volume"
local backend = AudioEngine:set_backend("None (Dummy)", "", "")
backend:set_sample_rate(rate)
backend:set_buffer_size(512)
assert(AudioEngine:start() == 0, "the dummy device doesn't start")

local function say(...)
    print("quorel-test:", ...)
end

local function near(x, y)
    return math.abs(x - y) < 1.0e-6
end

local function parameter(processor, index)
    return (ARDOUR.LuaAPI.get_processor_param(processor, index))
end

local function wait(seconds)
    ARDOUR.LuaAPI.usleep(math.floor(seconds * 1000000))
end

-- The plug-in on a track of its own.
local function add(session, track, name, kind)
    local one, two = ARDOUR.ChanCount(ARDOUR.DataType("midi"), 1), ARDOUR.ChanCount(ARDOUR.DataType("audio"), 2)
    local tracks = session:new_midi_track(one, two, true, ARDOUR.PluginInfo(), nil, nil, 1, track,
        ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true)
    local processor = ARDOUR.LuaAPI.new_plugin(session, name, kind, "")
    assert(not processor:isnil(), name .. " isn't among the plug-ins")
    assert(tracks:front():add_processor_by_index(processor, 0, nil, true) == 0, "the plug-in doesn't fit the track")
    local plugin = processor:to_insert():plugin(0)
    say(track, plugin:name(), plugin:parameter_count(), "parameters")
    return processor, plugin
end

local function indexOf(plugin, label)
    for i = 0, plugin:parameter_count() - 1 do
        if plugin:parameter_label(i) == label then
            return i
        end
    end
    error("no parameter " .. label)
end

local function create()
    local session = create_session(folder, "session", rate)
    assert(session, "no session")
    local processor, plugin = add(session, "Layers", "Quorel", ARDOUR.PluginType.LXVST)
    assert(plugin:parameter_count() == 1507)
    ARDOUR.LuaAPI.set_processor_param(processor, layerVolume, 0.25)
    assert(near(parameter(processor, layerVolume), 0.25), "the parameter didn't take its value")

    local vst3, vst3Plugin = add(session, "VST3", "Quorel", ARDOUR.PluginType.VST3)
    ARDOUR.LuaAPI.set_processor_param(vst3, indexOf(vst3Plugin, volumeLabel), 0.75)
    add(session, "LV2", "http://ostrand.org/plugins/quorel", ARDOUR.PluginType.LV2)
    wait(0.5)
    assert(session:save_state("", false, false, false, false, false) == 0)
end

-- Three raw bytes to the track, from the port of Ardour's on-screen keyboard.
local function send(session, track, status, note, velocity)
    local input = track:input():midi(0)
    local _, ports = session:engine():get_ports(ARDOUR.DataType("midi"), ARDOUR.PortList())
    for port in ports[2]:iter() do
        local keyboard = port:to_asyncmidiport()
        if not keyboard:isnil() and keyboard:name():match("virtual%-keyboard") then
            if not input:connected_to(keyboard:name()) then
                assert(input:connect(keyboard:name()) == 0, "no connection")
                wait(0.2)
            end
            local parser = ARDOUR.RawMidiParser()
            for _, byte in ipairs({ status, note, velocity }) do
                if parser:process_byte(byte) then
                    keyboard:write(parser:midi_buffer(), parser:buffer_size(), 0)
                end
            end
            return
        end
    end
    error("no keyboard port")
end

-- The highest peak in dBFS of the track's left channel, which comes behind its one MIDI channel.
local function meter(track, seconds)
    track:peak_meter():reset_max()
    wait(seconds)
    return track:peak_meter():meter_level(1, ARDOUR.MeterType.MeterMaxPeak)
end

local function pluginOn(session, track)
    local processor = session:route_by_name(track):nth_plugin(0)
    assert(not processor:isnil(), track .. " has lost its plug-in")
    return processor
end

local function play()
    local session = load_session(folder, "session")
    assert(session, "no session")
    local vst3 = pluginOn(session, "VST3")
    assert(near(parameter(vst3, indexOf(vst3:to_insert():plugin(0), volumeLabel)), 0.75), "the VST3 wasn't restored")
    pluginOn(session, "LV2")
    local track = session:route_by_name("Layers"):to_track():to_midi_track()
    assert(not track:isnil(), "no track")
    local processor = track:nth_plugin(0)
    assert(near(parameter(processor, masterVolume), tonumber(wantedVolume)), "the sound wasn't restored")
    track:monitoring_control():set_value(1, PBD.GroupControlDisposition.NoGroup) -- hear what comes in
    wait(0.5)

    local silence = meter(track, 0.5)
    send(session, track, 0x90, 60, 100)
    local note = meter(track, 1)
    send(session, track, 0x80, 60, 0)
    wait(2)
    local after = meter(track, 0.5)
    say(string.format("before the note %.1f, the note %.1f, after it %.1f dBFS", silence, note, after))
    assert(silence < -100 and note > -40 and note < 0 and after < -100)
    assert(session:save_state("", false, false, false, false, false) == 0)
end

local passed, message = pcall(step == "create" and create or play)
say(passed and "passed" or message)
collectgarbage()
close_session()
quit()
