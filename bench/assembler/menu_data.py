"""Writes the files that a build puts beside menu.asm, for a made-up list of games.

The texts have the form of the builder's own, comments included, so that the assembler gets what it
gets in a build.
"""

import pathlib

WORDS = ("SUPER", "MEGA", "BLUE", "NIGHT", "ROBOT", "RALLY", "QUEST", "PUZZLE", "TOWER", "STAR",
         "RIVER", "CASTLE", "NINJA", "OCEAN", "HERO", "TENNIS", "MAZE", "RACER", "GARDEN", "MOON")
BANK = 8192
RECORD = 12  # bytes of a COOLGIRL game
FIELDS = ("Mirroring D0(0: H 1: V) Battery-backed: D1(0: N 1: Y) Four-screen: D2(0: N 1: Y)",
          *(f"Reg{i} for PRG" for i in range(8)))


def game_names(count):
    names = []
    for i in range(count):
        words = [WORDS[i * k % len(WORDS)] for k in (7, 11, 13)]
        names.append((f"{i + 1:04}." + " ".join(words) + f" {i % 97}")[:26])
    return names


def split_banks(sizes):
    """The first game of each bank, for games of these sizes, pointers included."""
    starts, used = [], BANK
    for game, size in enumerate(sizes):
        if used + size > BANK:
            starts.append(game)
            used = 2
        used += size
    return starts


def rows(labels, directive):
    for at in range(0, len(labels), 10):
        yield f" {directive} " + ",".join(labels[at:at + 10])


def bank_table(name, starts, count):
    ends = starts[1:] + [count]
    banks = [bank for bank, start in enumerate(starts) for _ in range(start, ends[bank])]
    return [name, *rows([f"${bank:02X}" for bank in banks], ".DB")]


def list_bank(names, first):
    labels = [f"game_name_{first + i:03}" for i in range(len(names))]
    lines = [f"game_name_begin_{first:03}", f" .WORD {first}", f"game_name_list_{first:03}"]
    lines += [*rows(labels, ".WORD"), ""]
    return lines + [f'{label} .STR "{name}"' for label, name in zip(labels, names)] + [""]


def data_bank(names, first):
    labels = [f"game_final_data_{first + i:03}" for i in range(len(names))]
    lines = [";COOLGIRL", f"game_final_data_begin_{first:03}", f" .WORD {first}",
             f"game_final_data_list_{first:03}", *rows(labels, ".WORD"), ""]
    for i, (label, name) in enumerate(zip(labels, names)):
        game = first + i
        lines += [f"{label};{name}", f" .DW ${game * 37 & 0xFFFF:04X} ;CHR 8KB offset",
                  f" .DB ${game % 33:02X} ;CHR 8KB count"]
        lines += [f" .DB ${game * (k + 3) & 0xFF:02X} ;{field}" for k, field in enumerate(FIELDS)]
    return lines + [""]


def config(count, name_banks, data_banks):
    values = {"BIG_CURSOR": 0, "BIG_SPRITE": 0, "CAPTION_LENGTH": 0, "NAME_INSERT_ROW": 0,
              "FINAL_DATA_ENABLE": 1, "NAME_BANK_COUNT": name_banks, "DATA_BANK_COUNT": 0,
              "FINAL_DATA_BANK_COUNT": data_banks, "BOARD_TYPE": 2, "MENU_PRG_SIZE": 8,
              "MENU_CHR_SIZE": 0, "MENU_MUSIC": 1, "PAGE_TURNING_SPEED": 2,
              "CUSTOM_MENU_ENABLE": 0, "GAMES_TOTAL": count, "MENU_SHOW_STYLE": 0,
              "SHOW_PAGE_NUMBER": 1, "PAGE_SIZE": 20, "SPRITE_TILE_SIZE": 1,
              "CURSOR_ARROW_TILE": "$1F", "CURSOR_ARROW_X": "$28", "CURSOR_ARROW_Y": "$2F",
              "CURSOR_ARROW_MODE": "$00"}
    return [f"{name} = {value}" for name, value in values.items()]


def write_all(folder, count):
    """Writes everything that menu.asm includes below `folder`."""
    build, data = folder / "build", folder / "menu_data"
    build.mkdir(parents=True, exist_ok=True)
    data.mkdir(exist_ok=True)
    names = game_names(count)
    name_starts = split_banks([len(name) + 3 for name in names])
    data_starts = split_banks([RECORD + 2] * count)
    texts = {
        "game_config.asm": config(count, len(name_starts), len(data_starts)),
        "game_list_bank.asm": bank_table("game_list_bank_index", name_starts, count),
        "game_final_data_bank.asm": bank_table("game_final_data_bank_index", data_starts, count),
        "game_title.asm": [f' .STR "{count} IN 1"'],
        "game_sprite_list.asm": [" .DB $F8,$00,$00,$F8"],
    }
    for starts, form, make in ((name_starts, "game_list_{:X}.asm", list_bank),
                               (data_starts, "game_final_data_{:X}.asm", data_bank)):
        for bank, (start, end) in enumerate(zip(starts, starts[1:] + [count])):
            texts[form.format(bank)] = make(names[start:end], start)
    for name, lines in texts.items():
        (build / name).write_bytes("".join(line + "\r\n" for line in lines).encode())
    for path, size in ((build / "game_name_table.bin", 1024), (build / "game_big_arrow_data.bin", 16),
                       (build / "char_mapping.bin", 256), (data / "chr_data.bin", BANK)):
        path.write_bytes(bytes(i * 7 & 0xFF for i in range(size)))


if __name__ == "__main__":
    import sys
    write_all(pathlib.Path(sys.argv[1]), int(sys.argv[2]))
