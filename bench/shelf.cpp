// Makes a shelf: thousands of games of our own in one folder, as people have them. Names full of
// tags, versions, copies, a third of them in archives of every kind, some damaged; and a database
// of their names. What it makes is the same for the same number.
//   make_shelf FOLDER [GAMES]
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "common/archive_writer.h"
#include "rom/crc32.h"
#include "small_game.h"

namespace {

namespace fs = std::filesystem;
using bw::test::ArchiveMember;

constexpr std::array kFirst{
    "Amber",   "Brass",   "Copper",  "Distant",   "Electric", "Frozen",    "Gentle",  "Hollow",
    "Iron",    "Jolly",   "Kindled", "Lonely",    "Midnight", "Noble",     "Orbital", "Paper",
    "Quiet",   "Rusty",   "Silver",  "Twisted",   "Umber",    "Velvet",    "Windy",   "Yellow",
    "Crimson", "Dancing", "Emerald", "Fearless",  "Golden",   "Humming",   "Ivory",   "Jade",
    "Kingly",  "Lucky",   "Marble",  "Northern",  "Opal",     "Patient",   "Rapid",   "Sunken",
    "Thirsty", "Unseen",  "Violet",  "Wandering", "Early",    "Clockwork", "Shallow", "Bright"};
constexpr std::array kSecond{
    "Anchor",     "Bridge",   "Castle", "Diver",     "Engine",   "Falcon",    "Garden",  "Harbour",
    "Island",     "Juggler",  "Knight", "Lantern",   "Meadow",   "Navigator", "Orchard", "Planet",
    "Quarry",     "Rocket",   "Sailor", "Tunnel",    "Umbrella", "Valley",    "Weaver",  "Yard",
    "Zeppelin",   "Baker",    "Comet",  "Dragonfly", "Express",  "Fiddler",   "Glacier", "Hunter",
    "Inventor",   "Jungle",   "Kite",   "Ladder",    "Mill",     "Nomad",     "Owl",     "Pirate",
    "Ranger",     "Sparrow",  "Tower",  "Voyage",    "Wizard",   "Acrobat",   "Beacon",  "Canyon",
    "Deputy",     "Explorer", "Forest", "Geyser",    "Helmet",   "Icicle",    "Jester",  "Keeper",
    "Lighthouse", "Mirror",   "Needle", "Oracle",    "Pilot",    "Quest",     "River",   "Summit"};

// Tags of the versions of a title, the best one first; and how an older habit writes them.
struct Version {
    const char* tags;
    const char* old;
};
constexpr std::array kVersions{
    Version{" (USA)", " (U) [!]"},
    Version{" (Europe) (Rev 1)", " (E) (PRG1) [!]"},
    Version{" (Japan)", " (J)"},
    Version{" (USA) [b1]", " (U) [b1]"},
    Version{" (World) (Rev A) (Unl)", " (JU)"},
    Version{" (USA) (Proto)", " (U) (Prototype) [h1]"},
};

// Numbers without a rule that anybody would see, the same in every run.
class Dice {
  public:
    uint32_t Of(uint32_t sides) {
        state_ = state_ * 1664525u + 1013904223u;
        return (state_ >> 8) % sides;
    }

  private:
    uint32_t state_ = 20261122;
};

struct Game {
    std::string file;  // its name, extension and all
    std::string image;
};

class Shelf {
  public:
    Shelf(fs::path folder, uint32_t games) : folder_(std::move(folder)), games_(games) {}

    void Make() {
        fs::create_directories(folder_ / "shelf");
        for (uint32_t title = 0; made_ < games_; ++title)
            AddTitle(title);
        for (auto& [kind, members] : archives_)
            Close(kind, members);
        Damage();
        WriteDatabase();
        std::printf("%u images, %u of them in %u archives\n", made_, archived_, archiveCount_);
    }

  private:
    static std::string Title(uint32_t number) {
        const uint32_t pairs = kFirst.size() * kSecond.size();
        std::string title = fmt::format("{} {}", kFirst[number % kFirst.size()],
                                        kSecond[number / kFirst.size() % kSecond.size()]);
        if (number >= pairs) title += fmt::format(" {}", number / pairs + 1);
        return title;
    }

    bench::SmallGame Shape(uint32_t number) {
        const uint32_t kind = dice_.Of(20);
        bench::SmallGame game{.number = number, .battery = dice_.Of(50) == 0};
        if (kind < 12) {
            game.prgUnits = 1 + dice_.Of(2);
        } else {
            game.mmc3 = true;
            game.prgUnits = kind < 19 ? 8 : 16;
            game.chrUnits = kind < 17 ? 4 : 16;
        }
        return game;
    }

    std::string Image(const bench::SmallGame& game) {
        std::string& program = programs_[game.number % 8 * 2 + (game.mmc3 ? 1 : 0)];
        if (program.empty()) program = bench::SmallProgram(game.number % 8, game.mmc3);
        return bench::SmallImage(game, program);
    }

    void AddTitle(uint32_t number) {
        const std::string title = Title(number);
        std::string shown = title;
        // "Lantern, The": one title in nine.
        const bool article = number % 9 == 4;
        if (article) shown += ", The";
        const uint32_t versions = 1 + dice_.Of(kVersions.size());
        const bench::SmallGame shape = Shape(number * 8);
        for (uint32_t version = 0; version < versions && made_ < games_; ++version) {
            bench::SmallGame game = shape;
            game.number += version;
            Game added{.file = {}, .image = Image(game)};
            const std::string right = shown + kVersions[version].tags;
            Note(right, added.image);
            added.file = right;
            switch (dice_.Of(4)) {
                case 0:
                    added.file = shown + kVersions[version].old;
                    break;
                case 1:
                    added.file =
                        fmt::format("{:04}. {}{}", number + 1, shown, kVersions[version].tags);
                    break;
                case 2:
                    for (char& sign : added.file)
                        sign = sign == ' ' ? '_' : sign;
                    break;
                default:
                    break;
            }
            added.file += ".nes";
            const bool copy = dice_.Of(8) == 0 && made_ + 1 < games_;
            Put(added);
            if (copy) Put({"Copy of " + added.file, added.image});
        }
    }

    // In a folder, or in the archive of a kind that is being filled.
    void Put(const Game& game) {
        static constexpr std::array kKinds{"zip", "7z", "rar", "tar.gz", "tar.xz", "tar.zst", "gz"};
        const uint32_t number = made_++;
        if (number % 3 != 0) {
            const fs::path folder = folder_ / "shelf" / fmt::format("{:02}", number / 500);
            fs::create_directories(folder);
            bw::test::WriteText(folder / Free(folder, game.file), game.image);
            return;
        }
        ++archived_;
        const std::string kind = kKinds[archived_ % kKinds.size()];
        if (kind == "gz") {
            const fs::path folder = folder_ / "shelf" / "single";
            fs::create_directories(folder);
            WriteArchive(folder / Free(folder, game.file + ".gz"), {{game.file, game.image}});
            ++archiveCount_;
            return;
        }
        std::vector<ArchiveMember>& members = archives_[kind];
        members.push_back({fmt::format("set {}/{}", members.size() % 4, game.file), game.image});
        if (members.size() == 100) Close(kind, members);
    }

    void Close(const std::string& kind, std::vector<ArchiveMember>& members) {
        if (members.empty()) return;
        WriteArchive(folder_ / "shelf" / fmt::format("set {:03}.{}", archiveCount_++, kind),
                     members);
        members.clear();
    }

    // A copy of a title in the same folder gets a number.
    static std::string Free(const fs::path& folder, const std::string& name) {
        std::string free = name;
        for (int i = 2; fs::exists(folder / free); ++i)
            free = fmt::format("{} {}", i, name);
        return free;
    }

    void Damage() const {
        const fs::path folder = folder_ / "shelf" / "damaged";
        fs::create_directories(folder);
        for (uint32_t i = 0; i < 40; ++i) {
            const std::string image = Image0(i);
            const auto name = folder / fmt::format("Broken Game {}.nes", i);
            bw::test::WriteText(name, i % 2 == 0 ? image.substr(0, i) : "PK\3\4" + image.substr(4));
        }
        WriteArchive(folder / "half.zip", {{"Half (USA).nes", Image0(91)}, {"b.nes", Image0(92)}});
        const std::string whole = bw::test::ReadText(folder / "half.zip");
        bw::test::WriteText(folder / "half.zip", whole.substr(0, whole.size() / 2));
        bw::test::WriteText(folder / "none.7z", "this is no archive");
    }
    static std::string Image0(uint32_t number) {
        return bench::SmallImage({.number = 900000 + number}, bench::SmallProgram(0, false));
    }

    void Note(const std::string& name, const std::string& image) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(image.data());
        const uint32_t crc = bw::Crc32({bytes + 16, image.size() - 16});
        database_ += fmt::format(
            "\t<game name=\"{0}\">\n\t\t<description>{0}</description>\n"
            "\t\t<rom name=\"{0}.nes\" size=\"{1}\" crc=\"{2:08X}\"/>\n\t</game>\n",
            name, image.size() - 16, crc);
    }

    void WriteDatabase() const {
        bw::test::WriteText(folder_ / "names.dat",
                            "<?xml version=\"1.0\"?>\n<datafile>\n\t<header>\n"
                            "\t\t<name>A shelf</name>\n\t</header>\n" +
                                database_ + "</datafile>\n");
    }

    static void WriteArchive(const fs::path& file, const std::vector<ArchiveMember>& members) {
        bw::test::WriteArchive(file, members);
    }

    fs::path folder_;
    uint32_t games_;
    uint32_t made_ = 0;
    uint32_t archived_ = 0;
    uint32_t archiveCount_ = 0;
    Dice dice_;
    std::array<std::string, 16> programs_;
    std::map<std::string, std::vector<ArchiveMember>> archives_;
    std::string database_;
};

}  // namespace

int main(int count, char** words) {
    if (count < 2) {
        std::puts("make_shelf FOLDER [GAMES]");
        return 2;
    }
    Shelf(words[1], count > 2 ? static_cast<uint32_t>(std::atoi(words[2])) : 12000).Make();
    return 0;
}
