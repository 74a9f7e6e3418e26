-- Records what a music set does. The script before it sets SOUND_PLAY and SOUND_INIT, the set's two
-- entries; the menu's own code is found in the resident part. Counting begins with the first song.

local register = {}
for i = 0, 0x17 do register[i] = 0 end
local last_high = {}
local shown, songs = {}, {}  -- for each frame the four sound channels; {frame, number} of each song
local began, cycles, total, worst = nil, 0, 0, 0
local needless_highs, nmis, nested, nmi_began, nmi_worst = 0, 0, 0, nil, 0
local replace_song
local setup, strays, banks, own = {}, {}, {}, 0

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
    if began then banks[string.format("%04X=%02X", address, value)] = true end
end)

-- A pulse's control and period, the triangle's period, the noise's volume and period; "-" where
-- nothing is to be heard.
local function snapshot()
    local function period(i) return register[i + 2] + register[i + 3] % 8 * 256 end
    local function channel(heard, ...) return heard ~= 0 and string.format(...) or "-" end
    shown[#shown + 1] = table.concat({
        channel(register[0] % 16, "%02X%03X", register[0], period(0)),
        channel(register[4] % 16, "%02X%03X", register[4], period(4)),
        channel(register[8] % 128, "%03X", period(8)),
        channel(register[12] % 16, "%X%02X", register[12] % 16, register[14])}, " ")
end

memory.registerexecute(SOUND_INIT, 1, function()
    if replace_song then memory.setregister("a", replace_song) end
    songs[#songs + 1] = {#shown, replace_song or memory.getregister("a")}
    replace_song = nil
end)

-- Clocks the calls of an entry; those of a song's start count for the frame that follows.
local function clock(entry, ended)
    local call = 0xFE00
    while peek(call) ~= 0x20 or peek16(call + 1) ~= entry do
        call = call + 1
        assert(call < 0xFFF0, "nothing calls the music set")
    end
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
    if #songs > 0 then
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

-- From here on the writes of the music to its own RAM, and the addresses of those to other RAM but
-- the stack; the length of an NMI, and how often one came before the last one had ended.
function watch_load()
    memory.registerwrite(0, 0x800, function(address)
        if not began or address >= 0x100 and address < 0x200 then return end
        if address >= 2 and address < 0x40 or address >= 0x600 and address < 0x700 then
            own = own + 1
        else
            strays[string.format("%04X", address)] = true
        end
    end)
    memory.registerexecute(peek16(0xFFFA), 1, function()
        nmis = nmis + 1
        if nmi_began then nested = nested + 1 end
        nmi_began = debugger.getcyclescount()
    end)
    memory.registerexecute(peek16(0xFFFE), 1, function()
        nmi_worst = math.max(nmi_worst, debugger.getcyclescount() - nmi_began)
        nmi_began = nil
    end)
end

local function put_set(key, set)
    local list = {}
    for text in pairs(set) do list[#list + 1] = text end
    table.sort(list)
    put(key, table.concat(list, " "))
end

function put_load()
    put("average", math.floor(total / #shown))
    put("worst", worst)
    put("needless highs", needless_highs)
    put("setup", table.concat(setup, " "))
    put_set("strays", strays)
    put("own RAM", own)
    put_set("banks", banks)
    put("nmis", nmis)
    put("nested", nested)
    put("nmi worst", nmi_worst)
end

-- The file log.txt: the songs as NUMBER@FRAME; of each second a CRC-32 and its first frame; of each
-- song's first half second every frame, with the number of equal ones.
function write_log()
    local out, seen = io.open("log.txt", "w"), {}
    for _, song in ipairs(songs) do out:write(song[2], "@", song[1], " ") end
    for i = 1, #shown, 60 do
        local second = table.concat(shown, ",", i, math.min(i + 59, #shown))
        out:write(string.format("\n%d %08X %s", (i - 1) / 60, crc(second), shown[i]))
    end
    for _, song in ipairs(songs) do
        local count = 0
        if not seen[song[2]] then out:write("\n\nsong ", song[2]) end
        for i = song[1] + 1, seen[song[2]] and 0 or math.min(song[1] + 30, #shown) do
            count = count + 1
            if shown[i] ~= shown[i + 1] or i == song[1] + 30 then
                out:write("\n", count, "x ", shown[i])
                count = 0
            end
        end
        seen[song[2]] = true
    end
    out:write("\n")
    out:close()
end
