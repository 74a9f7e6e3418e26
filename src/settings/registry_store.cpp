#include "settings/registry_store.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <optional>
#include <utility>

#include "support/windows_path.h"

namespace bw {
namespace {

// A value as it stands there.
struct Value {
    DWORD form = REG_NONE;
    std::vector<uint8_t> bytes;
};

// Texts end in a zero, and need not, when another program wrote them.
std::u16string TextOf(const std::vector<uint8_t>& bytes) {
    std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
    if (text.ends_with(u'\0')) text.pop_back();
    return text;
}

class Key {
  public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    HKEY* Place() { return &key_; }
    HKEY Get() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

class RegistryStore final : public SettingsStore {
  public:
    explicit RegistryStore(std::string base) : base_(std::move(base)) {}

    bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) override {
        return Set(key, name, REG_DWORD, &value, sizeof value);
    }
    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override {
        const std::optional<Value> value = Get(key, name);
        if (!value || value->form != REG_DWORD || value->bytes.size() != sizeof out) return false;
        std::memcpy(&out, value->bytes.data(), sizeof out);
        return true;
    }
    bool RegWriteString(std::string_view key, std::string_view name,
                        std::u16string_view text) override {
        const std::u16string zeroed(text);
        return Set(key, name, REG_SZ, zeroed.c_str(), (zeroed.size() + 1) * sizeof(char16_t));
    }
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override {
        const std::optional<Value> value = Get(key, name);
        if (!value || value->form != REG_SZ) return false;
        out = TextOf(value->bytes);
        return true;
    }
    bool RegWriteBinary(std::string_view key, std::string_view name,
                        std::span<const uint8_t> bytes) override {
        return Set(key, name, REG_BINARY, bytes.data(), bytes.size());
    }
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override {
        const std::optional<Value> value = Get(key, name);
        if (!value || value->form != REG_BINARY || value->bytes.size() > size) return false;
        std::ranges::copy(value->bytes, bytes);
        size = value->bytes.size();
        return true;
    }
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override {
        const std::optional<Value> value = Get(key, name);
        if (!value) return false;
        out = value->form == REG_SZ ? (TextOf(value->bytes).size() + 1) * sizeof(char16_t)
                                    : value->bytes.size();
        return true;
    }
    bool RegCreateKey(std::string_view key) override {
        Key made;
        return Note(RegCreateKeyExW(HKEY_CURRENT_USER, PlaceOf(key).c_str(), 0, nullptr, 0,
                                    KEY_SET_VALUE, nullptr, made.Place(), nullptr));
    }
    bool RegDeleteValue(std::string_view key, std::string_view name) override {
        return Note(
            RegDeleteKeyValueW(HKEY_CURRENT_USER, PlaceOf(key).c_str(), WideOf(name).c_str()));
    }
    StoreProblem LastProblem() const override { return problem_; }

  private:
    std::wstring PlaceOf(std::string_view key) const {
        return base_.empty() ? WideOf(key) : WideOf(base_ + "\\" + std::string(key));
    }
    // Keeps what a result means as the problem of the call.
    bool Note(LSTATUS result) const {
        switch (result) {
            case ERROR_SUCCESS:
            case ERROR_FILE_NOT_FOUND:
                problem_ = StoreProblem::kNone;
                break;
            case ERROR_ACCESS_DENIED:
                problem_ = StoreProblem::kNoPermission;
                break;
            case ERROR_DISK_FULL:
            case ERROR_NO_SYSTEM_RESOURCES:
                problem_ = StoreProblem::kDiskFull;
                break;
            default:
                problem_ = StoreProblem::kOther;
        }
        return result == ERROR_SUCCESS;
    }
    bool Set(std::string_view key, std::string_view name, DWORD form, const void* bytes,
             size_t size) {
        return Note(RegSetKeyValueW(HKEY_CURRENT_USER, PlaceOf(key).c_str(), WideOf(name).c_str(),
                                    form, bytes, static_cast<DWORD>(size)));
    }
    std::optional<Value> Get(std::string_view key, std::string_view name) const {
        Key opened;
        if (!Note(RegOpenKeyExW(HKEY_CURRENT_USER, PlaceOf(key).c_str(), 0, KEY_QUERY_VALUE,
                                opened.Place())))
            return std::nullopt;
        const std::wstring wide = WideOf(name);
        Value value;
        value.bytes.resize(64);
        // Another running copy may store a longer value meanwhile.
        LSTATUS result = ERROR_MORE_DATA;
        while (result == ERROR_MORE_DATA) {
            auto size = static_cast<DWORD>(value.bytes.size());
            result = RegQueryValueExW(opened.Get(), wide.c_str(), nullptr, &value.form,
                                      value.bytes.data(), &size);
            value.bytes.resize(size);
        }
        if (!Note(result)) return std::nullopt;
        return value;
    }

    std::string base_;
    mutable std::atomic<StoreProblem> problem_ = StoreProblem::kNone;
};

}  // namespace

std::unique_ptr<SettingsStore> MakeRegistryStore(std::string base) {
    return std::make_unique<RegistryStore>(std::move(base));
}

}  // namespace bw
