// A settings store that always works: what the store below it refuses is kept in memory, and said.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "language/language.h"
#include "settings/setting_place.h"
#include "settings/settings_store.h"

namespace bw {

// A write waits most of a second for another program's lock. A window that writes at every
// click would stand still most of the time, so a store that was locked is left alone this long.
inline constexpr std::chrono::milliseconds kRestAfterLock{5000};

// Safe for use from several threads. Writes and deletions that the store below refuses count as
// done: later reads see them, and each write that succeeds, Flush and the destructor try to store
// them after all.
//
// A value that couldn't be read is never replaced below: its writes stay in memory, since the
// program would otherwise store a default, or an empty list, over what the user had.
class GuardedStore final : public SettingsStore {
  public:
    // `place` is what to call the store before the user: its file.
    GuardedStore(std::unique_ptr<SettingsStore> store, std::u16string place,
                 std::chrono::milliseconds rest = kRestAfterLock);
    ~GuardedStore() override;

    bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) override;
    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override;
    bool RegWriteString(std::string_view key, std::string_view name,
                        std::u16string_view text) override;
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override;
    bool RegWriteBinary(std::string_view key, std::string_view name,
                        std::span<const uint8_t> bytes) override;
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override;
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override;
    bool RegCreateKey(std::string_view key) override;
    bool RegDeleteValue(std::string_view key, std::string_view name) override;

    // The first problem that the store below had, as words for the user: what is wrong and what to
    // do. Told once; nothing as long as there is no problem, and nothing ever after.
    std::optional<std::u16string> TakeProblem(Language language);

    // Tries to store what is in memory only; may wait for a lock.
    void Flush();
    // True if the value was written or deleted and the store below doesn't know of it.
    bool InMemoryOnly(std::string_view key, std::string_view name) const;

  private:
    using Clock = std::chrono::steady_clock;
    enum class Form { kNumber, kText, kBinary, kDeleted };
    // A change that the store below hasn't got; the value itself is in memory_.
    struct Change {
        std::string key;
        std::string name;
        Form form;
    };

    // All of these expect the lock to be held.
    bool Write(std::string_view key, std::string_view name, Form form, auto&& write);
    bool Read(std::string_view key, std::string_view name, auto&& read) const;
    bool Resting() const { return Clock::now() < restUntil_; }
    // Looks at the store below after a call that gave false; true if something is wrong with it.
    bool NoteProblem(StoreProblem otherwise) const;
    bool Replay(const Change& change);
    void StoreChanges();

    mutable std::mutex lock_;
    std::unique_ptr<SettingsStore> store_;
    std::u16string place_;
    std::chrono::milliseconds rest_;
    std::unique_ptr<SettingsStore> memory_ = MakeMemoryStore();
    std::map<SettingPlace, Change> changes_;
    mutable std::set<SettingPlace> unread_;
    mutable StoreProblem firstProblem_ = StoreProblem::kNone;
    mutable Clock::time_point restUntil_{};
    bool told_ = false;
};

// The user's store of this platform, guarded.
std::unique_ptr<GuardedStore> MakeGuardedUserStore();

}  // namespace bw
