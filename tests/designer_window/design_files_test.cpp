// The designer's Load and Save, dropped files and samples, with a window that isn't there.
#include "designer/window/design_files.h"

#include <QListWidget>
#include <QPushButton>
#include <fstream>
#include <set>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "builder/resources.h"
#include "common/file_size_limit.h"
#include "common/temporary_folder.h"
#include "designer/files/bare_tables.h"
#include "designer/history/work_state.h"
#include "designer/tools/text_tools.h"
#include "designer/window/design_samples.h"
#include "designer/window/dropped_parts.h"
#include "designer/window/file_rows.h"
#include "designer/window/last_design_file.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "support/files.h"
#include "support/paths.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Path = std::filesystem::path;
using enum DesignPart;

class FakeHost : public DesignHost {
  public:
    FakeHost() {
        session.RunWithoutStep([](WorkingCopy& copy) {
            LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
            SetItems(copy, {u"ONE", u"TWO"}, 10, false);
        });
    }

    const EditSession& Session() const override { return session; }
    const GestureMachine& Gestures() const override { return gestures; }
    void Run(Command command) override { session.Run(command); }
    void RunWithoutStep(Command command) override { session.RunWithoutStep(command); }
    void GoToStep(size_t) override {}
    void WhenIdle(std::function<void()> work) override {
        gesture ? waiting.push_back(std::move(work)) : work();
    }
    void Reveal(Control, const Rect&) override {}
    void Tell(std::u16string_view line) override { told.push_back(ToUtf8(line)); }
    UserDialogs& Dialogs() override { return dialogs; }
    SettingsStore& Store() override { return *store; }
    BackgroundTasks& Tasks() override { return *tasks; }
    Language CurrentLanguage() const override { return Language::kEnglish; }
    QWidget& Window() override { return window; }

    EditSession session;
    DesignerLayout layout;
    GestureMachine gestures{session, layout};
    ScriptedDialogs dialogs;
    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    UiQueue queue;
    std::unique_ptr<BackgroundTasks> tasks = std::make_unique<BackgroundTasks>(queue);
    QWidget window;
    std::vector<std::string> told;
    bool gesture = false;
    std::vector<std::function<void()>> waiting;
};

class DesignFilesTest : public testing::Test {
  protected:
    DesignFilesTest() {
        files_->named = [this](const Path& file) { named_.push_back(file); };
    }
    void Finish() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !host_.tasks->AnyRunning(); }, 60'000));
    }
    void Run(void (DesignFiles::*command)(int), int id, const Path& file, size_t type) {
        host_.dialogs.files.push_back(FileChoice{file, type});
        ((*files_).*command)(id);
        Finish();
    }
    void Load(int id, const Path& file, size_t type = 0) {
        Run(&DesignFiles::Load, id, file, type);
    }
    void Save(int id, const Path& file, size_t type = 0) {
        Run(&DesignFiles::Save, id, file, type);
    }
    // A rich design in place of the present one.
    void Fill() {
        const auto bytes = DesignSamples().front().bytes;
        host_.session.RunWithoutStep([&](WorkingCopy& copy) {
            LoadPart(kDesign, bytes, Shift::kUp, copy, Language::kEnglish);
            AddText(copy, u"text");
            copy.Store().SpriteTileSelected[1] = 1;
        });
    }
    Path Write(const char* name, size_t size, char byte = 1) {
        std::ofstream(folder_ / name) << std::string(size, byte);
        return folder_ / name;
    }
    std::string Read(const Path& file) {
        const auto bytes = ReadFile(file);
        return bytes ? std::string(bytes->begin(), bytes->end()) : "none";
    }
    const DesignStore& Store() const { return host_.session.Copy().Store(); }
    size_t Steps() const { return host_.session.Steps().Count(); }

    TemporaryFolder folder_;
    FakeHost host_;
    DesignFiles::LastTypes lastTypes_;
    std::unique_ptr<DesignFiles> files_ = std::make_unique<DesignFiles>(host_, lastTypes_);
    std::vector<Path> named_;
};

TEST_F(DesignFilesTest, EveryRowHasTypesOfItsPart) {
    std::set<int> ids;
    for (const FileRow& row : FileRows()) {
        ids.insert({row.load, row.save});
        for (const auto types : {row.loadTypes, row.saveTypes})
            for (const PartType& type : types) {
                EXPECT_TRUE(ToUtf8(type.name).starts_with(type.extension));
                EXPECT_TRUE(type.extension == "bin" || type.extension == PartExtension(type.part));
            }
    }
    EXPECT_EQ(ids.size(), 22u);
}

TEST_F(DesignFilesTest, WhatIsSavedLoadsAsItWasInOneStep) {
    for (const FileRow& row : FileRows()) {
        Fill();
        const auto stored = [&] {
            return std::get<0>(StorePart(row.saveTypes.front().part, Shift::kUp,
                                         host_.session.Copy(), Language::kEnglish));
        };
        const auto before = stored();
        const Path file = folder_ / std::to_string(row.save);
        Save(row.save, file);
        EXPECT_EQ(host_.told.back(), "Saved " + file.string() + ".");
        EXPECT_EQ(Read(file), std::string(before.begin(), before.end())) << row.save;
        if (row.load == 0) continue;
        host_.session.RunWithoutStep([](WorkingCopy& copy) {
            copy.Show_List = copy.Show_Caption = false;
            return ResetDesign(copy) | ResetAttributes(copy);
        });
        const size_t steps = std::max<size_t>(Steps(), 1);
        EXPECT_NE(stored(), before) << row.load;
        Load(row.load, file);
        EXPECT_EQ(stored(), before) << row.load;
        EXPECT_EQ(Steps(), steps + 1) << row.load;
    }
    EXPECT_THAT(named_, ElementsAre(folder_ / "1072", folder_ / "1072"));
    EXPECT_THAT(host_.dialogs.told, IsEmpty());
    Load(1068, Write("image", kVideoMemorySize, 7), 2);
    EXPECT_EQ(Store().BkgTileList.size(), kNameTableSize);
    Save(1117, folder_ / "empty.bin", 1);
    Save(1117, Write("old.bin", 3, 'x'), 1);
    Save(1117, folder_ / "mmc5.attr", 2);
    EXPECT_EQ(Read(folder_ / "empty.bin") + Read(folder_ / "old.bin"), "xxx");
    EXPECT_EQ(Read(folder_ / "mmc5.attr").size(), 1024u);
}

TEST_F(DesignFilesTest, DialogsStartWhereTheLastFileIsWithTheLastTypeAndTheDesignsName) {
    Load(1071, Write("my.tiles.bin", 32), 1);
    Save(1072, folder_ / "a.design.fcm");
    Save(1073, folder_ / "out.bin", 1);
    files_ = std::make_unique<DesignFiles>(host_, lastTypes_);
    files_->Load(1071);  // given up
    files_->Save(1073);
    EXPECT_EQ(LastDesignFolder(*host_.store), folder_.Path());
    std::vector<std::string> asked;
    for (const FileQuestion& question : host_.dialogs.fileQuestions) {
        asked.push_back(ToUtf8(question.title) + ", " + ToUtf8(question.name) + ", " +
                        question.types[question.type].extension);
    }
    EXPECT_THAT(asked, ElementsAre("Load: Background CHR, , chr", "Save: Whole design, , fcm",
                                   "Save: Background CHR, a.design, chr",
                                   "Load: Background CHR, , bin", "Save: Background CHR, , chr"));
    EXPECT_THAT(host_.dialogs.starts, testing::Contains(folder_.Path()).Times(4));
}

TEST_F(DesignFilesTest, ShiftCountsAsItWasWhenTheCommandWasGiven) {
    Fill();
    host_.gestures.ShiftKeyDown();
    host_.dialogs.meanwhile = [&] { host_.gestures.ShiftKeyUp(); };
    Save(1082, folder_ / "one.chr");
    EXPECT_EQ(Read(folder_ / "one.chr").size(), kTileBytes);
    Save(1082, folder_ / "all.chr");
    EXPECT_EQ(Read(folder_ / "all.chr").size(), kPatternTableSize);
}

TEST_F(DesignFilesTest, BadFilesAreToldByEveryLoadAndChangeNothing) {
    Fill();
    const WorkState before = BuildWorkState(host_.session.Copy());
    const Path pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const Path vanishing = folder_ / "vanishing";
    host_.dialogs.meanwhile = [&] { std::filesystem::remove(vanishing); };
    for (const FileRow& row : FileRows()) {
        for (size_t type = 0; type < row.loadTypes.size(); ++type) {
            const DesignPart part = row.loadTypes[type].part;
            const Path huge = Write("huge", 0);
            std::filesystem::resize_file(huge, LargestFile(part) + 1);
            std::vector<Path> bad{folder_.Path(), pipe, huge, Write("empty", 0),
                                  Write("vanishing", 16384)};
            if (TableSize(part) == 0) bad.push_back(Write("foreign", 4096, 'x'));
            if (TableSize(part) == kVideoMemorySize) bad.push_back(Write("short", 16383));
            for (const Path& file : bad) {
                Load(row.load, file, type);
                ASSERT_EQ(host_.dialogs.told.size(), 1u) << row.load << ' ' << file;
                EXPECT_THAT(host_.dialogs.told.front(), HasSubstr("Error: " + file.string()));
                host_.dialogs.told.clear();
            }
        }
    }
    EXPECT_EQ(BuildWorkState(host_.session.Copy()), before);
    EXPECT_EQ(Steps() + host_.told.size(), 0u);
}

TEST_F(DesignFilesTest, AFullDiskIsToldByEverySaveAndLeavesTheOldFile) {
    Fill();
    for (const FileRow& row : FileRows()) {
        const Path file = Write("file", 3, 'x');
        {
            const FileSizeLimit full(0);
            Save(row.save, file);
        }
        Save(row.save, "/dev/full");
        ASSERT_EQ(host_.dialogs.told.size(), 2u) << row.save;
        EXPECT_THAT(host_.dialogs.told.front(), HasSubstr("Error: " + file.string()));
        host_.dialogs.told.clear();
        EXPECT_EQ(Read(file), "xxx");
        EXPECT_EQ(folder_.CountFiles(), 1u);
    }
    host_.dialogs.files = {FileChoice{folder_ / "gone" / "a.pal"}};
    files_->Save(1094);
    size_t messages = 0;
    files_->WhenSaved([&] { messages = host_.dialogs.told.size(); });
    Finish();
    EXPECT_EQ(messages, 1u) << "whoever waits comes behind it";
    EXPECT_THAT(host_.told, IsEmpty());
}

TEST_F(DesignFilesTest, ALoadWaitsForTheEndOfAGesture) {
    host_.gesture = true;
    Load(1090, Write("a.pal", 16));
    Save(1091, folder_ / "b.pal");
    EXPECT_EQ(Steps(), 0u);
    for (const auto& work : std::exchange(host_.waiting, {}))
        work();
    Finish();
    EXPECT_EQ(Store().BkgPalette.back(), 1);
    EXPECT_EQ(Read(folder_ / "b.pal"), std::string(16, 1)) << "the outcome of the gesture";
}

TEST_F(DesignFilesTest, AWindowThatClosesForgetsLoadsAndEndsSaves) {
    const Path file = Write("a.pal", 16);
    const Path target = Write("b.pal", size_t{1} << 24);  // takes its time: it keeps its tail
    host_.dialogs.files = {FileChoice{file}, FileChoice{target}, FileChoice{target},
                           FileChoice{file}};
    files_->Load(1090);
    files_->GiveUp();
    Finish();
    EXPECT_EQ(Steps(), 0u);
    files_->Save(1094);
    files_->Save(1082);
    bool saved = false;
    files_->WhenSaved([&] { saved = true; });
    host_.dialogs.meanwhile = [&] { files_.reset(); };
    files_->Load(1090);
    host_.tasks.reset();
    RunEvents();
    EXPECT_FALSE(saved);
    EXPECT_EQ(Steps() + host_.told.size(), 0u);
    EXPECT_EQ(Read(target).size(), kPatternTableSize) << "the later save";
}

TEST(DroppedParts, GoByExtensionViewAndSize) {
    using View = Control;
    EXPECT_THAT(DroppedParts("a.CHR", 1, View::kSpriteTileEditor), ElementsAre(kSpriteTiles));
    EXPECT_THAT(DroppedParts("a.chr", 1, View::kNameTable), ElementsAre(kBkgTiles, kSpriteTiles));
    EXPECT_THAT(DroppedParts("a.pal", 1, View::kNameTable),
                ElementsAre(kBkgPalette, kSpritePalette));
    EXPECT_THAT(DroppedParts("a.pal", 1, View::kSpritePalette), ElementsAre(kSpritePalette));
    EXPECT_THAT(DroppedParts("a.spl", 1, View::kBkgPalette), ElementsAre(kSprites));
    EXPECT_THAT(DroppedParts("a.fcm", 1, View::kAttribute), ElementsAre(kDesign, kScreen, kTexts));
    EXPECT_THAT(DroppedParts("a.bin", 16384, View::kBkgTileList), ElementsAre(kBkgTiles));
    EXPECT_THAT(DroppedParts("a.bin", 64, View::kNameTable),
                ElementsAre(kAttributes, kNameTable, kSprites));
    EXPECT_EQ(DroppedParts("a.bin", 16384, {}).size(), 9u);
    EXPECT_EQ(DroppedParts("a.bin", 16384, {}).front(), kVideoMemory2000);
    EXPECT_TRUE(DroppedParts("a.nes", 16384, {}).empty());
}

TEST_F(DesignFilesTest, DroppedFilesAreTakenInTurn) {
    std::vector<std::optional<Control>> pictures;
    files_->importPicture = [&](const Path&, auto view) { pictures.push_back(view); };
    host_.dialogs.choice = 1;
    bool allowed = true;
    host_.dialogs.meanwhile = [&] { allowed = files_->CanDrop({"a.pal"}); };
    files_->Drop(Control::kNameTable,
                 {Write("game.nes", 1), Write("a.pal", 16, 5), folder_ / "gone.nam",
                  Write("b.pal", 4, 6), Write("c.png", 1), Write("d.spl", 4)},
                 Shift::kUp);
    Finish();
    EXPECT_FALSE(allowed) << "while a question is open";
    EXPECT_TRUE(files_->CanDrop({"a.pal"}));
    EXPECT_EQ(Store().SpritePalette[3], 6);
    EXPECT_EQ(Store().SpritePalette[4], 5);
    EXPECT_EQ(Store().SpriteTileList.size(), 1u);
    EXPECT_THAT(pictures, ElementsAre(Control::kNameTable));
    EXPECT_THAT(host_.dialogs.choices, ElementsAre("Background palette", "Sprite palette"));
    EXPECT_THAT(host_.dialogs.told, testing::Contains(HasSubstr("gone.nam")));
    EXPECT_THAT(host_.told.back(), HasSubstr("game.nes"));
    EXPECT_EQ(Steps(), 4u);
}

TEST_F(DesignFilesTest, ASampleIsChosenByItsPicture) {
    Fill();
    WhenModal([](QWidget& dialog) {
        auto& list = ControlOf<QListWidget>(dialog, 41102);
        EXPECT_EQ(static_cast<size_t>(list.count()), DesignSamples().size());
        QTest::keyClick(&list, Qt::Key_Right);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    files_->OpenSample();
    EXPECT_EQ(host_.told.back(), "Opened the sample \"Loom\".");
    WorkingCopy loom;
    LoadPart(kDesign, DesignSamples()[1].bytes, Shift::kUp, loom, Language::kEnglish);
    EXPECT_EQ(WriteDesign(host_.session.Copy().document), WriteDesign(loom.document));
    EXPECT_THAT(named_, ElementsAre(Path()));
    WhenModal([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    files_->OpenSample();
    EXPECT_EQ(Steps(), 2u);
}

}  // namespace
}  // namespace bw
