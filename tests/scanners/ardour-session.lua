-- What ardour-session.py has Ardour do, run by Ardour's session tool without a window.
-- usage: ardour7-lua ardour-session.lua ACTION FOLDER [PROGRAM ID=VALUE...]
--   probe   makes a session and saves it, without the instrument
--   make    makes a session with a track for the instrument, chooses a program by its number from 0, sets
--           parameters to values from 0 to 1, and saves
--   open    opens that session and saves it again
-- Says a word and its value a line on standard output; the last line of a run that came through is "done".

local action, folder, program = arg[1], arg[2], tonumber(arg[3])
local sessionName, trackName = "session", "Kick"
local pluginName = "ThudForge 1.8.3 FREE"
local parameterCount = 159

local function say(...)
    print(string.format(...))
    io.stdout:flush()
end

local function instrument(route)
    local processor = route:nth_plugin(0)
    assert(not processor:isnil(), "the track has no instrument")
    return processor
end

local function parameter(processor, id)
    local value, known = ARDOUR.LuaAPI.get_processor_param(processor, id)
    assert(known, "the host knows no parameter " .. id)
    return value
end

local function sayParameters(processor, word)
    local plugin = processor:to_insert():plugin(0)
    say("count %d", plugin:parameter_count())
    for id = 0, parameterCount - 1 do
        say("%s %d %.9g", word, id, parameter(processor, id))
    end
    local preset = plugin:last_preset()
    if preset.valid then say("program %s", preset.label) end
end

local function addTrack(session)
    local info = ARDOUR.LuaAPI.new_plugin_info(pluginName, ARDOUR.PluginType.LXVST)
    assert(info and not info:isnil(), "the host does not offer " .. pluginName)
    local tracks = session:new_midi_track(
        ARDOUR.ChanCount(ARDOUR.DataType("midi"), 1), ARDOUR.ChanCount(ARDOUR.DataType("audio"), 2), true,
        info, nil, nil, 1, trackName, ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true)
    assert(tracks:size() == 1, "the host made no track")
    return instrument(tracks:front())
end

local function chooseProgram(processor)
    local plugin = processor:to_insert():plugin(0)
    -- The host's own name of a module's program.
    local preset = plugin:preset_by_uri(string.format("VST:%s:%04d", plugin:unique_id(), program))
    assert(preset and preset.valid, "the host sees no program " .. program)
    assert(plugin:load_preset(preset), "the host could not choose program " .. program)
end

local function setParameters(processor)
    for index = 4, #arg do
        local id, value = arg[index]:match("^(%d+)=([%d.]+)$")
        assert(id, "not a setting: " .. arg[index])
        assert(ARDOUR.LuaAPI.set_processor_param(processor, tonumber(id), tonumber(value)),
            "the host could not set parameter " .. id)
    end
end

local function make(session)
    local processor = addTrack(session)
    sayParameters(processor, "fresh")
    chooseProgram(processor)
    sayParameters(processor, "chosen")
    setParameters(processor)
    sayParameters(processor, "parameter")
end

assert(not AudioEngine:set_backend("None (Dummy)", "", ""):isnil(), "no backend without a device")
local session
if action == "open" then
    session = load_session(folder, sessionName)
else
    session = create_session(folder, sessionName, 48000)
end
assert(session, "no session")
say("session ready")

if action == "make" then
    make(session)
elseif action == "open" then
    local route = session:route_by_name(trackName)
    assert(not route:isnil(), "the session has no track " .. trackName)
    sayParameters(instrument(route), "parameter")
end
assert(session:save_state("", false, false, false, false, false) == 0, "the session was not saved")
close_session()
say("done")
quit()
