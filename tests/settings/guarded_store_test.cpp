#include "settings/guarded_store.h"

#include <gmock/gmock.h>

#include "common/file_size_limit.h"
#include "common/sqlite_stranger.h"
#include "common/temporary_folder.h"
#include "support/files.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using Bytes = std::vector<uint8_t>;

constexpr auto kNoRest = 0ms;

class Guarded : public testing::Test {
  protected:
    std::unique_ptr<GuardedStore> Open(std::chrono::milliseconds rest = kRestAfterLock) const {
        return std::make_unique<GuardedStore>(MakeSqliteStore(file_), PathText(file_), rest);
    }
    uint32_t Stored(const char* name) const {
        uint32_t number = 0;
        return MakeSqliteStore(file_)->RegReadDword(kMainKey, name, number) ? number : 0;
    }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "settings.sqlite3";
};

uint32_t Number(const SettingsStore& store, const char* name) {
    uint32_t number = 0;
    return store.RegReadDword(kMainKey, name, number) ? number : 0;
}

std::string Problem(GuardedStore& store, Language language = Language::kEnglish) {
    return ToUtf8(store.TakeProblem(language).value_or(u""));
}

TEST_F(Guarded, LockedStoreIsLeftAloneAndStoredToLater) {
    const auto store = Open();
    store->RegWriteDword(kMainKey, "old", 1);
    EXPECT_EQ(Problem(*store), "");
    SqliteStranger stranger(file_);
    stranger.Run("BEGIN EXCLUSIVE");
    const auto start = std::chrono::steady_clock::now();
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        EXPECT_TRUE(store->RegWriteDword(kMainKey, name, 2));
        EXPECT_EQ(Number(*store, name), 2u);
    }
    EXPECT_TRUE(store->RegWriteString(kMainKey, "text", u"words"));
    EXPECT_TRUE(store->RegWriteBinary(kMainKey, "bytes", Bytes{1, 2}));
    EXPECT_TRUE(store->RegDeleteValue(kMainKey, "OLD"));
    EXPECT_FALSE(store->RegDeleteValue(kMainKey, "old"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * 1500ms) << "one wait, not eleven";
    EXPECT_TRUE(store->InMemoryOnly(kMainKey, "A"));

    EXPECT_THAT(Problem(*store), testing::AllOf(HasSubstr(file_.string()), HasSubstr("locked")));
    EXPECT_EQ(Problem(*store), "") << "told once";

    stranger.Run("COMMIT");
    store->Flush();
    EXPECT_FALSE(store->InMemoryOnly(kMainKey, "a"));
    const auto below = MakeSqliteStore(file_);
    std::u16string text;
    EXPECT_EQ(Number(*below, "h"), 2u);
    EXPECT_TRUE(below->RegReadString(kMainKey, "text", text));
    EXPECT_EQ(text, u"words");
    EXPECT_EQ(ReadWholeBinary(*below, kMainKey, "bytes"), (Bytes{1, 2}));
    EXPECT_EQ(Number(*below, "old"), 0u);
}

TEST_F(Guarded, WriteThatSucceedsTakesTheOthersAlong) {
    const auto store = Open(kNoRest);
    store->RegWriteDword(kMainKey, "v", 1);
    {
        SqliteStranger stranger(file_);
        stranger.Run("BEGIN EXCLUSIVE");
        store->RegWriteDword(kMainKey, "v", 2);
        store->RegWriteDword(kMainKey, "w", 2);
    }
    EXPECT_TRUE(store->RegWriteDword(kMainKey, "V", 3));
    EXPECT_EQ(Stored("v"), 3u) << "not the older one from memory";
    EXPECT_EQ(Stored("w"), 2u);
    MakeSqliteStore(file_)->RegWriteDword(kMainKey, "v", 4);
    EXPECT_EQ(Number(*store, "v"), 4u) << "memory covers it no more";
}

TEST_F(Guarded, ValueThatCouldNotBeReadIsNotReplaced) {
    SqliteStranger stranger(file_);
    // Without the write-ahead log a lock keeps readers out.
    stranger.Run(
        "CREATE TABLE settings (key TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL "
        "COLLATE NOCASE, value NOT NULL, PRIMARY KEY (key, name))");
    MakeSqliteStore(file_);
    stranger.Run("INSERT INTO settings VALUES ('Software\\Bankweaver', 'list', 7)");
    stranger.Run("BEGIN EXCLUSIVE");
    {
        const auto store = Open();
        EXPECT_EQ(Number(*store, "list"), 0u);
        EXPECT_THAT(Problem(*store), HasSubstr("locked"));
        stranger.Run("COMMIT");
        EXPECT_TRUE(store->RegWriteDword(kMainKey, "list", 8));
        EXPECT_TRUE(store->RegWriteDword(kMainKey, "other", 8));
        EXPECT_EQ(Number(*store, "list"), 8u);
        store->Flush();
        EXPECT_TRUE(store->InMemoryOnly(kMainKey, "list"));
    }
    EXPECT_EQ(Stored("list"), 7u);
    EXPECT_EQ(Stored("other"), 8u);
}

TEST_F(Guarded, DamagedFileIsNoticedByTheFirstReadAndKept) {
    const std::string text(5000, 'x');
    WriteFile(file_, text);
    {
        const auto store = Open();
        EXPECT_EQ(Number(*store, "v"), 0u);
        EXPECT_THAT(Problem(*store, Language::kChinese),
                    testing::AllOf(HasSubstr(file_.string()), HasSubstr("已损坏")));
        EXPECT_TRUE(store->RegWriteDword(kMainKey, "v", 5));
        EXPECT_EQ(Number(*store, "v"), 5u);
    }
    const auto bytes = ReadFile(file_);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), text);
}

TEST_F(Guarded, FullDiskIsWaitedFor) {
    const Bytes large(1'000'000, 0xFF);
    {
        const auto store = Open();
        store->RegWriteDword(kMainKey, "v", 1);
        {
            const FileSizeLimit limit(100'000);
            EXPECT_TRUE(store->RegWriteBinary(kHistoryKey, "Data", large));
            EXPECT_EQ(ReadWholeBinary(*store, kHistoryKey, "Data"), large);
        }
        EXPECT_TRUE(store->InMemoryOnly(kHistoryKey, "Data"));
        EXPECT_THAT(Problem(*store), HasSubstr("disk is full"));
    }
    EXPECT_EQ(ReadWholeBinary(*MakeSqliteStore(file_), kHistoryKey, "Data"), large);
}

TEST_F(Guarded, PlaceThatCannotHoldAFileIsTold) {
    for (const std::filesystem::path& place : {folder_.Path(), folder_ / "file/below"}) {
        WriteFile(folder_ / "file", std::string_view("in the way"));
        GuardedStore store(MakeSqliteStore(place), PathText(place));
        Number(store, "v");
        EXPECT_TRUE(store.RegWriteDword(kMainKey, "v", 1));
        EXPECT_THAT(Problem(store), HasSubstr("can't be made or written"));
    }
}

TEST_F(Guarded, FreshUserHasNoProblem) {
    const auto store = Open();
    EXPECT_EQ(Number(*store, "v"), 0u);
    EXPECT_FALSE(store->RegDeleteValue(kMainKey, "v"));
    WriteFile(file_, std::string_view());  // an empty file is an empty database
    EXPECT_EQ(Number(*store, "v"), 0u);
    EXPECT_EQ(Problem(*store), "");
}

}  // namespace
}  // namespace bw
