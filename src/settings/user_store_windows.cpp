// The user's settings in the registry, under HKEY_CURRENT_USER.
#include "settings/settings_store.h"
#include "support/text.h"
#include "support/windows_api.h"

namespace bw {
namespace {

std::wstring Wide(std::string_view utf8) {
    const std::u16string wide = ToWide(utf8);
    return {wide.begin(), wide.end()};
}

// Reads a value of one of the forms in `allowed` (RRF_RT_...); `size` as RegGetValueW has it.
LSTATUS Get(std::string_view key, std::string_view name, DWORD allowed, void* bytes, DWORD& size) {
    return RegGetValueW(HKEY_CURRENT_USER, Wide(key).c_str(), Wide(name).c_str(), allowed, nullptr,
                        bytes, &size);
}

bool Set(std::string_view key, std::string_view name, DWORD form, const void* bytes, size_t size) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, Wide(key).c_str(), Wide(name).c_str(), form, bytes,
                           static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

class RegistryStore final : public SettingsStore {
  public:
    bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) override {
        return Set(key, name, REG_DWORD, &value, sizeof value);
    }
    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override {
        uint32_t value = 0;
        DWORD size = sizeof value;
        if (Get(key, name, RRF_RT_REG_DWORD, &value, size) != ERROR_SUCCESS) return false;
        out = value;
        return true;
    }
    bool RegWriteString(std::string_view key, std::string_view name,
                        std::u16string_view text) override {
        const std::wstring wide(text.begin(), text.end());
        return Set(key, name, REG_SZ, wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
    }
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override {
        DWORD size = 0;
        if (Get(key, name, RRF_RT_REG_SZ, nullptr, size) != ERROR_SUCCESS) return false;
        std::wstring text(size / sizeof(wchar_t), L'\0');
        if (Get(key, name, RRF_RT_REG_SZ, text.data(), size) != ERROR_SUCCESS) return false;
        text.resize(size < sizeof(wchar_t) ? 0 : size / sizeof(wchar_t) - 1);  // the closing zero
        out.assign(text.begin(), text.end());
        return true;
    }
    bool RegWriteBinary(std::string_view key, std::string_view name,
                        std::span<const uint8_t> bytes) override {
        return Set(key, name, REG_BINARY, bytes.data(), bytes.size());
    }
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override {
        DWORD stored = 0;
        if (Get(key, name, RRF_RT_REG_BINARY, nullptr, stored) != ERROR_SUCCESS) return false;
        if (stored > size || Get(key, name, RRF_RT_REG_BINARY, bytes, stored) != ERROR_SUCCESS) {
            return false;
        }
        size = stored;
        return true;
    }
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override {
        DWORD size = 0;
        if (Get(key, name, RRF_RT_ANY, nullptr, size) != ERROR_SUCCESS) return false;
        out = size;
        return true;
    }
    bool RegCreateKey(std::string_view key) override {
        HKEY created = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, Wide(key).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                            nullptr, &created, nullptr) != ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(created);
        return true;
    }
    bool RegDeleteValue(std::string_view key, std::string_view name) override {
        return RegDeleteKeyValueW(HKEY_CURRENT_USER, Wide(key).c_str(), Wide(name).c_str()) ==
               ERROR_SUCCESS;
    }
};

}  // namespace

std::unique_ptr<SettingsStore> MakeUserStore() {
    return std::make_unique<RegistryStore>();
}

std::u16string UserStorePlace() {
    return ToWide("HKEY_CURRENT_USER\\" + std::string(kMainKey));
}

}  // namespace bw
