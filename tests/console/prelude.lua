-- Helpers for the scripts that the console tests run inside FCEUX. The runner sets LABEL, the run's
-- name, first. A script prints key=value lines with put() and ends by returning; an error in it ends
-- the emulator at once and becomes the run's problem.
--
-- Addresses are CPU addresses unless the name says ppu. Strings of bytes are Lua strings; hex()
-- makes them printable. A frame is one emu.frameadvance().

emu.speedmode("maximum")

local result = assert(io.open("result.txt", "w"))
local held = {}
local oam_shadow

-- Sprite memory can't be read from Lua in this emulator. Programs fill it by DMA, so the page that
-- each write to $4014 names is kept; the hook runs before the program goes on, so the page is whole.
-- $F8 everywhere before the first time, and after forget_oam().
function oam() return oam_shadow end
function forget_oam() oam_shadow = string.rep("\248", 256) end
forget_oam()
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
function press(buttons, down, up)
    hold(buttons)
    frames(down or 2)
    hold("")
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

-- The text of one row of the name table, trailing blanks cut. $20 to $5F are the characters' ASCII
-- codes in the menu and in the samples, tile 0 is a blank, and every other tile shows as '.'.
function row(y)
    local text = ppu_bytes(0x2000 + y * 32, 32):gsub("%z", " "):gsub("[^ -_]", ".")
    return (text:gsub("%s+$", ""))
end

-- Starts a log of all writes to `count` addresses from `first`; gives a table of {address, value}
-- in the order of writing, which goes on growing.
function log_writes(first, count, log)
    log = log or {}
    for address = first, first + count - 1 do
        memory.registerwrite(address, 1, function(a, size, value)
            log[#log + 1] = {address = a, value = value}
        end)
    end
    return log
end

function clear(log)
    for i = #log, 1, -1 do log[i] = nil end
end

-- A log as one line of text: "6000=C3 6001=80 ...".
function log_text(log)
    local parts = {}
    for i, entry in ipairs(log) do
        parts[i] = string.format("%04X=%02X", entry.address, entry.value)
    end
    return table.concat(parts, " ")
end

-- A picture of the screen, only if there is a folder for it. Takes one frame then.
function shot(name)
    local folder = os.getenv("BANKWEAVER_SCREENSHOTS")
    if not folder then return end
    gui.savescreenshotas(folder .. "/" .. LABEL .. "-" .. name .. ".png")
    frames(1)
end

local function finish(problem)
    result:write("!end=", (problem:gsub("[\r\n]+", " | ")), "\n")
    result:close()
    emu.frameadvance()  -- an exit before the first frame is not heard
    emu.exit()
end

-- The script runs as a coroutine: a frame's end can't cross a protected call, but it can be passed
-- on from a coroutine, whose errors are caught here.
local chunk, syntax_error = loadfile("script.lua")
local script = coroutine.create(chunk or function() error(syntax_error) end)
repeat
    local good, message = coroutine.resume(script)
    if not good then
        finish(debug.traceback(script, message))
    elseif coroutine.status(script) == "dead" then
        finish("")
    else
        coroutine.yield()
    end
until coroutine.status(script) == "dead"
