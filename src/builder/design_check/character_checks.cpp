// Characters of names, texts, caption and page number whose tile shows nothing.
#include <array>
#include <optional>

#include "builder/design_check/design_checks.h"
#include "builder/tables/design_compile.h"
#include "designer/model/tiles.h"

namespace bw {
namespace {

// Where a character stands first, by number.
struct Uses {
    std::optional<size_t> name;
    std::optional<size_t> text;
    bool caption = false;
    bool pageNumber = false;

    bool Any() const { return name || text || caption || pageNumber; }
};

class CharacterCheck {
  public:
    CharacterCheck(const CheckedDesign& design, FindingList& findings)
        : copy_(design.copy), screen_(design.screen), findings_(findings) {}

    void Run() {
        Collect();
        for (size_t code = 0; code < kCharMapSize; ++code)
            if (code != ' ' && uses_[code].Any()) CheckTile(code);
    }

  private:
    void Collect() {
        // Only what has columns on the screen counts, as nothing else is ever seen.
        const std::vector<std::u16string>& names = copy_.AllItemTextList;
        for (size_t i = 0; i < names.size(); ++i) {
            for (const char16_t unit : screen_.ShownName(names[i])) {
                Uses& uses = uses_[unit < kCharMapSize ? unit : u'?'];
                if (!uses.name) uses.name = i;
            }
        }
        const std::vector<TextItem>& texts = copy_.Store().CustomText;
        for (size_t i = 0; i < texts.size(); ++i) {
            for (const char16_t unit : ShownPart(texts[i]).text) {
                if (unit >= kCharMapSize) TellForeign(unit, PlacedText{i});
                Uses& uses = uses_[unit < kCharMapSize ? unit : u'?'];
                if (!uses.text) uses.text = i;
            }
        }
        for (const char16_t unit : screen_.ShownCaption()) {
            if (unit >= kCharMapSize) TellForeign(unit, ScreenObject::kCaption);
            uses_[unit < kCharMapSize ? unit : u'?'].caption = true;
        }
        if (copy_.ShowPageNumber) CollectPageNumber();
    }

    // All numbers have as many digits as the largest one.
    void CollectPageNumber() {
        const size_t pageSize = screen_.Settings().PageSize;
        const size_t pages = (copy_.AllItemTextList.size() + pageSize - 1) / pageSize;
        for (size_t digit = pages < 10 ? 1 : 0; digit <= std::min<size_t>(pages, 9); ++digit)
            uses_['0' + digit].pageNumber = true;
        uses_['/'].pageNumber = true;
    }

    // The designer leaves such a character out, a build takes a question mark for it.
    void TellForeign(char16_t unit, const DesignPlace& place) {
        findings_.Add(FindingSeverity::kWarning, TextId::kFindingForeignCharacter, place,
                      std::u16string(1, unit), [&] { return WhereText(place); });
    }

    std::u16string WhereText(const DesignPlace& place) const {
        const auto* text = std::get_if<PlacedText>(&place);
        return text == nullptr
                   ? findings_.Words(TextId::kCaption)
                   : FormatText(findings_.Words(TextId::kFindingTextNumber), text->index + 1);
    }

    void CheckTile(size_t code) {
        const uint8_t tile = copy_.Store().CharMapData[code];
        if (tile != 0 && !IsBlank(TileAt(copy_.Store(), PatternTable::kBackground, tile))) return;
        const std::u16string character =
            VisibleText(std::u16string(1, static_cast<char16_t>(code)));
        const std::u16string where = UsesText(uses_[code]);
        const bool mappable = code >= kFirstStripCode && code < kFirstStripCode + kStripCells;
        if (!mappable) {
            findings_.Add(FindingSeverity::kWarning, TextId::kFindingNoCharacter,
                          PlaceOf(uses_[code]), character, code, where);
            return;
        }
        const StripCharacter place{static_cast<uint8_t>(code)};
        if (tile == 0) {
            findings_.Add(FindingSeverity::kWarning, TextId::kFindingUnmapped, place, character,
                          where);
        } else {
            findings_.Add(FindingSeverity::kWarning, TextId::kFindingBlankCharacter, place,
                          character, where, unsigned{tile});
        }
    }

    std::u16string UsesText(const Uses& uses) const {
        std::u16string text;
        const auto add = [&](const std::u16string& use) {
            if (!text.empty()) text += findings_.Words(TextId::kFindingComma);
            text += use;
        };
        if (uses.name) {
            add(FormatText(findings_.Words(TextId::kFindingNameNumber), *uses.name + 1));
        }
        if (uses.text) add(WhereText(PlacedText{*uses.text}));
        if (uses.caption) add(findings_.Words(TextId::kCaption));
        if (uses.pageNumber) add(findings_.Words(TextId::kPageNumber));
        return text;
    }

    static DesignPlace PlaceOf(const Uses& uses) {
        if (uses.text) return PlacedText{*uses.text};
        return uses.caption ? ScreenObject::kCaption : ScreenObject::kList;
    }

    const WorkingCopy& copy_;
    const MenuScreen& screen_;
    FindingList& findings_;
    std::array<Uses, kCharMapSize> uses_;
};

}  // namespace

void CheckCharacters(const CheckedDesign& design, FindingList& findings) {
    CharacterCheck(design, findings).Run();
}

}  // namespace bw
