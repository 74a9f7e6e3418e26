#include "settings/settings_store.h"

#include <algorithm>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "common/file_size_limit.h"
#include "common/sqlite_stranger.h"
#include "common/temporary_folder.h"
#include "settings/guarded_store.h"
#include "support/files.h"

namespace bw {
namespace {

using Bytes = std::vector<uint8_t>;

// What a store gives back for one value; nothing if it counts as missing.
std::optional<uint32_t> Number(const SettingsStore& store, std::string_view name,
                               std::string_view key = kMainKey) {
    uint32_t value = 0xABCD;
    if (store.RegReadDword(key, name, value)) return value;
    EXPECT_EQ(value, 0xABCDu) << "untouched";
    return std::nullopt;
}

std::optional<std::u16string> Text(const SettingsStore& store, std::string_view name) {
    std::u16string value = u"default";
    if (store.RegReadString(kMainKey, name, value)) return value;
    EXPECT_EQ(value, u"default");
    return std::nullopt;
}

std::optional<Bytes> Binary(const SettingsStore& store, std::string_view name, size_t room = 64) {
    Bytes value(room, 0xEE);
    size_t size = room;
    if (!store.RegReadBinary(kMainKey, name, value.data(), size)) {
        EXPECT_EQ(size, room);
        EXPECT_EQ(value, Bytes(room, 0xEE));
        return std::nullopt;
    }
    value.resize(size);
    return value;
}

std::optional<size_t> SizeOf(const SettingsStore& store, std::string_view name) {
    size_t size = 4711;
    if (store.RegValueSize(kMainKey, name, size)) return size;
    EXPECT_EQ(size, 4711u);
    return std::nullopt;
}

class AnyStore : public testing::TestWithParam<const char*> {
  protected:
    std::unique_ptr<SettingsStore> Make(std::string_view kind) const {
        if (kind == "memory") return MakeMemoryStore();
        auto sqlite = MakeSqliteStore(folder_ / "config/settings");
        if (kind == "sqlite") return sqlite;
        return std::make_unique<GuardedStore>(std::move(sqlite), u"");
    }

    TemporaryFolder folder_;
    std::unique_ptr<SettingsStore> store_ = Make(GetParam());
};
INSTANTIATE_TEST_SUITE_P(Stores, AnyStore, testing::Values("memory", "sqlite", "guarded"),
                         [](const auto& which) { return std::string(which.param); });

TEST_P(AnyStore, GivesBackWhatWasStored) {
    for (const uint32_t number : {0u, 8u, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_TRUE(store_->RegWriteDword(kMainKey, "Value", number));
        EXPECT_EQ(Number(*store_, "Value"), number);
        EXPECT_EQ(SizeOf(*store_, "Value"), 4u);
    }
    using namespace std::string_literals;
    for (const std::u16string& text : {u""s, u"^\\d+\\."s, u"\u9B42 \U0001F3AE"s, u"'); --"s}) {
        EXPECT_TRUE(store_->RegWriteString(kMainKey, "Value", text));
        EXPECT_EQ(Text(*store_, "Value"), text);
        EXPECT_EQ(SizeOf(*store_, "Value"), text.size() * 2 + 2);
    }
    for (const Bytes& bytes : {Bytes{}, Bytes{0}, Bytes{0xFF, 0, 0x80, 1}}) {
        EXPECT_TRUE(store_->RegWriteBinary(kMainKey, "Value", bytes));
        EXPECT_EQ(Binary(*store_, "Value"), bytes);
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

TEST_P(AnyStore, BinaryNeedsRoom) {
    store_->RegWriteBinary(kMainKey, "v", Bytes{1, 2, 3});
    EXPECT_FALSE(Binary(*store_, "v", 2));
    EXPECT_EQ(Binary(*store_, "v", 3), (Bytes{1, 2, 3}));
    const Bytes large(3'000'000, 0x5A);
    EXPECT_TRUE(store_->RegWriteBinary(kMainKey, "v", large));
    EXPECT_EQ(ReadWholeBinary(*store_, kMainKey, "v"), large);
}

TEST_P(AnyStore, NamesIgnoreAsciiCaseAndKeysStandApart) {
    EXPECT_TRUE(store_->RegWriteDword("Software\\Bankweaver", "PageSize", 5));
    EXPECT_EQ(Number(*store_, "PAGESIZE", "software\\BANKWEAVER"), 5u);
    EXPECT_TRUE(store_->RegWriteDword("SOFTWARE\\bankweaver", "pagesize", 20));
    EXPECT_EQ(Number(*store_, "PageSize"), 20u);
    EXPECT_FALSE(Number(*store_, "PageSize", kDesignKey));
    EXPECT_TRUE(store_->RegWriteDword("ab", "c", 1));
    EXPECT_FALSE(Number(*store_, "bc", "a"));
    EXPECT_TRUE(store_->RegWriteDword(kMainKey, "\xC3\xA9", 1));
    EXPECT_FALSE(Number(*store_, "\xC3\x89"));
}

TEST_P(AnyStore, Deletion) {
    EXPECT_TRUE(store_->RegCreateKey(kMainKey));
    EXPECT_FALSE(store_->RegDeleteValue(kMainKey, "Delete")) << "nothing there";
    store_->RegWriteString(kMainKey, "Delete", u"old.exe");
    store_->RegWriteDword(kBoardKey, "Delete", 1);
    EXPECT_TRUE(store_->RegDeleteValue(kMainKey, "DELETE"));
    EXPECT_FALSE(Text(*store_, "Delete"));
    EXPECT_EQ(Number(*store_, "Delete", kBoardKey), 1u);
}

// Runs the same work on two threads at once.
void Twice(const std::function<void(int)>& work) {
    std::thread other([&] { work(1); });
    work(0);
    other.join();
}

// What two programs, or two threads of one, do to each other's values.
void ExpectNothingLost(const std::function<std::shared_ptr<SettingsStore>()>& open) {
    Twice([&](int writer) {
        const auto store = open();
        // Making the file waits for the disk; a busy one can use up the patience of a call.
        for (int tries = 0; tries < 20 && !store->RegCreateKey(kMainKey); ++tries) {
        }
        for (uint32_t i = 0; i < 50; ++i) {
            const std::string name = std::to_string(writer) + "/" + std::to_string(i);
            EXPECT_TRUE(store->RegWriteDword(kMainKey, name, i)) << name;
            EXPECT_TRUE(store->RegWriteDword(kMainKey, "shared", i));
            EXPECT_EQ(Number(*store, name), i) << name;
        }
    });
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

TEST_F(SqliteStore, ReadingMakesNoFile) {
    const auto store = MakeSqliteStore(file_);
    EXPECT_FALSE(Number(*store, "v"));
    EXPECT_FALSE(store->RegDeleteValue(kMainKey, "v"));
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

TEST_F(SqliteStore, LaterStoresReadTheFile) {
    const auto reader = MakeSqliteStore(file_);
    EXPECT_FALSE(Number(*reader, "v")) << "opened before the file is there";
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

TEST_F(SqliteStore, PlaceThatIsNoDatabaseIsLeftAlone) {
    const std::string text(5000, 'x');
    WriteFile(file_, text);
    ExpectEveryCallToFail(*MakeSqliteStore(file_));
    const auto bytes = ReadFile(file_);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), text);
    ExpectEveryCallToFail(*MakeSqliteStore(file_ / "below/a file"));
    ExpectEveryCallToFail(*MakeSqliteStore(folder_.Path()));
}

TEST_F(SqliteStore, DamagedFileGivesNoWrongValues) {
    {
        const auto store = MakeSqliteStore(file_);
        store->RegWriteBinary(kMainKey, "v", Bytes(50'000, 0x5A));
    }
    const auto whole = ReadFile(file_);
    ASSERT_TRUE(whole && whole->size() > 20'000);
    Bytes damaged = *whole;
    std::fill(damaged.begin() + 4096, damaged.begin() + 16'384, uint8_t{0xA5});
    WriteFile(file_, damaged);
    EXPECT_TRUE(ReadWholeBinary(*MakeSqliteStore(file_), kMainKey, "v").empty());
    WriteFile(file_, std::span(*whole).first(10'000));
    EXPECT_TRUE(ReadWholeBinary(*MakeSqliteStore(file_), kMainKey, "v").empty());
}

TEST_F(SqliteStore, LockedFileIsGivenUp) {
    const auto store = MakeSqliteStore(file_);
    ASSERT_TRUE(store->RegWriteDword(kMainKey, "v", 1));
    SqliteStranger stranger(file_);
    stranger.Run("BEGIN EXCLUSIVE");
    EXPECT_FALSE(store->RegWriteDword(kMainKey, "v", 2));
    EXPECT_EQ(Number(*store, "v"), 1u) << "readers needn't wait";
    stranger.Run("COMMIT");
    EXPECT_TRUE(store->RegWriteDword(kMainKey, "v", 3));
    EXPECT_EQ(Number(*store, "v"), 3u);
}

TEST_F(SqliteStore, FullDiskKeepsTheOldValue) {
    const auto store = MakeSqliteStore(file_);
    ASSERT_TRUE(store->RegWriteBinary(kMainKey, "v", Bytes{1, 2, 3}));
    {
        const FileSizeLimit limit(100'000);
        EXPECT_FALSE(store->RegWriteBinary(kMainKey, "v", Bytes(1'000'000, 0xFF)));
        EXPECT_EQ(Binary(*store, "v"), (Bytes{1, 2, 3}));
    }
    EXPECT_TRUE(store->RegWriteBinary(kMainKey, "v", Bytes{4}));
    EXPECT_EQ(Binary(*MakeSqliteStore(file_), "v"), Bytes{4});
}

TEST_F(SqliteStore, NumbersNobodyStoresCountAsMissing) {
    const auto store = MakeSqliteStore(file_);
    store->RegWriteDword(kMainKey, "v", 1);
    SqliteStranger stranger(file_);
    for (const char* change : {"UPDATE settings SET value = -1", "UPDATE settings SET value = 1.5",
                               "UPDATE settings SET value = 4294967296"}) {
        stranger.Run(change);
        EXPECT_FALSE(Number(*store, "v")) << change;
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

}  // namespace
}  // namespace bw
