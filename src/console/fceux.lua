-- The console's side of fceux.cpp: runs inside FCEUX and does what it is ordered.
--
-- An order is a line: a word and its arguments, texts as hexadecimal digits. An answer is ANSWER_MARK,
-- "+", "-" or "!", the number of bytes that follow as eight hexadecimal digits, and those bytes: what was
-- asked for, or why it can't be done; "!" is a ROM that the emulator doesn't take. The orders' end ends the emulator, so that it never outlives the
-- program that started it.

local ANSWER_MARK = "BWC1"
local STARTING_FRAMES = 2 -- the emulator takes no other ROM before its first frame is done
local PICTURE_HEAD = 11 -- bytes of a GD picture before its pixels

local orders = assert(io.open(os.getenv("BANKWEAVER_ORDERS"), "rb"))
local answers = assert(io.open(os.getenv("BANKWEAVER_ANSWERS"), "wb"))

local function answer(sign, bytes)
    answers:write(ANSWER_MARK, sign, string.format("%08X", #bytes), bytes)
    answers:flush()
end

local function text_of(digits)
    return (digits:gsub("..", function(pair) return string.char(tonumber(pair, 16)) end))
end

-- The jammed processor stands at the instruction that stopped it. Only memory that a look doesn't
-- change is looked at.
local STOPPING = {}
for code = 0x02, 0xF2, 0x10 do STOPPING[code] = code ~= 0x82 and code ~= 0xA2 and code ~= 0xC2 and code ~= 0xE2 end
local function jam()
    local counter = memory.getregister("pc")
    if counter >= 0x2000 and counter < 0x6000 then return nil end
    return STOPPING[memory.readbyte(counter)] and counter or nil
end

local function crc(bytes)
    local value = gethash(bytes, #bytes)
    return value < 0 and value + 4294967296 or value
end

-- Sprite memory can't be read here. Programs fill it by DMA: the page that each write to $4014 names is
-- kept; the hook runs before the program goes on, so the page is whole.
local sprites
local function watch_sprites(on)
    sprites = string.rep("\248", 256)
    memory.registerwrite(0x4014, 1, on and function(_, _, page)
        sprites = memory.readbyterange(page * 256, 256)
    end or nil)
end

local function frame_code()
    local screen = ppu.readbyterange(0x2000, 0x1000) .. ppu.readbyterange(0x3F00, 32)
    return string.format("%08X%08X%08X", crc(screen), crc(sprites), crc(ppu.readbyterange(0, 0x2000)))
end

-- Bits of a pad, the highest first.
local BUTTONS = {"A", "B", "select", "start", "up", "down", "left", "right"}
local pad_tables = {}
for state = 0, 255 do
    local held, rest = {}, state
    for bit = 8, 1, -1 do
        if rest % 2 == 1 then held[BUTTONS[bit]] = true end
        rest = math.floor(rest / 2)
    end
    pad_tables[state] = held
end

-- Counts the writes to FIRST-LAST in `seen`.
local function watch(first, last, seen)
    seen.count, seen.address, seen.value, seen.counter = 0, 0, 0, 0
    memory.registerwrite(first, last - first + 1, function(address, _, value)
        if seen.count == 0 then
            seen.address, seen.value, seen.counter = address, value or 0, memory.getregister("pc")
        end
        seen.count = seen.count + 1
    end)
end

-- At its "normal" speed the emulator keeps the console's pace and plays its sound, if it was started with
-- it; at "turbo" it does neither.
local speed
local function go_at(wanted)
    if speed == wanted then return end
    emu.speedmode(wanted)
    emu.message("") -- it has written its new speed into the picture
    speed = wanted
end

local Orders = {}

-- frames, pads 1 and 2, address to reach or "-", codes 0 or 1, picture 0 or 1, silent 0 or 1, ranges
-- FIRST-LAST.
-- Gives a line "frames reached jam", a line for each range, the codes in a line, the picture's pixels.
function Orders.run(frames, pad1, pad2, target, codes, picture, silent, ...)
    go_at(silent == "1" and "turbo" or "normal")
    local ranges, watched, list = {...}, {}, {}
    local reached, jammed = false, nil
    if target ~= "-" then
        target = tonumber(target)
        memory.registerexec(target, 1, function()
            reached = true
            for _, seen in ipairs(watched) do seen.count = 0 end
        end)
    end
    for i, range in ipairs(ranges) do
        local first, last = range:match("(%d+)-(%d+)")
        watched[i] = {first = tonumber(first), last = tonumber(last)}
        watch(watched[i].first, watched[i].last, watched[i])
    end
    if codes == "1" then watch_sprites(true) end
    local held1, held2 = pad_tables[tonumber(pad1)], pad_tables[tonumber(pad2)]
    local passed = 0
    for _ = 1, tonumber(frames) do
        joypad.set(1, held1)
        joypad.set(2, held2)
        emu.frameadvance()
        passed = passed + 1
        if codes == "1" then list[passed] = frame_code() end
        jammed = jam()
        if reached or jammed then break end
    end
    if target ~= "-" then memory.registerexec(target, 1, nil) end
    if codes == "1" then watch_sprites(false) end
    local lines = {string.format("%d %d %d", passed, reached and 1 or 0, jammed or -1)}
    for _, seen in ipairs(watched) do
        memory.registerwrite(seen.first, seen.last - seen.first + 1, nil)
        lines[#lines + 1] = string.format("%d %d %d %d", seen.count, seen.address, seen.value, seen.counter)
    end
    lines[#lines + 1] = table.concat(list)
    local shown = picture == "1" and gui.gdscreenshot():sub(PICTURE_HEAD + 1) or ""
    return table.concat(lines, "\n") .. "\n" .. shown
end

function Orders.cpu(address, count)
    return memory.readbyterange(tonumber(address), tonumber(count))
end

function Orders.ppu(address, count)
    return ppu.readbyterange(tonumber(address), tonumber(count))
end

function Orders.write(address, digits)
    local bytes = text_of(digits)
    for i = 1, #bytes do memory.writebyte(tonumber(address) + i - 1, bytes:byte(i)) end
    return ""
end

local kept
function Orders.keep()
    kept = kept or savestate.object()
    savestate.save(kept)
    return ""
end

function Orders.restore()
    assert(kept, "no state is kept")
    savestate.load(kept)
    return ""
end

-- Black colours from the first moment on, as the menu leaves them to a game.
local function begin()
    local function send(register, ...)
        for _, value in ipairs({...}) do memory.writebyte(register, value) end
    end
    send(0x2006, 0x3F, 0x00)
    for _ = 1, 32 do send(0x2007, 0x0F) end
    send(0x2006, 0x00, 0x00)
    for _ = 1, STARTING_FRAMES do emu.frameadvance() end
    emu.message("") -- takes the place of the emulator's own words, which stand in its pictures
    return ""
end

-- The emulator's window loads the ROM. Where that comes late, because the machine is busy, the former game
-- goes on for some frames meanwhile; the count of frames begins anew with the load.
local LOADING_SECONDS = 20
local function await_load(former)
    local latest = os.time() + LOADING_SECONDS
    while emu.emulating() and emu.framecount() >= former do
        assert(os.time() < latest, "the emulator doesn't load the ROM")
        emu.frameadvance()
    end
end

function Orders.load(digits)
    kept = nil
    local former = emu.framecount()
    emu.loadrom(text_of(digits))
    await_load(former)
    if not emu.emulating() then
        answer("!", "")
        os.exit(1)
    end
    return begin()
end

function Orders.power()
    emu.poweron()
    return begin()
end

function Orders.reset()
    emu.softreset()
    return begin()
end

-- The last one: the emulator closes the game, which writes its battery's memory.
local closing = false
function Orders.close()
    closing = true
    return ""
end

local function serve()
    go_at("turbo")
    begin()
    answer("+", "")
    for line in orders:lines() do
        local words = {}
        for word in line:gmatch("%S+") do words[#words + 1] = word end
        answer("+", Orders[words[1]](unpack(words, 2)))
        if closing then return end
    end
end

-- A frame's end can't cross a protected call, but it can be passed on from a coroutine, whose errors are
-- caught here.
local script = coroutine.create(serve)
repeat
    local good, message = coroutine.resume(script)
    if not good then
        answer("-", tostring(message))
        os.exit(1)
    end
    if coroutine.status(script) ~= "dead" then coroutine.yield() end
until coroutine.status(script) == "dead"
if not closing then os.exit(0) end
emu.exit()
