#include "shell/tasks/list_files.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "builder/tables/cart_tables.h"
#include "language/problem_text.h"
#include "list/left_out.h"
#include "list/list_file.h"
#include "settings/recent_files.h"
#include "shell/tasks/game_intake.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kOpenFolder = "LastOpenDir";
constexpr std::string_view kListFolder = "LastLoadDir";
constexpr std::string_view kListName = "ListName";
constexpr size_t kNamedFiles = 12;  // of those that a tip names

// Shows on the window's thread that not all will fit.
void WarnOfLimit(TaskControl& control, ListHost& host) {
    control.Queue().Call([&host] {
        Warn(host,
             FormatText(LoadText(TextId::kListCutToLimit, host.CurrentLanguage()), kListLimit));
        return true;
    });
}

// The name of a file; of a place in an archive the archive's too.
std::filesystem::path ShortPath(const std::filesystem::path& path) {
    const std::filesystem::path container = ContainerOf(path);
    return container == path ? path.filename() : path.lexically_relative(container.parent_path());
}

// What was left out, and where it isn't simply no game, why; line by line.
std::u16string NamesOf(std::span<const LeftOut> items, Language language) {
    std::u16string names;
    for (const LeftOut& item : items.first(std::min(items.size(), kNamedFiles))) {
        const LeftOut named{ShortPath(item.place), item.reason};
        const bool plain = item.reason == LeftOut::Reason::kNoGame;
        names += (names.empty() ? u"" : u"\n") +
                 (plain ? PathText(named.place) : LeftOutText(named, language));
    }
    if (items.size() > kNamedFiles) {
        names +=
            u"\n" + FormatText(LoadText(TextId::kAndMore, language), items.size() - kNamedFiles);
    }
    return names;
}

void TellStopped(ListHost& host) {
    host.Tell(LoadText(TextId::kStoppedListUnchanged, host.CurrentLanguage()));
}

}  // namespace

// What a task on its way into the list holds. The task's thread alone uses it until it ends.
struct ListFiles::Reading {
    Reading(TaskControl& control, ListHost& host, std::filesystem::path base, size_t present)
        : intake(control, std::move(base), present,
                 [&control, &host] { WarnOfLimit(control, host); }) {}

    GameIntake intake;
    // Images. One that is given alone and is a cart of ours is no game.
    void AddImages(const std::vector<std::filesystem::path>& files) {
        if (!IsCart(files)) intake.AddImages(files);
    }
    // Images and list files.
    void AddFiles(const std::vector<std::filesystem::path>& files) {
        if (!IsCart(files)) intake.AddFiles(files);
    }

    FileResult<> list;  // of reading a list file
    std::filesystem::path cart;

  private:
    bool IsCart(const std::vector<std::filesystem::path>& files) {
        if (files.size() == 1 && ReadCart(files.front())) cart = files.front();
        return !cart.empty();
    }
};

void ListFiles::Read(BackgroundTasks::Turn turn, std::function<void(Reading&)> read,
                     std::function<void(Reading&)> finish) {
    host_.Tell({});
    struct Shared {
        std::unique_ptr<Reading> reading;
        bool stopped = false;
    };
    const auto shared = std::make_shared<Shared>();
    host_.Tasks().StartListTask(
        std::move(turn),
        [shared, read = std::move(read), &host = host_, base = host_.Base(),
         present = host_.Editor().Games().size()](TaskControl& control) {
            auto reading = std::make_unique<Reading>(control, host, base, present);
            read(*reading);
            shared->stopped = control.Stop();
            shared->reading = std::move(reading);
        },
        [this, shared, finish = std::move(finish)] {
            if (shared->stopped) {
                TellStopped(host_);
            } else if (shared->reading && !shared->reading->cart.empty()) {
                host_.ShowCart(shared->reading->cart);
            } else if (shared->reading) {
                finish(*shared->reading);
            }
        });
}

void ListFiles::Publish(Reading& reading, ListEditor::Appending how,
                        const std::filesystem::path& list) {
    ListEditor& editor = host_.Editor();
    const size_t before = editor.Games().size();
    editor.Append(std::move(reading.intake.games), how);
    const Language language = host_.CurrentLanguage();
    const size_t added = editor.Games().size() - before;
    std::u16string line = FormatText(LoadText(TextId::kGamesAdded, language), added);
    std::vector<LeftOut>& leftOut = reading.intake.leftOut;
    const std::vector<std::filesystem::path>& folders = reading.intake.folders;
    if (!leftOut.empty()) {
        line += FormatText(LoadText(TextId::kFilesLeftOut, language), leftOut.size());
    }
    if (!folders.empty()) {
        line += FormatText(LoadText(TextId::kFoldersLeftOut, language), folders.size());
    }
    for (const std::filesystem::path& folder : folders)
        leftOut.push_back({folder, LeftOut::Reason::kNoGame});
    host_.Tell(line, NamesOf(leftOut, language));
    if (added > 0 && !list.empty()) AddRecentFile(host_.Store(), RecentKind::kLists, list);
    // Games that come into a list don't change what it is.
    if (added > 0 && (before == 0 || Name().empty())) StoreName(list);
}

bool ListFiles::RefusesFullList() {
    const size_t rows = host_.Editor().Games().size();
    if (rows < kListLimit) return false;
    Warn(host_, FormatText(LoadText(TextId::kListFull, host_.CurrentLanguage()), rows));
    return true;
}

void ListFiles::Open() {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn || RefusesFullList()) return;
    std::vector<std::filesystem::path> files = host_.Dialogs().AskImages(StoredFolder(kOpenFolder));
    if (files.empty()) return;
    StoreFolderOf(kOpenFolder, files.front());
    Read(
        std::move(turn), [files = std::move(files)](Reading& reading) { reading.AddImages(files); },
        [this](Reading& reading) {
            // More than the limit may come in by one choice of files; that is meant.
            Publish(reading, {.limited = false});
        });
}

void ListFiles::Load() {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn || RefusesFullList()) return;
    const auto file = host_.Dialogs().AskListToLoad(StoredFolder(kListFolder));
    if (!file) return;
    StoreFolderOf(kListFolder, *file);
    Load(std::move(turn), *file);
}

void ListFiles::Load(const std::filesystem::path& file) {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (turn && !RefusesFullList()) Load(std::move(turn), file);
}

void ListFiles::Load(BackgroundTasks::Turn turn, const std::filesystem::path& file) {
    Read(
        std::move(turn), [file](Reading& reading) { reading.list = reading.intake.AddList(file); },
        [this, file](Reading& reading) {
            if (!reading.list) {
                host_.Tell(
                    FullText(ListDiagnostic(reading.list.Problem(), host_.CurrentLanguage())));
                return;
            }
            Publish(reading, {.reveal = false}, file);
        });
}

void ListFiles::Add(std::vector<std::filesystem::path> files) {
    waiting_.insert(waiting_.end(), std::make_move_iterator(files.begin()),
                    std::make_move_iterator(files.end()));
    AddWaiting();
}

void ListFiles::AddWaiting() {
    if (waiting_.empty()) return;
    BackgroundTasks::Turn turn = host_.Tasks().TryBegin();
    if (!turn) {
        host_.Tasks().WhenFree([this] { AddWaiting(); });
        return;
    }
    std::vector<std::filesystem::path> files = std::exchange(waiting_, {});
    const auto found =
        std::ranges::find_if(files, [](const auto& file) { return HasExtension(file, "fcl"); });
    const std::filesystem::path list = found != files.end() ? *found : std::filesystem::path();
    Read(
        std::move(turn), [files = std::move(files)](Reading& reading) { reading.AddFiles(files); },
        [this, list](Reading& reading) { Publish(reading, {}, list); });
}

void ListFiles::Save() {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    const auto chosen = host_.Dialogs().AskListToSave(StoredFolder(kListFolder));
    if (!chosen) return;
    StoreFolderOf(kListFolder, *chosen);
    host_.Tell({});
    struct Saving {
        std::filesystem::path file;
        GameList games;
        std::filesystem::path base;
        FileResult<> saved{};
    };
    const auto saving = std::make_shared<Saving>(
        Saving{WithListExtension(*chosen), host_.Editor().Games(), host_.Base()});
    host_.Tasks().StartListTask(
        std::move(turn),
        [saving](TaskControl& control) {
            control.Progress({PathText(saving->file.filename()), 0, 0});
            saving->saved = SaveListFile(saving->file, saving->games, saving->base);
        },
        [this, saving] {
            const Language language = host_.CurrentLanguage();
            if (saving->saved) {
                StoreName(saving->file);
                AddRecentFile(host_.Store(), RecentKind::kLists, saving->file);
            }
            host_.Tell(saving->saved ? FormatText(LoadText(TextId::kListSaved, language),
                                                  PathText(saving->file))
                                     : ProblemText(saving->saved.Problem(), language));
        });
}

void ListFiles::LoadRemembered() {
    BackgroundTasks::Turn turn = host_.Tasks().TryBegin();
    if (!turn) return;
    rememberedMissing_ = true;
    struct Start {
        std::vector<uint8_t> stored;
        std::optional<RememberedList> remembered;
        ListKeeper::Found found;
    };
    const auto start = std::make_shared<Start>();
    host_.Tasks().StartListTask(
        std::move(turn),
        [start, &host = host_, &keeper = keeper_, base = host_.Base()](TaskControl& control) {
            start->stored = ReadWholeBinary(host.Store(), kHistoryKey, kHistoryValue);
            RememberedList list = LoadRememberedList(start->stored, base);
            if (list.load.overLimit) WarnOfLimit(control, host);
            start->found = keeper.Find(start->stored);
            start->remembered = std::move(list);
        },
        [this, start] {
            if (!start->remembered) return;
            rememberedMissing_ = false;
            host_.SetColumnWidths(start->remembered->widths);
            keeper_.Begin(start->stored, std::move(start->found),
                          std::move(start->remembered->games));
        });
}

bool ListFiles::SaveRemembered(const ColumnWidths& widths) {
    if (rememberedMissing_) return host_.Editor().Games().empty();
    const std::string text = StoreRememberedList(host_.Editor().Games(), widths, host_.Base());
    const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    if (!host_.Store().RegWriteBinary(kHistoryKey, kHistoryValue, bytes)) return false;
    keeper_.Stored(bytes);
    return true;
}

std::u16string ListFiles::Name() const {
    std::u16string name;
    if (!host_.Editor().Games().empty()) host_.Store().RegReadString(kMainKey, kListName, name);
    return name;
}

void ListFiles::StoreName(const std::filesystem::path& list) {
    const std::u16string name = PathText(list.stem());
    if (name != Name()) host_.Store().RegWriteString(kMainKey, kListName, name);
}

std::filesystem::path ListFiles::StoredFolder(std::string_view name) const {
    std::u16string folder;
    host_.Store().RegReadString(kMainKey, name, folder);
    return TextPath(folder);
}

void ListFiles::StoreFolderOf(std::string_view name, const std::filesystem::path& file) {
    host_.Store().RegWriteString(kMainKey, name, PathText(file.parent_path()));
}

}  // namespace bw
