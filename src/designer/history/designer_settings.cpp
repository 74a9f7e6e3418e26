#include "designer/history/designer_settings.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "designer/history/history_file.h"
#include "designer/history/work_state.h"
#include "designer/model/design_records.h"
#include "designer/model/stored_numbers.h"
#include "settings/setting_names.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

struct Switch {
    std::string_view name;
    bool WorkingCopy::*value;
};
constexpr std::array<Switch, 9> kSwitches = {{
    {"Show_Bg_Tile", &WorkingCopy::Show_Bg_Tile},
    {"Show_Sp_Tile", &WorkingCopy::Show_Sp_Tile},
    {"Show_List", &WorkingCopy::Show_List},
    {"Show_Custom_Text", &WorkingCopy::Show_Custom_Text},
    {"Show_Caption", &WorkingCopy::Show_Caption},
    {"Show_Cursor", &WorkingCopy::Show_Cursor},
    {"FillColor", &WorkingCopy::FillColor},
    {"DrawLine", &WorkingCopy::DrawLine},
    {"DragText", &WorkingCopy::DragText},
}};

constexpr std::string_view kLastWorkState = "LastWorkState";
constexpr std::string_view kCustomTextEdit = "CustomTextEdit";
constexpr std::string_view kHistoryList = "HistoryDataList";
constexpr std::string_view kHistoryIndex = "HistoryDataIndex";
constexpr size_t kIndexSize = 8;

// A value of exactly this size, or nothing.
std::optional<Bytes> ReadExact(const SettingsStore& settings, std::string_view name, size_t size) {
    Bytes bytes = ReadWholeBinary(settings, kDesignKey, name);
    if (bytes.size() != size) return std::nullopt;
    return bytes;
}

void ReadByte(const SettingsStore& settings, std::string_view name, uint8_t& value) {
    if (const auto bytes = ReadExact(settings, name, 1)) value = bytes->front();
}

void ReadPos(const SettingsStore& settings, std::string_view name, Pos& place) {
    if (const auto bytes = ReadExact(settings, name, Pos::kStoredSize)) {
        place = ReadStoredPos(std::span(*bytes).first<Pos::kStoredSize>());
    }
}

// The current entries bound the palettes that commands write into.
void ReadEntry(const SettingsStore& settings, std::string_view name, Pos& place) {
    Pos read = place;
    ReadPos(settings, name, read);
    if (read.X >= 0 && read.X < static_cast<int32_t>(kPaletteSize)) place = {read.X, 0};
}

void ReadSteps(EditSession& session, const SettingsStore& settings, const fs::path& file) {
    // A window that opens again in the same run has its steps still.
    if (session.Steps().Count() != 0) return;
    if (!file.empty()) {
        if (auto steps = ReadHistoryFile(file)) return session.LoadSteps(std::move(*steps));
    }
    uint64_t index = 0;
    if (const auto bytes = ReadExact(settings, kHistoryIndex, kIndexSize)) {
        index = Read32(*bytes, 0) | uint64_t{Read32(*bytes, 4)} << 32;
    }
    session.LoadSteps(
        UndoHistory::FromStored(ReadWholeBinary(settings, kDesignKey, kHistoryList), index));
}

Bytes StoredIndex(uint64_t index) {
    Bytes bytes;
    Append32(bytes, static_cast<uint32_t>(index));
    Append32(bytes, static_cast<uint32_t>(index >> 32));
    return bytes;
}

// A session without steps leaves those that are stored.
bool StoreSteps(const UndoHistory& steps, SettingsStore& settings, const fs::path& file) {
    if (!file.empty()) {
        if (steps.Count() == 0) return true;
        if (!WriteHistoryFile(file, steps)) return false;
        // What can't be removed does no harm: the file goes first.
        settings.RegDeleteValue(kDesignKey, kHistoryList);
        settings.RegDeleteValue(kDesignKey, kHistoryIndex);
        return true;
    }
    const bool written =
        steps.Count() == 0 || settings.RegWriteBinary(kDesignKey, kHistoryList, steps.Store());
    return settings.RegWriteBinary(kDesignKey, kHistoryIndex, StoredIndex(steps.Index())) &&
           written;
}

void ReadWorkingCopy(WorkingCopy& copy, const SettingsStore& settings) {
    for (const Switch& entry : kSwitches) {
        uint8_t value = copy.*entry.value ? 1 : 0;
        ReadByte(settings, entry.name, value);
        copy.*entry.value = value != 0;
    }
    ReadByte(settings, setting::kBigCursor, copy.document.BigCursor);
    ReadEntry(settings, "BkgPalettePos", copy.BkgPalettePos);
    ReadEntry(settings, "SpPalettePos", copy.SpPalettePos);
    ReadPos(settings, setting::kCaptionPos, copy.document.CaptionPos);
    ReadPos(settings, setting::kPageNumberPos, copy.document.PageNumberPos);
    ReadPos(settings, setting::kItemPos, copy.document.ItemPos);
    settings.RegReadString(kDesignKey, setting::kCaptionText, copy.Store().CaptionText);
    copy.captionBox = copy.Store().CaptionText;
    settings.RegReadString(kDesignKey, kCustomTextEdit, copy.CustomTextEdit);
    CountItems(copy);
    RebuildShortLargeCursor(copy.document);
    const Bytes last = ReadWholeBinary(settings, kDesignKey, kLastWorkState);
    if (!last.empty()) ApplyWorkState(last, copy);
    RebuildShortLargeCursor(copy.document);
}

}  // namespace

void OpenDesigner(EditSession& session, const SettingsStore& settings,
                  const fs::path& historyFile) {
    session.RunWithoutStep([&](WorkingCopy& copy) { ReadWorkingCopy(copy, settings); });
    ReadSteps(session, settings, historyFile);
}

bool KeepWorkState(const EditSession& session, SettingsStore& settings) {
    return settings.RegCreateKey(kDesignKey) &&
           settings.RegWriteBinary(kDesignKey, kLastWorkState, BuildWorkState(session.Copy()));
}

bool CloseDesigner(EditSession& session, SettingsStore& settings, const fs::path& historyFile) {
    const WorkingCopy& copy = session.Copy();
    bool written = true;
    const auto write = [&](std::string_view name, std::span<const uint8_t> bytes) {
        written = settings.RegWriteBinary(kDesignKey, name, bytes) && written;
    };
    for (const Switch& entry : kSwitches) {
        const uint8_t value = copy.*entry.value ? 1 : 0;
        write(entry.name, {&value, 1});
    }
    write(kLastWorkState, BuildWorkState(copy));
    written = StoreSteps(session.Steps(), settings, historyFile) && written;
    write("BkgPalettePos", StoredPos(copy.BkgPalettePos));
    write("SpPalettePos", StoredPos(copy.SpPalettePos));
    written = session.RunWithoutStep([&](WorkingCopy& edited) {
        return StoreDesign(edited.document, settings);
    }) && written;
    // The caption of the settings is the box's; the work state has the document's.
    written =
        settings.RegWriteString(kDesignKey, setting::kCaptionText, copy.captionBox) && written;
    return settings.RegWriteString(kDesignKey, kCustomTextEdit, copy.CustomTextEdit) && written;
}

}  // namespace bw
