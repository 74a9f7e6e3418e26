// tilepack OUTPUT PICTURES...: packs text pictures of tiles into an 8 KB file of pattern tables.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "tiles/tile_pack.h"

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: tilepack OUTPUT PICTURES...\n";
        return 2;
    }
    bw::PatternTables tables;
    size_t faults = 0;
    for (int i = 2; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        std::ostringstream text;
        if (!file || !(text << file.rdbuf())) {
            std::cerr << argv[i] << ": can't read the file\n";
            ++faults;
            continue;
        }
        for (const std::string& fault : bw::PackTiles(text.str(), argv[i], tables)) {
            std::cerr << fault << "\n";
            ++faults;
        }
    }
    if (faults > 0) return 1;

    std::ofstream out(argv[1], std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(tables.bytes.data()),
              static_cast<std::streamsize>(tables.bytes.size()));
    out.close();
    if (!out) {
        std::cerr << argv[1] << ": can't write the file\n";
        std::remove(argv[1]);
        return 1;
    }
    return 0;
}
