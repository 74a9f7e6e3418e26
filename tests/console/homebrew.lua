-- Writes down what a program shows, frame by frame.

-- n lines to frames.txt: CRC-32 of name tables and palette, of sprite memory, of the tiles in view.
-- Puts how often the program writes to where MINDKIDS has its registers.
function record(n)
    local out = assert(io.open("frames.txt", "w"))
    local writes = 0
    memory.registerwrite(0x5000, 0x1000, function() writes = writes + 1 end)
    for _ = 1, n do
        frames(1)
        out:write(string.format("%08X %08X %08X\n", crc(ppu_bytes(0x2000, 0x1000) .. palette()),
            crc(oam()), crc(ppu_bytes(0, 0x2000))))
    end
    out:close()
    put("register writes", writes)
end

-- The palette that the menu hands over: black. Some games rely on one that a console happens to have.
function darken()
    write_ppu(0x3F00, string.rep("\15", 32))
    write_ppu(0x0000, "")
end

-- Goes to item `index` of the menu and starts it. Goes on until the menu's last piece of code, which
-- clears RAM at SELECT_CLEAR_ADDR, has run.
function start_item(index, page_size)
    boot()
    for _ = 1, math.floor(index / page_size) do move("right") end
    for _ = 1, index % page_size do move("down") end
    local handed_over = false
    memory.registerexec(0x01E0, 1, function()
        handed_over = true
        forget_oam()
    end)
    press("start", 2, 0)
    assert(wait_until(function() return handed_over end, 100), "the menu doesn't hand over")
end
