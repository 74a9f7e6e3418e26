-- Records what a music set does. The script before it sets SOUND_PLAY and SOUND_INIT, the set's two
-- entries; the menu's own code is found in the resident part. Counting begins with the first song.

local register = {}
for i = 0, 0x17 do register[i] = 0 end
local last_high = {}
local shown, songs = {}, {}
local started, began, cycles, total, worst = false, nil, 0, 0, 0
local needless_highs, nmis, nested, nmi_began, nmi_worst = 0, 0, 0, nil, 0
local replace_song
local setup, written, banks = {}, {}, {}

memory.registerwrite(0x4000, 0x18, function(address, size, value)
    local i = address - 0x4000
    register[i] = value
    if not began then return end
    if #shown == 0 then setup[#setup + 1] = string.format("%04X=%02X", address, value) end
    if i == 3 or i == 7 then
        if last_high[i] == value then needless_highs = needless_highs + 1 end
        last_high[i] = value
    end
end)

memory.registerwrite(0x8000, 2, function(address, size, value)
    if began then banks[address * 256 + value] = string.format("%04X=%02X", address, value) end
end)

local function pulse(i)
    if register[i] % 16 == 0 then return "-" end
    return string.format("%02X%03X", register[i], register[i + 2] + register[i + 3] % 8 * 256)
end

local function snapshot()
    local triangle, noise = "-", "-"
    if register[8] % 128 ~= 0 then
        triangle = string.format("%03X", register[10] + register[11] % 8 * 256)
    end
    if register[12] % 16 ~= 0 then
        noise = string.format("%X%02X", register[12] % 16, register[14])
    end
    shown[#shown + 1] = pulse(0) .. " " .. pulse(4) .. " " .. triangle .. " " .. noise
end

local function find_call(target)
    for address = 0xFE00, 0xFFF0 do
        if peek(address) == 0x20 and peek16(address + 1) == target then return address end
    end
    error("nothing calls the music set")
end

memory.registerexecute(SOUND_INIT, 1, function()
    local song = memory.getregister("a")
    if replace_song then
        song = replace_song
        memory.setregister("a", song)
        replace_song = nil
    end
    songs[#songs + 1] = #shown .. ":" .. song
    started = true
end)

-- Clocks a call; those of a song's start count for the frame that follows.
local function clock(entry, ended)
    local call = find_call(entry)
    memory.registerexecute(call, 1, function() began = debugger.getcyclescount() end)
    memory.registerexecute(call + 3, 1, function()
        cycles = cycles + debugger.getcyclescount() - began
        began = nil
        if ended then ended() end
    end)
end

frames(8)
clock(SOUND_INIT, nil)
clock(SOUND_PLAY, function()
    if started then
        snapshot()
        total = total + cycles
        worst = math.max(worst, cycles)
    end
    cycles = 0
end)
-- The next song that is started is this one instead, counted from 0.
function replace_next_song(song) replace_song = song end

-- Goes on until so many frames have sounded.
function until_sounded(count)
    while #shown < count do frames(1) end
end

function sounded() return #shown end

-- From here on the addresses in RAM, but for the stack, to which the music writes.
function watch_ram()
    memory.registerwrite(0, 0x800, function(address)
        if began and math.floor(address / 256) ~= 1 then written[address] = true end
    end)
end

-- From here on the length of an NMI, and how often one came before the last one had ended.
function watch_nmis()
    local entry = peek16(0xFFFA)
    local exit = peek16(0xFFFE)
    memory.registerexecute(entry, 1, function()
        nmis = nmis + 1
        if nmi_began then nested = nested + 1 end
        nmi_began = debugger.getcyclescount()
    end)
    memory.registerexecute(exit, 1, function()
        nmi_worst = math.max(nmi_worst, debugger.getcyclescount() - nmi_began)
        nmi_began = nil
    end)
end

local function put_set(key, set)
    local list = {}
    for _, text in pairs(set) do list[#list + 1] = text end
    table.sort(list)
    put(key, table.concat(list, " "))
end

function put_music()
    for i = 1, #shown, 1000 do  -- the emulator cuts long texts
        put(string.format("shown %06d", i), table.concat(shown, ",", i, math.min(i + 999, #shown)))
    end
    put("songs", table.concat(songs, " "))
    put("average", math.floor(total / #shown))
    put("worst", worst)
    put("needless highs", needless_highs)
    put("setup", table.concat(setup, " "))
    for address in pairs(written) do written[address] = string.format("%04X", address) end
    put_set("written", written)
    put_set("banks", banks)
    put("nmis", nmis)
    put("nested", nested)
    put("nmi worst", nmi_worst)
end
