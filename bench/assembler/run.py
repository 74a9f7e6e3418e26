#!/usr/bin/env python3
"""Times nesasm against 64tass, dasm and ca65+ld65 on the menu with its tables for many games.

All assemble the same program, spelled for each; the ROMs are compared byte for byte. The programs
run in turn, so that a busy moment of the machine hits all alike. Prints median and least time of
process start to exit, and the ratio to ours.
"""

import argparse
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import menu_data
import translate

ROOT = pathlib.Path(__file__).resolve().parents[2]


def commands(nesasm, rom_size):
    """Per assembler: folder, its commands, and the ROM they leave behind with its header's size."""
    config = f"MEMORY {{ ROM: start=0, size={rom_size}, fill=yes, fillval=$FF; }}\n" \
             "SEGMENTS { CODE: load=ROM, type=ro; }\n"
    return config, {
        "nesasm": ("nesasm", [[str(nesasm), "menu.asm"]], "menu.nes", 16),
        "64tass": ("64tass", [["64tass", "-C", "-f", "-w", "-q", "-o", "menu.bin", "menu.asm"]],
                   "menu.bin", 0),
        "dasm": ("dasm", [["dasm", "menu.asm", "-f3", "-omenu.bin"]], "menu.bin", 0),
        "ca65+ld65": ("ca65", [["ca65", "-o", "menu.o", "menu.asm"],
                               ["ld65", "-C", "flat.cfg", "-o", "menu.bin", "menu.o"]],
                      "menu.bin", 0),
    }


def run_once(folder, programs):
    """Seconds from the start of the first program to the end of the last one."""
    os.chdir(folder)
    quiet = [(os.POSIX_SPAWN_OPEN, stream, os.devnull, os.O_WRONLY, 0) for stream in (1, 2)]
    begin = time.perf_counter()
    for path, words in programs:
        child = os.posix_spawn(path, words, os.environ, file_actions=quiet)
        if os.waitpid(child, 0)[1] != 0:
            subprocess.run(words, check=False)
            sys.exit(f"{words[0]} failed")
    return time.perf_counter() - begin


def prepare(folder, games):
    ours = folder / "nesasm"
    ours.mkdir()
    for source in (ROOT / "menu").glob("*.asm"):
        shutil.copy(source, ours)
    menu_data.write_all(ours, games)
    for dialect in translate.DIALECTS:
        size = translate.translate(ours, folder / dialect.name, dialect)
    return size


def count_lines(folder):
    return sum(path.read_bytes().count(b"\n") for path in folder.rglob("*.asm"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("nesasm", type=pathlib.Path)
    parser.add_argument("--games", type=int, default=1024)
    parser.add_argument("--runs", type=int, default=40)
    parser.add_argument("--keep", type=pathlib.Path, help="leave the sources in this new folder")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as temporary:
        folder = (options.keep or pathlib.Path(temporary)).resolve()
        folder.mkdir(exist_ok=True)
        size = prepare(folder, options.games)
        config, programs = commands(options.nesasm.resolve(), size)
        (folder / "ca65" / "flat.cfg").write_text(config)
        missing = [name for name, entry in programs.items() if not shutil.which(entry[1][0][0])]
        for name in missing:
            print(f"{name} isn't installed and is left out", file=sys.stderr)
            del programs[name]
        times = {name: [] for name in programs}
        paths = {name: [(shutil.which(words[0]), words) for words in entry[1]]
                 for name, entry in programs.items()}
        for _ in range(options.runs):
            for name, entry in programs.items():
                # A build assembles in a fresh folder. Over an old file a rename waits for the disk on
                # some file systems, which would be all that is measured.
                (folder / entry[0] / entry[2]).unlink(missing_ok=True)
                times[name].append(run_once(folder / entry[0], paths[name]))
        report(folder, programs, times)


def report(folder, programs, times):
    base = statistics.median(times["nesasm"])
    least = min(times["nesasm"])
    reference = None
    print(f"{count_lines(folder / 'nesasm')} lines, load {os.getloadavg()[0]:.1f}")
    print(f"{'':10} {'median ms':>10} {'ratio':>6} {'least ms':>10} {'ratio':>6}  ROM")
    same = True
    for name, (place, _, rom, header) in programs.items():
        data = (folder / place / rom).read_bytes()[header:]
        reference = reference or data
        same = same and data == reference
        median = statistics.median(times[name])
        print(f"{name:10} {median * 1e3:10.2f} {median / base:6.2f} {min(times[name]) * 1e3:10.2f} "
              f"{min(times[name]) / least:6.2f}  {'same' if data == reference else 'DIFFERS'}")
    if not same:
        sys.exit("the assemblers disagree")


if __name__ == "__main__":
    main()
