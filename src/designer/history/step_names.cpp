#include "designer/history/step_names.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <vector>

#include "designer/history/work_state.h"
#include "designer/model/design_chunks.h"
#include "designer/model/design_records.h"
#include "support/text.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;
using enum TextId;

// So many kinds of things change at once only when a whole design is loaded or reset.
constexpr size_t kEverything = 6;
constexpr size_t kLongestQuote = 20;  // characters

enum class Change { kAdded, kRemoved, kMoved, kChanged, kOrdered };

// What a change of a list is called: of one item, with what names it, and of several, with their
// number. In the order of Change; an order has no number.
struct ItemWords {
    struct Pair {
        TextId one;
        TextId many;
    };
    std::array<Pair, 5> words;
    bool byNumber = false;  // items are named by their place in the list

    const Pair& operator[](Change change) const { return words[static_cast<size_t>(change)]; }
};
constexpr ItemWords kTextWords{{{{kStepTextAdded, kStepTextsAdded},
                                 {kStepTextRemoved, kStepTextsRemoved},
                                 {kStepTextMoved, kStepTextsMoved},
                                 {kStepTextChanged, kStepTextsChanged},
                                 {kStepTextOrder, kStepTextOrder}}}};
constexpr ItemWords kSpriteWords{{{{kStepSpriteAdded, kStepSpritesAdded},
                                   {kStepSpriteRemoved, kStepSpritesRemoved},
                                   {kStepSpriteMoved, kStepSpritesMoved},
                                   {kStepSpriteChanged, kStepSpritesChanged},
                                   {kStepSpriteOrder, kStepSpriteOrder}}},
                                 true};
constexpr ItemWords kTileWords{{{{kStepTilePlaced, kStepTilesPlaced},
                                 {kStepTileRemoved, kStepTilesRemoved},
                                 {kStepTileMoved, kStepTilesMoved},
                                 {kStepTileChanged, kStepTilesChanged},
                                 {kStepTileOrder, kStepTileOrder}}}};

// An item without its place in the list and without its mark of selection, and its number.
template <typename Item>
struct Numbered {
    Item item;
    size_t number;
};

auto Key(const TileItem& item) {
    return std::tie(item.X, item.Y, item.Tile, item.Palette, item.Flags, item.Reserved);
}
auto Key(const TextItem& item) {
    return std::tie(item.X, item.Y, item.Text);
}

std::optional<TileItem> ReadItem(const ChunkView& chunk, TileItem) {
    if (chunk.payload.size() != TileItem::kStoredSize) return std::nullopt;
    TileItem item = ReadTileItem(chunk.payload.first<TileItem::kStoredSize>());
    item.Index = item.Selected = 0;
    return item;
}
std::optional<TextItem> ReadItem(const ChunkView& chunk, TextItem item) {
    if (ReadTextItem(chunk, item)) return std::nullopt;
    item.Index = 0;
    return item;
}

template <typename Item>
struct ListChange {
    Change change;
    size_t count;
    Numbered<Item> example;
};

// What is in `some` and not in `others`; both are in the order of their keys.
template <typename Item>
std::vector<Numbered<Item>> Only(const std::vector<Numbered<Item>>& some,
                                 const std::vector<Numbered<Item>>& others) {
    std::vector<Numbered<Item>> only;
    std::ranges::set_difference(
        some, others, std::back_inserter(only), {}, [](const auto& one) { return Key(one.item); },
        [](const auto& one) { return Key(one.item); });
    return only;
}

// Two sections that differ. Items that merely change their place in the list aren't told one by
// one; nothing if no more than their selection has changed.
template <typename Item>
std::optional<ListChange<Item>> Compare(Bytes before, Bytes after) {
    const std::vector<ChunkView> left = ReadChunks(before).chunks;
    const std::vector<ChunkView> right = ReadChunks(after).chunks;
    const auto same = [](const ChunkView& one, const ChunkView& other) {
        return std::ranges::equal(one.payload, other.payload);
    };
    const size_t front =
        static_cast<size_t>(std::ranges::mismatch(left, right, same).in1 - left.begin());
    size_t back = 0;
    while (back < std::min(left.size(), right.size()) - front &&
           same(left[left.size() - 1 - back], right[right.size() - 1 - back])) {
        ++back;
    }
    const auto middle = [&](const std::vector<ChunkView>& chunks) {
        std::vector<Numbered<Item>> items;
        for (size_t i = front; i < chunks.size() - back; ++i)
            if (const auto item = ReadItem(chunks[i], Item{})) items.push_back({*item, i});
        return items;
    };
    auto old = middle(left);
    auto now = middle(right);
    const bool ordered =
        !std::ranges::equal(old, now, {}, &Numbered<Item>::item, &Numbered<Item>::item);
    const auto byKey = [](const auto& one) { return Key(one.item); };
    std::ranges::stable_sort(old, {}, byKey);
    std::ranges::stable_sort(now, {}, byKey);
    const auto gone = Only(old, now);
    const auto come = Only(now, old);
    if (gone.empty() && come.empty()) {
        if (!ordered || old.empty()) return std::nullopt;
        return ListChange<Item>{Change::kOrdered, old.size(), old.front()};
    }
    if (come.size() > gone.size()) {
        return ListChange<Item>{Change::kAdded, come.size() - gone.size(), come.front()};
    }
    if (come.size() < gone.size()) {
        return ListChange<Item>{Change::kRemoved, gone.size() - come.size(), gone.front()};
    }
    const auto withoutPlaces = [](const std::vector<Numbered<Item>>& items) {
        std::vector<Item> alike;
        for (const auto& one : items) {
            alike.push_back(one.item);
            alike.back().X = alike.back().Y = 0;
        }
        std::ranges::sort(alike, {}, [](const Item& item) { return Key(item); });
        return alike;
    };
    const bool moved = withoutPlaces(gone) == withoutPlaces(come);
    return ListChange<Item>{moved ? Change::kMoved : Change::kChanged, come.size(), come.front()};
}

std::u16string Quote(std::u16string_view text) {
    std::u16string quote(text.substr(0, kLongestQuote));
    if (text.size() > kLongestQuote) quote += u'\u2026';
    return quote;
}

class StepTeller {
  public:
    StepTeller(Bytes before, Bytes after, Language language)
        : before_(before),
          after_(after),
          beforeSections_(SectionsOf(before)),
          afterSections_(SectionsOf(after)),
          language_(language) {}

    std::u16string Name() {
        TellSwitches();
        TellText();
        TellList<TileItem>(ChunkType::kSpriteTile, kSpriteWords);
        TellList<TileItem>(ChunkType::kBkgTile, kTileWords);
        TellPlaces();
        TellCharacters();
        TellTiles();
        TellPalette(ChunkType::kBkgPalette, kStepBkgPaletteEntry, kStepBkgPaletteEntries);
        TellPalette(ChunkType::kSpritePalette, kStepSpritePaletteEntry, kStepSpritePaletteEntries);
        if (Differs(ChunkType::kAttributes)) Say(kStepAttributes);
        // Tiles that are exchanged below them make items change, which is told last.
        for (std::u16string& name : followers_)
            names_.push_back(std::move(name));
        if (names_.size() >= kEverything) return LoadText(kStepEverything, language_);
        if (names_.empty()) TellLook();
        std::u16string name = names_[0];
        if (names_.size() > 1) name += Comma() + names_[1];
        if (names_.size() > 2) name += u'\u2026';
        return name;
    }

  private:
    static Bytes Find(Bytes state, const std::vector<StateSection>& sections, uint32_t type) {
        const auto found = std::ranges::find(sections, type, &StateSection::type);
        if (found == sections.end()) return {};
        return state.subspan(found->begin, found->end - found->begin);
    }
    Bytes Before(uint32_t type) const { return Find(before_, beforeSections_, type); }
    Bytes After(uint32_t type) const { return Find(after_, afterSections_, type); }
    // Not by std::ranges, which compares byte by byte.
    bool Differs(uint32_t type) const {
        const Bytes before = Before(type);
        const Bytes after = After(type);
        return !std::equal(before.begin(), before.end(), after.begin(), after.end());
    }
    bool Differs(ChunkType type) const { return Differs(static_cast<uint32_t>(type)); }

    // The payloads of a type that has one chunk, cut to one length.
    std::pair<Bytes, Bytes> Payloads(ChunkType type) const {
        const auto payload = [](Bytes section) {
            return section.subspan(std::min(section.size(), kChunkHeaderSize));
        };
        const Bytes before = payload(Before(static_cast<uint32_t>(type)));
        const Bytes after = payload(After(static_cast<uint32_t>(type)));
        const size_t size = std::min(before.size(), after.size());
        return {before.first(size), after.first(size)};
    }
    // The numbers of the entries that differ, each of `size` bytes.
    std::vector<size_t> Entries(ChunkType type, size_t size) const {
        std::vector<size_t> entries;
        const auto [before, after] = Payloads(type);
        for (size_t at = 0; at + size <= before.size(); at += size)
            if (!std::ranges::equal(before.subspan(at, size), after.subspan(at, size)))
                entries.push_back(at / size);
        return entries;
    }

    template <typename... Values>
    std::u16string Words(TextId id, const Values&... values) const {
        return FormatText(LoadText(id, language_), values...);
    }
    template <typename... Values>
    void Say(TextId id, const Values&... values) {
        names_.push_back(Words(id, values...));
    }
    std::u16string Comma() const { return language_ == Language::kChinese ? u"，" : u", "; }

    void TellSwitch(ChunkType type, TextId on, TextId off) {
        if (!Differs(type)) return;
        const Bytes now = Payloads(type).second;
        Say(!now.empty() && now.front() != 0 ? on : off);
    }
    void TellSwitches() {
        TellSwitch(ChunkType::kBigCursor, kStepLargeCursorOn, kStepLargeCursorOff);
        TellSwitch(ChunkType::kBigSprite, kStepTallSpritesOn, kStepTallSpritesOff);
    }

    // What names an item: a text's beginning, a sprite's number, a placed tile's number in its
    // table.
    std::u16string Example(TextId id, const Numbered<TextItem>& text, bool) const {
        return Words(id, Quote(text.item.Text));
    }
    std::u16string Example(TextId id, const Numbered<TileItem>& item, bool byNumber) const {
        return Words(id, static_cast<unsigned>(byNumber ? item.number : item.item.Tile));
    }
    template <typename Item>
    void TellList(ChunkType type, const ItemWords& words) {
        if (!Differs(type)) return;
        const auto number = static_cast<uint32_t>(type);
        const auto change = Compare<Item>(Before(number), After(number));
        if (!change) {
            selection_ = true;
            return;
        }
        const auto [one, many] = words[change->change];
        const bool follows = change->change >= Change::kChanged;
        auto& names = follows ? followers_ : names_;
        names.push_back(change->count == 1 ? Example(one, change->example, words.byNumber)
                                           : Words(many, static_cast<int>(change->count)));
    }

    void TellText() {
        TellList<TextItem>(ChunkType::kCustomText, kTextWords);
        if (Differs(ChunkType::kCaptionText)) Say(kStepCaptionText);
    }

    // Cursors: all their sprites at once.
    bool TellCursor(ChunkType type) {
        if (!Differs(type)) return false;
        const auto number = static_cast<uint32_t>(type);
        const auto change = Compare<TileItem>(Before(number), After(number));
        if (!change) {
            selection_ = true;
            return false;
        }
        if (change->change != Change::kMoved) {
            followers_.push_back(Words(kStepCursorChanged));
            return true;
        }
        Say(kStepCursorMoved);
        return true;
    }
    void TellPlaces() {
        if (Differs(ChunkType::kCaptionPos)) Say(kStepCaptionMoved);
        if (Differs(ChunkType::kItemPos)) Say(kStepListMoved);
        if (Differs(ChunkType::kPageNumberPos)) Say(kStepPageNumberMoved);
        if (!TellCursor(ChunkType::kArrowTile)) TellCursor(ChunkType::kArrowTileItem);
    }

    void TellCharacters() {
        const std::vector<size_t> characters = Entries(ChunkType::kCharMapData, 1);
        if (characters.size() == 1 && characters[0] > ' ' && characters[0] < 0x7F) {
            Say(kStepCharacterMapped, std::u16string(1, static_cast<char16_t>(characters[0])));
        } else if (!characters.empty()) {
            Say(kStepCharactersMapped, static_cast<int>(characters.size()));
        }
    }
    void TellTiles() {
        const std::vector<size_t> tiles = Entries(ChunkType::kChrData, kTileBytes);
        const auto half = std::ranges::lower_bound(tiles, size_t{kTileCount});
        const auto tell = [&](auto begin, auto end, TextId one, TextId many) {
            if (end - begin == 1) Say(one, static_cast<unsigned>(*begin % kTileCount));
            if (end - begin > 1) Say(many, static_cast<int>(end - begin));
        };
        tell(tiles.begin(), half, kStepBkgTilePainted, kStepBkgTilesPainted);
        tell(half, tiles.end(), kStepSpriteTilePainted, kStepSpriteTilesPainted);
    }
    void TellPalette(ChunkType type, TextId one, TextId many) {
        const std::vector<size_t> entries = Entries(type, 1);
        if (entries.size() == 1) Say(one, static_cast<int>(entries[0]));
        if (entries.size() > 1) Say(many, static_cast<int>(entries.size()));
    }

    // What no build shows.
    void TellLook() {
        const bool marks = Differs(kBkgTileMarks) || Differs(kSpriteTileMarks);
        const bool whole = afterSections_.size() > 1 && beforeSections_.size() > 1;
        Say(selection_ || marks ? kStepSelection : whole ? kStepPlace : kStepEverything);
    }

    Bytes before_;
    Bytes after_;
    std::vector<StateSection> beforeSections_;
    std::vector<StateSection> afterSections_;
    Language language_;
    std::vector<std::u16string> names_;
    std::vector<std::u16string> followers_;
    bool selection_ = false;
};

std::u16string Tip(const EditSession& session, TextId what, std::u16string_view key, bool can,
                   size_t state, Language language) {
    const std::u16string word = LoadText(what, language);
    if (!can) return FormatText(LoadText(kStepTipPlain, language), word, key);
    return FormatText(LoadText(kStepTip, language), word,
                      StepNames(session.Steps()).Of(state, language), key);
}

}  // namespace

std::u16string NameOfStep(Bytes before, Bytes after, Language language) {
    return StepTeller(before, after, language).Name();
}

void StepNames::GoTo(size_t state) {
    const size_t present = history_.Index();
    const auto distance = [&](size_t from) { return from < state ? state - from : from - state; };
    if (revision_ != history_.Revision() || distance(present) < distance(at_)) {
        revision_ = history_.Revision();
        state_ = history_.Present();
        at_ = present;
    }
    history_.Walk(state_, at_, state);
    at_ = state;
}

std::u16string StepNames::Of(size_t state, Language language) {
    if (state == 0) return LoadText(kStepStart, language);
    GoTo(state - 1);
    const WorkState before = state_;
    GoTo(state);
    return NameOfStep(before, state_, language);
}

std::u16string UndoTip(const EditSession& session, Language language) {
    const UndoHistory& steps = session.Steps();
    return Tip(session, kUndo, u"Ctrl+Z", steps.CanUndo(), steps.Index(), language);
}

std::u16string RedoTip(const EditSession& session, Language language) {
    const UndoHistory& steps = session.Steps();
    return Tip(session, kRedo, u"Ctrl+Y", steps.CanRedo(), steps.Index() + 1, language);
}

}  // namespace bw
