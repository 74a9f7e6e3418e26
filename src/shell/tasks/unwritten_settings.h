// The user's settings for whoever reads them and must not leave anything there.
#pragma once

#include "settings/settings_store.h"

namespace bw {

// Writes count as done and go nowhere. `store` must live longer.
class UnwrittenSettings final : public SettingsStore {
  public:
    explicit UnwrittenSettings(const SettingsStore& store) : store_(store) {}

    bool RegWriteDword(std::string_view, std::string_view, uint32_t) override { return true; }
    bool RegWriteString(std::string_view, std::string_view, std::u16string_view) override {
        return true;
    }
    bool RegWriteBinary(std::string_view, std::string_view, std::span<const uint8_t>) override {
        return true;
    }
    bool RegCreateKey(std::string_view) override { return true; }
    bool RegDeleteValue(std::string_view, std::string_view) override { return true; }

    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override {
        return store_.RegReadDword(key, name, out);
    }
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override {
        return store_.RegReadString(key, name, out);
    }
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override {
        return store_.RegReadBinary(key, name, bytes, size);
    }
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override {
        return store_.RegValueSize(key, name, out);
    }

  private:
    const SettingsStore& store_;
};

}  // namespace bw
