// The user's settings: values of three forms under named keys. A value that is missing or has
// another form than the one asked for is not an error; the read gives false and leaves `out` as it
// was, so that the caller's default stands.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

inline constexpr std::string_view kMainKey = "Software\\Bankweaver";
inline constexpr std::string_view kBoardKey = "Software\\Bankweaver\\Coolboy";
inline constexpr std::string_view kHistoryKey = "Software\\Bankweaver\\History";
inline constexpr std::string_view kHistoryValue = "Data";  // under the key above: the list
inline constexpr std::string_view kDesignKey = "Software\\Bankweaver\\MenuV2";

// Why a store can't do what it was asked for.
enum class StoreProblem {
    kNone,  // nothing wrong; what gave false is a value that is missing
    kLocked,
    kNoDatabase,  // the file holds something else, or is damaged
    kDiskFull,
    kNoPermission,
    kOther
};

// Names are those of the platform registry that this interface stands for. Key and value names
// ignore ASCII case, as they do there. All calls give true on success.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // Writing creates the key as needed and replaces a value of whatever form.
    virtual bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) = 0;
    virtual bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const = 0;
    virtual bool RegWriteString(std::string_view key, std::string_view name,
                                std::u16string_view text) = 0;
    virtual bool RegReadString(std::string_view key, std::string_view name,
                               std::u16string& out) const = 0;
    virtual bool RegWriteBinary(std::string_view key, std::string_view name,
                                std::span<const uint8_t> bytes) = 0;
    // `size` holds the room in `bytes` before the call and the value's size after it. A room too
    // small gives false and leaves both as they were.
    virtual bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                               size_t& size) const = 0;
    // The size in bytes of a value of any form: 4 for a number, two per unit and two more for the
    // closing zero of a text.
    virtual bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const = 0;
    virtual bool RegCreateKey(std::string_view key) = 0;
    virtual bool RegDeleteValue(std::string_view key, std::string_view name) = 0;

    // Why the last call gave false, for a caller that keeps other threads out meanwhile. A store
    // that can't tell says that nothing is wrong.
    virtual StoreProblem LastProblem() const { return StoreProblem::kNone; }
};

// A whole binary value; empty if it is missing or of another form.
std::vector<uint8_t> ReadWholeBinary(const SettingsStore& store, std::string_view key,
                                     std::string_view name);

// Lives in memory only. Safe for use from several threads.
std::unique_ptr<SettingsStore> MakeMemoryStore();

// One SQLite file, created with its folder at the first write. Safe for use from several threads
// and several running programs. A file that can't be opened or isn't a database makes every call
// give false.
std::unique_ptr<SettingsStore> MakeSqliteStore(const std::filesystem::path& file);

// The store of this platform for the current user: SQLite below UserConfigFolder(), or the
// registry on Windows unless BANKWEAVER_HOME is set. The place is what to call it before the user.
std::unique_ptr<SettingsStore> MakeUserStore();
std::u16string UserStorePlace();

// Writes unless the value stands there already: a start would otherwise wait for the disk once for
// each setting.
bool StoreNumber(SettingsStore& store, std::string_view key, std::string_view name, uint32_t value);

}  // namespace bw
