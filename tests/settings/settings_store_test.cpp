#include "settings/settings_store.h"

#include <algorithm>
#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "common/environment_variable.h"
#include "common/file_size_limit.h"
#include "common/temporary_folder.h"
#include "settings/guarded_store.h"
#include "support/files.h"
#include "system_store.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using Bytes = std::vector<uint8_t>;

// What a store gives back for one value; nothing if it counts as missing.
template <typename Value>
std::optional<Value> Found(bool found, const Value& value, const Value& before) {
    if (found) return value;
    EXPECT_EQ(value, before) << "untouched";
    return std::nullopt;
}
std::optional<uint32_t> Number(const SettingsStore& store, std::string_view name,
                               std::string_view key = kMainKey) {
    uint32_t value = 0xABCD;
    const bool found = store.RegReadDword(key, name, value);
    return Found(found, value, 0xABCDu);
}
std::optional<std::u16string> Text(const SettingsStore& store, std::string_view name) {
    std::u16string value = u"default";
    const bool found = store.RegReadString(kMainKey, name, value);
    return Found<std::u16string>(found, value, u"default");
}
std::optional<Bytes> Binary(const SettingsStore& store, std::string_view name, size_t room = 64) {
    Bytes value(room, 0xEE);
    size_t size = room;
    const bool found = store.RegReadBinary(kMainKey, name, value.data(), size);
    value.resize(size);
    return Found(found, value, Bytes(room, 0xEE));
}
std::optional<size_t> SizeOf(const SettingsStore& store, std::string_view name) {
    size_t size = 4711;
    const bool found = store.RegValueSize(kMainKey, name, size);
    return Found<size_t>(found, size, 4711);
}

// Another program that uses a settings file.
class SqliteStranger {
  public:
    explicit SqliteStranger(const std::filesystem::path& file) {
        EXPECT_EQ(sqlite3_open(file.string().c_str(), &database_), SQLITE_OK);
    }
    SqliteStranger(SqliteStranger&&) = delete;
    ~SqliteStranger() { sqlite3_close(database_); }
    void Run(const char* words) {
        EXPECT_EQ(sqlite3_exec(database_, words, nullptr, nullptr, nullptr), SQLITE_OK) << words;
    }

  private:
    sqlite3* database_ = nullptr;
};

class AnyStore : public testing::TestWithParam<const char*> {
  protected:
    std::unique_ptr<SettingsStore> Make(std::string_view kind) const {
        if (kind == "memory") return MakeMemoryStore();
        if (kind == "system") return test::MakeSystemStore();
        auto sqlite = MakeSqliteStore(folder_ / "config/settings");
        if (kind == "sqlite") return sqlite;
        return std::make_unique<GuardedStore>(std::move(sqlite), u"");
    }

    TemporaryFolder folder_;
    std::unique_ptr<SettingsStore> store_ = Make(GetParam());
};
INSTANTIATE_TEST_SUITE_P(Stores, AnyStore, testing::ValuesIn(test::StoreKinds()),
                         [](const auto& which) { return std::string(which.param); });

TEST_P(AnyStore, GivesBackWhatWasStored) {
    for (const uint32_t number : {0u, 8u, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_TRUE(store_->RegWriteDword(kMainKey, "Value", number));
        EXPECT_EQ(Number(*store_, "Value"), number);
        EXPECT_EQ(SizeOf(*store_, "Value"), 4u);
    }
    for (const std::u16string text : {u"", u"^\\d+\\.", u"\u9B42 \U0001F3AE", u"'); --"}) {
        EXPECT_TRUE(store_->RegWriteString(kMainKey, "Value", text));
        EXPECT_EQ(Text(*store_, "Value"), text);
        EXPECT_EQ(SizeOf(*store_, "Value"), text.size() * 2 + 2);
    }
    for (const Bytes& bytes : {Bytes{}, Bytes{0xFF, 0, 0x80, 1}, Bytes(3'000'000, 0x5A)}) {
        EXPECT_TRUE(store_->RegWriteBinary(kMainKey, "Value", bytes));
        EXPECT_EQ(Binary(*store_, "Value", bytes.size() + 1), bytes);
        EXPECT_TRUE(bytes.empty() || !Binary(*store_, "Value", bytes.size() - 1)) << "no room";
        EXPECT_EQ(SizeOf(*store_, "Value"), bytes.size());
        EXPECT_EQ(ReadWholeBinary(*store_, kMainKey, "Value"), bytes);
    }
}

TEST_P(AnyStore, ValueOfAnotherFormCountsAsMissing) {
    store_->RegWriteDword(kMainKey, "number", 0x31323334);
    store_->RegWriteString(kMainKey, "text", u"1234");
    store_->RegWriteBinary(kMainKey, "binary", Bytes{1, 2, 3, 4});
    for (const char* name : {"number", "text", "binary", "missing"}) {
        const std::string_view form = name;
        EXPECT_EQ(Number(*store_, name).has_value(), form == "number") << name;
        EXPECT_EQ(Text(*store_, name).has_value(), form == "text") << name;
        EXPECT_EQ(Binary(*store_, name).has_value(), form == "binary") << name;
        EXPECT_EQ(ReadWholeBinary(*store_, kMainKey, name).empty(), form != "binary") << name;
        EXPECT_EQ(SizeOf(*store_, name).has_value(), form != "missing") << name;
    }
}

TEST_P(AnyStore, NamesIgnoreAsciiCaseAndKeysStandApart) {
    EXPECT_TRUE(store_->RegWriteDword("Software\\Bankweaver", "PageSize", 5));
    EXPECT_EQ(Number(*store_, "PAGESIZE", "software\\BANKWEAVER"), 5u);
    EXPECT_TRUE(store_->RegWriteDword("SOFTWARE\\bankweaver", "pagesize", 20));
    EXPECT_EQ(Number(*store_, "PageSize"), 20u);
    EXPECT_FALSE(Number(*store_, "PageSize", kDesignKey));
    EXPECT_TRUE(store_->RegWriteDword("ab", "c", 1));
    EXPECT_FALSE(Number(*store_, "bc", "a"));
    // The registry goes further, in which no name of ours takes part.
    if (std::string_view(GetParam()) != "system") {
        EXPECT_TRUE(store_->RegWriteDword(kMainKey, "\xC3\xA9", 1));
        EXPECT_FALSE(Number(*store_, "\xC3\x89"));
    }

    EXPECT_TRUE(store_->RegCreateKey(kMainKey));
    EXPECT_FALSE(store_->RegDeleteValue(kMainKey, "Delete")) << "nothing there";
    store_->RegWriteString(kMainKey, "Delete", u"old.exe");
    store_->RegWriteDword(kBoardKey, "Delete", 1);
    EXPECT_TRUE(store_->RegDeleteValue(kMainKey, "DELETE"));
    EXPECT_FALSE(Text(*store_, "Delete"));
    EXPECT_EQ(Number(*store_, "Delete", kBoardKey), 1u);
}

// What two programs, or two threads of one, do to each other's values.
void ExpectNothingLost(const std::function<std::shared_ptr<SettingsStore>()>& open) {
    const auto write = [&](const std::string& writer) {
        const auto store = open();
        // Making the file waits for the disk; a busy one can use up the patience of a call.
        for (int tries = 0; tries < 20 && !store->RegCreateKey(kMainKey); ++tries) {
        }
        for (uint32_t i = 0; i < 50; ++i) {
            const std::string name = writer + std::to_string(i);
            EXPECT_TRUE(store->RegWriteDword(kMainKey, name, i)) << name;
            EXPECT_TRUE(store->RegWriteDword(kMainKey, "shared", i));
            EXPECT_EQ(Number(*store, name), i) << name;
        }
    };
    std::thread other(write, "1/");
    write("0/");
    other.join();
    const auto store = open();
    for (uint32_t i = 0; i < 50; ++i) {
        EXPECT_EQ(Number(*store, "0/" + std::to_string(i)), i);
        EXPECT_EQ(Number(*store, "1/" + std::to_string(i)), i);
    }
}

TEST_P(AnyStore, SeveralThreadsShareOneStore) {
    std::shared_ptr<SettingsStore> shared = std::move(store_);
    ExpectNothingLost([&] { return shared; });
}

class SqliteStore : public testing::Test {
  protected:
    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "settings.sqlite3";
};

TEST_F(SqliteStore, ReadingMakesNoFileAndReadsALaterOne) {
    const auto reader = MakeSqliteStore(file_);
    EXPECT_FALSE(Number(*reader, "v"));
    EXPECT_FALSE(reader->RegDeleteValue(kMainKey, "v"));
    EXPECT_EQ(folder_.CountFiles(), 0u);
    MakeSqliteStore(file_)->RegWriteDword(kMainKey, "v", 7);
    EXPECT_EQ(Number(*reader, "v"), 7u);
    EXPECT_EQ(Number(*MakeSqliteStore(file_), "v"), 7u);
}

TEST_F(SqliteStore, TwoRunningProgramsShareOneFile) {
    ExpectNothingLost([&] { return MakeSqliteStore(file_); });  // both also make it at once
}

void ExpectEveryCallToFail(SettingsStore& store) {
    EXPECT_FALSE(store.RegWriteDword(kMainKey, "v", 1));
    EXPECT_FALSE(store.RegWriteString(kMainKey, "v", u"1"));
    EXPECT_FALSE(store.RegWriteBinary(kMainKey, "v", Bytes{1}));
    EXPECT_FALSE(store.RegCreateKey(kMainKey));
    EXPECT_FALSE(store.RegDeleteValue(kMainKey, "v"));
    EXPECT_FALSE(Number(store, "v"));
    EXPECT_FALSE(Text(store, "v"));
    EXPECT_FALSE(Binary(store, "v"));
    EXPECT_FALSE(SizeOf(store, "v"));
}

TEST_F(SqliteStore, DamagedFileGivesNoWrongValues) {
    MakeSqliteStore(file_)->RegWriteBinary(kMainKey, "v", Bytes(50'000, 0x5A));
    const auto whole = ReadFile(file_);
    ASSERT_TRUE(whole && whole->size() > 20'000);
    Bytes damaged = *whole;
    std::fill(damaged.begin() + 4096, damaged.begin() + 16'384, uint8_t{0xA5});
    WriteFile(file_, damaged);
    EXPECT_TRUE(ReadWholeBinary(*MakeSqliteStore(file_), kMainKey, "v").empty());
    WriteFile(file_, std::span(*whole).first(10'000));
    EXPECT_TRUE(ReadWholeBinary(*MakeSqliteStore(file_), kMainKey, "v").empty());
}

TEST_F(SqliteStore, NumbersNobodyStoresCountAsMissing) {
    const auto store = MakeSqliteStore(file_);
    store->RegWriteDword(kMainKey, "v", 1);
    SqliteStranger stranger(file_);
    for (const std::string value : {"-1", "1.5", "4294967296"}) {
        stranger.Run(("UPDATE settings SET value = " + value).c_str());
        EXPECT_FALSE(Number(*store, "v")) << value;
    }
    stranger.Run("UPDATE settings SET value = 4294967295");
    EXPECT_EQ(Number(*store, "v"), 4294967295u);
}

TEST_F(SqliteStore, UsersStoreMovesWithItsVariable) {
    const EnvironmentVariable home("BANKWEAVER_HOME", folder_.Path().c_str());
    EXPECT_TRUE(MakeUserStore()->RegWriteDword(kMainKey, "PageSize", 15));
    EXPECT_EQ(Number(*MakeUserStore(), "PageSize"), 15u);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "config/settings.sqlite3"));
}

class Guarded : public SqliteStore {
  protected:
    std::unique_ptr<GuardedStore> Open(std::chrono::milliseconds rest = kRestAfterLock) const {
        return std::make_unique<GuardedStore>(MakeSqliteStore(file_), PathText(file_), rest);
    }
    std::optional<uint32_t> Stored(const char* name) const {
        return Number(*MakeSqliteStore(file_), name);
    }
    static std::string Problem(GuardedStore& store, Language language = Language::kEnglish) {
        return ToUtf8(store.TakeProblem(language).value_or(u""));
    }
};

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
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * 700ms) << "one wait, not eleven";
    EXPECT_TRUE(store->InMemoryOnly(kMainKey, "A"));
    EXPECT_EQ(Stored("old"), 1u) << "readers of the file needn't wait";

    EXPECT_THAT(Problem(*store), testing::AllOf(HasSubstr(file_.string()), HasSubstr("locked")));
    EXPECT_EQ(Problem(*store), "") << "told once";

    stranger.Run("COMMIT");
    store->Flush();
    EXPECT_FALSE(store->InMemoryOnly(kMainKey, "a"));
    const auto below = MakeSqliteStore(file_);
    std::u16string text;
    EXPECT_TRUE(below->RegReadString(kMainKey, "text", text) && text == u"words");
    EXPECT_EQ(ReadWholeBinary(*below, kMainKey, "bytes"), (Bytes{1, 2}));
    EXPECT_EQ(Stored("h"), 2u);
    EXPECT_FALSE(Stored("old"));
}

TEST_F(Guarded, WriteThatSucceedsTakesTheOthersAlong) {
    const auto store = Open(0ms);
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
        EXPECT_FALSE(Number(*store, "list"));
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

TEST_F(Guarded, FullDiskIsWaitedFor) {
    const Bytes large(1'000'000, 0xFF);
    {
        const auto store = Open();
        store->RegWriteBinary(kHistoryKey, "Data", Bytes{1, 2, 3});
        {
            const FileSizeLimit limit(100'000);
            EXPECT_TRUE(store->RegWriteBinary(kHistoryKey, "Data", large));
            EXPECT_EQ(ReadWholeBinary(*store, kHistoryKey, "Data"), large);
            EXPECT_EQ(ReadWholeBinary(*MakeSqliteStore(file_), kHistoryKey, "Data").size(), 3u);
        }
        EXPECT_TRUE(store->InMemoryOnly(kHistoryKey, "Data"));
        EXPECT_THAT(Problem(*store), HasSubstr("disk is full"));
    }
    EXPECT_EQ(ReadWholeBinary(*MakeSqliteStore(file_), kHistoryKey, "Data"), large);
}

TEST_F(Guarded, PlaceThatHoldsNoStoreIsToldAndLeftAlone) {
    const Bytes text(5000, 'x');
    WriteFile(file_, text);
    const auto damaged = Open();
    EXPECT_FALSE(Number(*damaged, "v"));
    EXPECT_THAT(Problem(*damaged, Language::kChinese), HasSubstr("已损坏")) << "by the first read";
    const std::pair<std::filesystem::path, const char*> cases[] = {
        {file_, "damaged"},
        {folder_.Path(), "can't be made or written"},
        {file_ / "below/a file", "can't be made or written"}};
    for (const auto& [place, words] : cases) {
        ExpectEveryCallToFail(*MakeSqliteStore(place));
        GuardedStore store(MakeSqliteStore(place), PathText(place));
        EXPECT_TRUE(store.RegWriteDword(kMainKey, "v", 5));
        EXPECT_EQ(Number(store, "v"), 5u);
        EXPECT_THAT(Problem(store), testing::AllOf(HasSubstr(place.string()), HasSubstr(words)));
    }
    EXPECT_EQ(ReadFile(file_).ValueOr({}), text);
}

TEST_F(Guarded, FreshUserHasNoProblem) {
    const auto store = Open();
    EXPECT_FALSE(Number(*store, "v"));
    EXPECT_FALSE(store->RegDeleteValue(kMainKey, "v"));
    WriteFile(file_, std::string_view());  // an empty file is an empty database
    EXPECT_FALSE(Number(*store, "v"));
    EXPECT_EQ(Problem(*store), "");
}

}  // namespace
}  // namespace bw
