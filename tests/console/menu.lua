-- Helpers for scripts that drive the menu. Addresses of its variables as docs/menu.md has them.

local PAGE, SELECTED, UPDATING = 0x53, 0x57, 0x5D
FC_PPU_CTRL, FC_PPU_MASK, FC_PPU_CURSOR = 0x2C0, 0x2C1, 0x2C2

function selected() return peek16(SELECTED) end
function updating() return peek(UPDATING) ~= 0 end

-- From power-on to the lit and quiet screen.
function boot()
    assert(wait_until(function() return peek(FC_PPU_MASK) == 0x1E end, 300), "the menu doesn't show")
    assert(wait_until(function() return not updating() end, 60), "the first page doesn't end")
    frames(3)
end

-- Presses a button for two frames and waits until the page stands. Gives the number of frames in
-- which names were sent.
function move(buttons, pad)
    local busy = 0
    local function step()
        frames(1)
        if updating() then busy = busy + 1 end
    end
    hold(buttons, pad)
    step() step()
    hold("", pad)
    step()
    while updating() do
        assert(busy < 120, "the page doesn't end")
        step()
    end
    frames(2)
    return busy
end

-- One letter per move: U D L R are the directions, S is Select, A and B themselves. look(n) is
-- called before the first and after the nth; without it the state is put: item, first item of the
-- page, Y of the first sprite, frames of the last redraw, and the screen's 960 tiles.
local BUTTONS = {U = "up", D = "down", L = "left", R = "right", S = "select", A = "A", B = "B"}
function walk(moves, look)
    local busy = 0
    look = look or function(n)
        put("state " .. n, string.format("%d %d %d %d %s", selected(), peek16(PAGE), oam():byte(1),
            busy, hex(ppu_bytes(0x2000, 960))))
    end
    look(0)
    for i = 1, #moves do
        busy = move(BUTTONS[moves:sub(i, i)])
        look(i)
    end
end

-- Bytes into video memory, reached as programs reach it. The menu's NMI puts its own address back.
function write_ppu(address, data)
    memory.readbyte(0x2002)
    memory.writebyte(0x2006, math.floor(address / 256))
    memory.writebyte(0x2006, address % 256)
    for i = 1, #data do memory.writebyte(0x2007, data:byte(i)) end
end

-- What a game finds of the menu: the bytes of both name tables that aren't 0, and of the pattern
-- memory if it has no tiles of its own.
function leftovers(own_tiles)
    local picture = ppu_bytes(0x2000, 0x1000) .. (own_tiles and "" or ppu_bytes(0, 0x2000))
    return hex(picture:gsub("%z", ""))
end

-- Fills work RAM, whose every byte differs from its neighbours', and gives its first bytes and the
-- CRC-32 of all, as work_ram() does later.
function fill_work_ram()
    for i = 0, 0x1FFF do memory.writebyte(0x6000 + i, (i * 7 + math.floor(i / 256) + 3) % 256) end
    return work_ram()
end
function work_ram()
    return string.format("%s %08X", hex(bytes(0x6000, 16)), crc(bytes(0x6000, 0x2000)))
end

-- START, and on until a game of the tests' own waits in its loop.
function start_game()
    press("start", 2, 0)
    assert(wait_until(function()
        local pc = memory.getregister("pc")
        return pc >= 0xFFC0 and pc < 0xFFC4
    end, 200), "the game doesn't run")
end
