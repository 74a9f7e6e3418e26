// A database of names of 100 MB against expat's bare parse of the same file, without a handler; and
// what the filter and the names cost on a full list, 20,000 rows.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <unordered_set>
#include <vector>

#include <expat.h>

#include "common/temporary_folder.h"
#include "full_list.h"
#include "list/collection/dat_file.h"
#include "list/collection/name_changes.h"
#include "list/collection/same_games.h"
#include "list/search/list_filter.h"
#include "measure.h"
#include "support/files.h"

namespace {

constexpr int kRounds = 7;
constexpr uint64_t kDatBytes = uint64_t{100} << 20;
constexpr size_t kPiece = 256 << 10;

std::string Hex(uint32_t value) {
    std::string digits(8, '0');
    std::snprintf(digits.data(), digits.size() + 1, "%08x", value);
    return digits;
}

// As the preservation groups write them. Gives the number of games.
uint32_t WriteDat(const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary);
    out << "<?xml version=\"1.0\"?>\n<datafile>\n\t<header>\n\t\t<name>Games</name>\n\t</header>\n";
    uint32_t game = 0;
    for (uint64_t written = 0; written < kDatBytes; ++game) {
        const std::string name = "The Legend of Game " + std::to_string(game) + " (USA) (Rev 1)";
        const std::string text =
            "\t<game name=\"" + name + "\">\n\t\t<description>" + name +
            "</description>\n\t\t<rom name=\"" + name + ".nes\" size=\"262160\" crc=\"" +
            Hex(game * 2654435761u) +
            "\" md5=\"0123456789abcdef0123456789abcdef\" "
            "sha1=\"0123456789abcdef0123456789abcdef01234567\" status=\"verified\"/>\n\t</game>\n";
        out << text;
        written += text.size();
    }
    out << "</datafile>\n";
    return game;
}

void BareParse(const std::filesystem::path& path) {
    const bw::FileResult<bw::File> file = bw::File::OpenForReading(path);
    const XML_Parser parser = XML_ParserCreate(nullptr);
    for (uint64_t done = 0;;) {
        auto* const buffer = static_cast<uint8_t*>(XML_GetBuffer(parser, kPiece));
        const size_t arrived = *file->ReadAt(done, {buffer, kPiece});
        done += arrived;
        if (XML_ParseBuffer(parser, static_cast<int>(arrived), arrived < kPiece) == 0) std::abort();
        if (arrived < kPiece) break;
    }
    XML_ParserFree(parser);
}

void Database() {
    const bw::test::TemporaryFolder folder;
    const std::filesystem::path file = folder.Path() / "games.dat";
    const uint32_t games = WriteDat(file);
    std::unordered_set<uint32_t> wanted;
    for (uint32_t i = 0; i < bw::kListLimit; ++i)
        wanted.insert({i * 7 * 2654435761u, i * 2 + 1});
    size_t found = 0;
    bench::Report("a database of 100 MB, " + std::to_string(games) + " games, against expat alone",
                  bench::InTurn(
                      kRounds, [&] { found = bw::ReadDat(file, wanted)->byCrc.size(); },
                      [&] { BareParse(file); }, [] {}));
    if (found < bw::kListLimit) std::abort();
}

template <typename Work>
void Say(const std::string& what, const Work& work) {
    std::vector<double> times;
    for (int round = 0; round < 2 * kRounds; ++round)
        times.push_back(bench::Time(work));
    std::printf("%-44s median %7.2f ms   most %7.2f ms\n", what.c_str(), bench::Median(times),
                *std::max_element(times.begin(), times.end()));
}

// A third of the rows are versions of the one above.
bw::GameList Shelf() {
    bw::GameList games = bench::FullList();
    for (size_t i = 0; i < games.size(); ++i) {
        bw::GameEntry& entry = games[i];
        const size_t game = i - (i % 3 == 1 ? 1 : 0);
        entry.name = games[game].name.substr(0, games[game].name.find(u" (")) +
                     (i % 3 == 1 ? u" (Japan) (Rev 1) [b1]" : u" (USA) (En,Fr,De) [!]");
        entry.path = u"/home/user/roms/Collection " + bw::ToWide(std::to_string(i / 500)) + u"/" +
                     entry.name + u".nes";
        entry.crcs = bw::DataCrcs{static_cast<uint32_t>(game * 2654435761u), 7};
        entry.size = 40976;
    }
    return games;
}

void List() {
    const bw::GameList games = Shelf();
    for (const char* text :
         {"zelda", "usa", "mapper:4", "size:>256k game", "board:coolboy battery:yes checked:no",
          "missing:", "same:data", "same:", "same: mapper:4 size:<512k usa"}) {
        Say(std::string("filter: ") + text,
            [&] { return bw::FilteredRows(games, bw::ToWide(text)).size(); });
    }
    std::vector<uint32_t> rows(games.size());
    std::iota(rows.begin(), rows.end(), 0u);
    const std::vector<size_t> rooms = bw::NameRooms(games, {});
    Say("tidy names, shortened", [&] { return bw::TidyChanges(games, rows, {}, rooms).size(); });
    Say("keep the best of each",
        [&] { return bw::Surplus(games, bw::SameGames(games), {}).size(); });
}

}  // namespace

int main() {
    List();
    Database();
    return 0;
}
