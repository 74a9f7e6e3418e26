-- Helpers for the scripts that the console tests run inside FCEUX. The runner sets these globals
-- first: RESULT_FILE, SCRIPT_FILE, TAKE_SHOTS. A script prints key=value lines with put() and ends
-- by returning; an error in it ends the emulator at once and becomes the run's problem.
--
-- Addresses are CPU addresses unless the name says ppu. Strings of bytes are Lua strings; hex()
-- makes them printable. A frame is one emu.frameadvance().

emu.speedmode("maximum")

local result = assert(io.open(RESULT_FILE, "w"))
local held = {}
local oam_shadow = string.rep("\248", 256)

-- Sprite memory can't be read from Lua in this emulator. Programs fill it by DMA, so the page that
-- each write to $4014 names is kept; the hook runs before the program goes on, so the page is whole.
memory.registerwrite(0x4014, 1, function(address, size, value)
    oam_shadow = memory.readbyterange(value * 256, 256)
end)

-- One line of the result. Line ends in the value would start another line, so they are refused.
function put(key, value)
    value = tostring(value)
    assert(not value:find("[\r\n]"), "a value holds one line: " .. key)
    result:write(key, "=", value, "\n")
end

function hex(bytes)
    return (bytes:gsub(".", function(c) return string.format("%02X", c:byte()) end))
end

-- CRC-32 of a string of bytes, as a non-negative number.
function crc(bytes)
    local value = gethash(bytes, #bytes)
    if value < 0 then value = value + 4294967296 end
    return value
end

-- Goes on by n frames (default 1) with the held buttons down.
function frames(n)
    for _ = 1, n or 1 do
        for pad = 1, 2 do joypad.set(pad, held[pad] or {}) end
        emu.frameadvance()
    end
end

-- Buttons are named as in "A+start": A, B, select, start, up, down, left, right. An empty text
-- releases all.
function hold(buttons, pad)
    local set = {}
    for name in buttons:gmatch("[^+]+") do set[name] = true end
    held[pad or 1] = set
end

-- Holds the buttons for `down` frames (default 2), then releases them for `up` frames (default 2).
function press(buttons, down, up, pad)
    hold(buttons, pad)
    frames(down or 2)
    hold("", pad)
    frames(up or 2)
end

-- Goes on until condition() holds, for at most `limit` frames. Gives the number of frames that it
-- took, or nil.
function wait_until(condition, limit)
    for n = 0, limit do
        if condition() then return n end
        frames(1)
    end
    return nil
end

function peek(address) return memory.readbyte(address) end
function peek16(address) return memory.readbyte(address) + 256 * memory.readbyte(address + 1) end
function bytes(address, count) return memory.readbyterange(address, count) end
function ppu_bytes(address, count) return ppu.readbyterange(address, count) end
function palette() return ppu.readbyterange(0x3F00, 32) end

-- The 256 bytes last sent to sprite memory by DMA ($F8 everywhere before the first time), and one
-- sprite of it, counted from 0. forget_oam() goes back to the state before the first time.
function oam() return oam_shadow end
function forget_oam() oam_shadow = string.rep("\248", 256) end
function sprite(index)
    local y, tile, attribute, x = oam_shadow:byte(index * 4 + 1, index * 4 + 4)
    return {y = y, tile = tile, attribute = attribute, x = x}
end

-- Tile numbers to characters: $20 to $5F are their ASCII codes in the menu and in the samples,
-- every other tile shows as '.', tile 0 as a blank. Pass a table {[tile] = "c"} for other sets.
local function tile_character(tile, map)
    if map and map[tile] then return map[tile] end
    if tile == 0 then return " " end
    if tile >= 0x20 and tile <= 0x5F then return string.char(tile) end
    return "."
end

-- The text of one row of a name table (0 to 3), 32 characters, trailing blanks cut.
function row(y, table_number, map)
    local tiles = ppu.readbyterange(0x2000 + (table_number or 0) * 0x400 + y * 32, 32)
    local text = tiles:gsub(".", function(c) return tile_character(c:byte(), map) end)
    return (text:gsub("%s+$", ""))
end

-- All 30 rows as lines row_00=... to row_29=..., with a prefix for the key if one is given.
function put_rows(prefix, table_number, map)
    for y = 0, 29 do
        put(string.format("%srow_%02d", prefix or "", y), row(y, table_number, map))
    end
end

-- Starts a log of all writes to `count` addresses from `first`; gives a table of {address, value}
-- in the order of writing, which goes on growing.
function log_writes(first, count)
    local log = {}
    for address = first, first + count - 1 do
        memory.registerwrite(address, 1, function(a, size, value)
            log[#log + 1] = {address = a, value = value}
        end)
    end
    return log
end

-- A log as one line of text: "6000=C3 6001=80 ...".
function log_text(log)
    local parts = {}
    for i, entry in ipairs(log) do
        parts[i] = string.format("%04X=%02X", entry.address, entry.value)
    end
    return table.concat(parts, " ")
end

-- A picture of the screen, only if the run asks for pictures. Takes one frame then.
function shot(name)
    if not TAKE_SHOTS then return end
    gui.savescreenshotas(name .. ".png")
    frames(1)
end

local function finish(problem)
    if problem then result:write("!problem=", (problem:gsub("[\r\n]+", " | ")), "\n") end
    result:write("!end=1\n")
    result:close()
    emu.frameadvance()  -- an exit before the first frame is not heard
    emu.exit()
end

-- The script runs as a coroutine: a frame's end can't cross a protected call, but it can be passed
-- on from a coroutine, whose errors are caught here.
local chunk, syntax_error = loadfile(SCRIPT_FILE)
if not chunk then
    finish(syntax_error)
else
    local script = coroutine.create(chunk)
    while true do
        local good, message = coroutine.resume(script)
        if not good then
            finish(debug.traceback(script, message))
            break
        end
        if coroutine.status(script) == "dead" then
            finish(nil)
            break
        end
        coroutine.yield()
    end
end
