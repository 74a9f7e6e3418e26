-- Helpers for scripts that drive the menu. Addresses of its variables as docs/menu.md has them.

local PAGE, SELECTED, UPDATING, DELAY = 0x53, 0x57, 0x5D, 0x64
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

-- One line of state: item, first item of the page, Y of the first sprite, frames of the last
-- redraw, and the screen's 960 tiles.
function put_state(key, busy)
    put(key, string.format("%d %d %d %d %s", selected(), peek16(PAGE), sprite(0).y, busy or 0,
        hex(ppu_bytes(0x2000, 960))))
end

-- One letter per move: U D L R are the directions, S is Select, A and B themselves.
local BUTTONS = {U = "up", D = "down", L = "left", R = "right", S = "select", A = "A", B = "B"}
function walk(moves)
    put_state("state 0")
    for i = 1, #moves do
        put_state("state " .. i, move(BUTTONS[moves:sub(i, i)]))
    end
end

