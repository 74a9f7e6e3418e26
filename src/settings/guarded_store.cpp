#include "settings/guarded_store.h"

#include <utility>
#include <vector>

#include "support/text.h"

namespace bw {
namespace {

std::u16string Reason(StoreProblem problem, Language language) {
    switch (problem) {
        case StoreProblem::kLocked:
            return LoadText(TextId::kSettingsLocked, language);
        case StoreProblem::kNoDatabase:
            return LoadText(TextId::kSettingsDamaged, language);
        case StoreProblem::kDiskFull:
            return LoadText(TextId::kDiskFull, language);
        case StoreProblem::kNoPermission:
            return LoadText(TextId::kWritingNotAllowed, language);
        case StoreProblem::kNone:
        case StoreProblem::kOther:
            break;
    }
    return LoadText(TextId::kSettingsOutOfOrder, language);
}

}  // namespace

GuardedStore::GuardedStore(std::unique_ptr<SettingsStore> store, std::u16string place,
                           std::chrono::milliseconds rest)
    : store_(std::move(store)), place_(std::move(place)), rest_(rest) {}

GuardedStore::~GuardedStore() {
    Flush();
}

bool GuardedStore::NoteProblem(StoreProblem otherwise) const {
    StoreProblem problem = store_->LastProblem();
    if (problem == StoreProblem::kNone) problem = otherwise;
    if (problem == StoreProblem::kNone) return false;
    if (firstProblem_ == StoreProblem::kNone) firstProblem_ = problem;
    if (problem == StoreProblem::kLocked) restUntil_ = Clock::now() + rest_;
    return true;
}

bool GuardedStore::Write(std::string_view key, std::string_view name, Form form, auto&& write) {
    const std::lock_guard guard(lock_);
    const SettingPlace place = PlaceOf(key, name);
    if (!Resting() && !unread_.contains(place)) {
        if (write(*store_)) {
            changes_.erase(place);
            StoreChanges();
            return true;
        }
        NoteProblem(StoreProblem::kOther);
    }
    changes_.insert_or_assign(place, Change{std::string(key), std::string(name), form});
    return write(*memory_);
}

bool GuardedStore::RegWriteDword(std::string_view key, std::string_view name, uint32_t value) {
    return Write(key, name, Form::kNumber,
                 [&](SettingsStore& store) { return store.RegWriteDword(key, name, value); });
}

bool GuardedStore::RegWriteString(std::string_view key, std::string_view name,
                                  std::u16string_view text) {
    return Write(key, name, Form::kText,
                 [&](SettingsStore& store) { return store.RegWriteString(key, name, text); });
}

bool GuardedStore::RegWriteBinary(std::string_view key, std::string_view name,
                                  std::span<const uint8_t> bytes) {
    return Write(key, name, Form::kBinary,
                 [&](SettingsStore& store) { return store.RegWriteBinary(key, name, bytes); });
}

bool GuardedStore::Read(std::string_view key, std::string_view name, auto&& read) const {
    const std::lock_guard guard(lock_);
    const SettingPlace place = PlaceOf(key, name);
    if (changes_.contains(place)) return read(*memory_);
    if (!Resting()) {
        const bool found = read(*store_);
        if (found || !NoteProblem(StoreProblem::kNone)) {
            unread_.erase(place);
            return found;
        }
    }
    unread_.insert(place);
    return false;
}

bool GuardedStore::RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const {
    return Read(key, name,
                [&](SettingsStore& store) { return store.RegReadDword(key, name, out); });
}

bool GuardedStore::RegReadString(std::string_view key, std::string_view name,
                                 std::u16string& out) const {
    return Read(key, name,
                [&](SettingsStore& store) { return store.RegReadString(key, name, out); });
}

bool GuardedStore::RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                                 size_t& size) const {
    return Read(key, name,
                [&](SettingsStore& store) { return store.RegReadBinary(key, name, bytes, size); });
}

bool GuardedStore::RegValueSize(std::string_view key, std::string_view name, size_t& out) const {
    return Read(key, name,
                [&](SettingsStore& store) { return store.RegValueSize(key, name, out); });
}

bool GuardedStore::RegCreateKey(std::string_view key) {
    const std::lock_guard guard(lock_);
    if (!Resting() && !store_->RegCreateKey(key)) NoteProblem(StoreProblem::kOther);
    return true;
}

bool GuardedStore::RegDeleteValue(std::string_view key, std::string_view name) {
    const std::lock_guard guard(lock_);
    const SettingPlace place = PlaceOf(key, name);
    const bool changed = changes_.contains(place);
    const bool existed = memory_->RegDeleteValue(key, name) || !changed;
    if (!Resting() && !unread_.contains(place)) {
        const bool existedBelow = store_->RegDeleteValue(key, name);
        if (existedBelow || !NoteProblem(StoreProblem::kNone)) {
            changes_.erase(place);
            return changed ? existed : existedBelow;
        }
    }
    changes_.insert_or_assign(place, Change{std::string(key), std::string(name), Form::kDeleted});
    return existed;
}

std::optional<std::u16string> GuardedStore::TakeProblem(Language language) {
    const std::lock_guard guard(lock_);
    if (told_ || firstProblem_ == StoreProblem::kNone) return std::nullopt;
    told_ = true;
    return FormatText(LoadText(TextId::kSettingsNotStored, language), place_,
                      Reason(firstProblem_, language));
}

bool GuardedStore::Replay(const Change& change) {
    switch (change.form) {
        case Form::kNumber: {
            uint32_t number = 0;
            memory_->RegReadDword(change.key, change.name, number);
            return store_->RegWriteDword(change.key, change.name, number);
        }
        case Form::kText: {
            std::u16string text;
            memory_->RegReadString(change.key, change.name, text);
            return store_->RegWriteString(change.key, change.name, text);
        }
        case Form::kBinary: {
            const std::vector<uint8_t> bytes = ReadWholeBinary(*memory_, change.key, change.name);
            return store_->RegWriteBinary(change.key, change.name, bytes);
        }
        case Form::kDeleted:
            break;
    }
    return store_->RegDeleteValue(change.key, change.name) ||
           store_->LastProblem() == StoreProblem::kNone;
}

// Stops at the first that the store refuses: one wait for a lock is enough.
void GuardedStore::StoreChanges() {
    for (auto at = changes_.begin(); at != changes_.end();) {
        if (unread_.contains(at->first)) {
            ++at;
        } else if (Replay(at->second)) {
            at = changes_.erase(at);
        } else {
            NoteProblem(StoreProblem::kOther);
            return;
        }
    }
}

void GuardedStore::Flush() {
    const std::lock_guard guard(lock_);
    StoreChanges();
}

bool GuardedStore::InMemoryOnly(std::string_view key, std::string_view name) const {
    const std::lock_guard guard(lock_);
    return changes_.contains(PlaceOf(key, name));
}

std::unique_ptr<GuardedStore> MakeGuardedUserStore() {
    return std::make_unique<GuardedStore>(MakeUserStore(), UserStorePlace());
}

}  // namespace bw
