#include "rom/archive_names.h"

#include <algorithm>
#include <array>
#include <vector>

#include "support/file_queries.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr size_t kLongestPlace = 2048;  // bytes; systems open no paths much longer

struct Ending {
    std::string_view text;
    ArchiveKind kind;
};
constexpr std::array kEndings = {
    Ending{".zip", ArchiveKind::kZip},     Ending{".7z", ArchiveKind::kSevenZip},
    Ending{".rar", ArchiveKind::kRar},     Ending{".tar", ArchiveKind::kTar},
    Ending{".tar.gz", ArchiveKind::kTar},  Ending{".tgz", ArchiveKind::kTar},
    Ending{".tar.bz2", ArchiveKind::kTar}, Ending{".tbz2", ArchiveKind::kTar},
    Ending{".tar.xz", ArchiveKind::kTar},  Ending{".txz", ArchiveKind::kTar},
    Ending{".tar.zst", ArchiveKind::kTar}, Ending{".tzst", ArchiveKind::kTar},
    Ending{".gz", ArchiveKind::kGzip},
};

template <typename Unit>
constexpr bool IsSeparator(Unit unit) {
    return unit == '/' || unit == static_cast<Unit>(fs::path::preferred_separator);
}

// Of the last component of `path`, which needs more than the ending.
template <typename Unit>
ArchiveKind KindByEnding(std::basic_string_view<Unit> path) {
    const auto same = [](Unit a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == static_cast<Unit>(b);
    };
    for (const Ending& ending : kEndings) {
        const size_t size = ending.text.size();
        if (path.size() > size && !IsSeparator(path[path.size() - size - 1]) &&
            std::ranges::equal(path.substr(path.size() - size), ending.text, same)) {
            return ending.kind;
        }
    }
    return ArchiveKind::kNone;
}

// 0x80 to 0xFF. Source: the Unicode Consortium's table CP437.TXT.
constexpr std::u16string_view kCodePage437 =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄"
    u"▌▐▀"
    u"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
static_assert(kCodePage437.size() == 128);

std::string FromCodePage437(std::string_view bytes) {
    std::u16string wide;
    for (const char byte : bytes) {
        const auto unit = static_cast<unsigned char>(byte);
        wide += unit < 0x80 ? char16_t{unit} : kCodePage437[unit - 0x80u];
    }
    return ToUtf8(wide);
}

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return (byte & 0x80) == 0; });
}

}  // namespace

ArchiveKind ArchiveKindOf(std::string_view name) {
    return KindByEnding(name);
}

std::string PlaceText(std::string_view name) {
    const bool utf8 = IsAscii(name) || ToUtf8(ToWide(name)) == name;
    std::string place = utf8 ? std::string(name) : FromCodePage437(name);
    for (char& byte : place) {
        if (byte == '\\') byte = '/';
        if ((byte >= 0 && byte < ' ') || byte == 0x7F) byte = '_';
    }
    return place;
}

std::optional<std::string> NormalPlace(std::string_view place) {
    const bool drive = place.size() > 2 && place[1] == ':' && place[2] == '/';
    if (place.starts_with('/') || drive || place.size() > kLongestPlace) return std::nullopt;
    std::string normal;
    while (!place.empty()) {
        const std::string_view component = place.substr(0, place.find('/'));
        place.remove_prefix(std::min(component.size() + 1, place.size()));
        if (component == "..") return std::nullopt;
        if (component.empty() || component == ".") continue;
        if (!normal.empty()) normal += '/';
        normal += component;
    }
    return normal;
}

bool PlaceLess(std::string_view a, std::string_view b) {
    const auto rank = [](char byte) { return byte == '/' ? 0 : static_cast<unsigned char>(byte); };
    return std::ranges::lexicographical_compare(a, b, {}, rank, rank);
}

bool ArchiveSplits::Next() {
    const std::basic_string_view<fs::path::value_type> path = path_;
    while (end_ < path.size()) {
        const auto* const next = std::find_if(path.begin() + static_cast<std::ptrdiff_t>(end_) + 1,
                                              path.end(), IsSeparator<fs::path::value_type>);
        end_ = static_cast<size_t>(next - path.begin());
        if (end_ == path.size() && !whole_) return false;
        if (KindByEnding(path.substr(0, end_)) != ArchiveKind::kNone) return true;
    }
    return false;
}

std::string ArchiveSplits::Place() const {
    if (end_ == path_.size()) return {};
    std::string place = WideToBytes(PathText(path_.substr(end_ + 1)));
    if constexpr (fs::path::preferred_separator != '/') {
        std::ranges::replace(place, static_cast<char>(fs::path::preferred_separator), '/');
    }
    return place;
}

std::optional<ArchivePlace> FindInArchive(const fs::path& path, bool whole) {
    for (ArchiveSplits split(path, whole); split.Next();) {
        fs::path archive = split.Archive();
        if (IsFile(archive)) return {{std::move(archive), split.Place()}};
    }
    return std::nullopt;
}

}  // namespace bw
