-- Writes down what a program shows, frame by frame, and prepares the console for a program that
-- runs by itself as the menu leaves it for a program that runs from the cart.

-- n lines to frames.txt: CRC-32 of name tables and palette, of sprite memory, of the tiles in view.
function record(n)
    local out = assert(io.open("frames.txt", "w"))
    for _ = 1, n do
        frames(1)
        out:write(string.format("%08X %08X %08X\n", crc(ppu_bytes(0x2000, 0x1000) .. palette()),
            crc(oam()), crc(ppu_bytes(0, 0x2000))))
    end
    out:close()
end

local function unhex(digits)
    return (digits:gsub("..", function(pair) return string.char(tonumber(pair, 16)) end))
end

-- Video memory is reached as programs reach it.
local function write_ppu(address, data)
    memory.readbyte(0x2002)
    memory.writebyte(0x2006, math.floor(address / 256))
    memory.writebyte(0x2006, address % 256)
    for i = 1, #data do memory.writebyte(0x2007, data:byte(i)) end
end

-- An MMC1 hides half of its CHR RAM until a program has told it otherwise, and takes no orders from
-- outside at power-on. So its program gets ten frames, and begins again when memory is prepared.
local function begin_again()
    for address = 0, 0x7FF do memory.writebyte(address, 0) end
    forget_oam()
    emu.softreset()
end

-- Both name tables, the tiles (where there is RAM for them) and the dark palette.
function prepare(mapper, tables, tiles, second_table)
    tables, tiles = unhex(tables), unhex(tiles)
    if mapper == 1 then frames(10) end
    write_ppu(0x0000, tiles)
    write_ppu(second_table, tables:sub(1025, 2048))
    write_ppu(0x2000, tables:sub(1, 1024)) -- behind the second one, which it may be
    write_ppu(0x3F00, string.rep("\15", 32))
    write_ppu(0x0000, "")
    if mapper == 1 then begin_again() end
end

-- Goes to item `index` of the menu and starts it. Puts what video memory holds at that moment, and
-- goes on until the menu's last piece of code, which clears RAM at SELECT_CLEAR_ADDR, has run.
function start_item(index, page_size)
    boot()
    for _ = 1, math.floor(index / page_size) do move("right") end
    for _ = 1, index % page_size do move("down") end
    put("tables", hex(ppu_bytes(0x2000, 0x400) .. ppu_bytes(0x2800, 0x400)))
    put("tiles", hex(ppu_bytes(0, 0x2000)))
    local handed_over = false
    memory.registerexec(0x01E0, 1, function()
        handed_over = true
        forget_oam()
    end)
    press("start", 2, 0)
    assert(wait_until(function() return handed_over end, 100), "the menu doesn't hand over")
end
