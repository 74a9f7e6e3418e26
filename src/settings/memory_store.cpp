// The settings store that lives as long as its object.
#include <algorithm>
#include <map>
#include <mutex>
#include <variant>

#include "settings/setting_place.h"
#include "settings/settings_store.h"

namespace bw {
namespace {

using Binary = std::vector<uint8_t>;
using Value = std::variant<uint32_t, std::u16string, Binary>;
size_t SizeOf(uint32_t) {
    return sizeof(uint32_t);
}
size_t SizeOf(const std::u16string& text) {
    return (text.size() + 1) * sizeof(char16_t);
}
size_t SizeOf(const Binary& bytes) {
    return bytes.size();
}

class MemoryStore final : public SettingsStore {
  public:
    bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) override {
        return Write(key, name, value);
    }
    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override {
        return Read(key, name, out);
    }
    bool RegWriteString(std::string_view key, std::string_view name,
                        std::u16string_view text) override {
        return Write(key, name, std::u16string(text));
    }
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override {
        return Read(key, name, out);
    }
    bool RegWriteBinary(std::string_view key, std::string_view name,
                        std::span<const uint8_t> bytes) override {
        return Write(key, name, Binary(bytes.begin(), bytes.end()));
    }
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override {
        Binary stored;
        if (!Read(key, name, stored) || stored.size() > size) return false;
        std::ranges::copy(stored, bytes);
        size = stored.size();
        return true;
    }
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override {
        const std::lock_guard guard(lock_);
        const auto found = values_.find(PlaceOf(key, name));
        if (found == values_.end()) return false;
        out = std::visit([](const auto& value) { return SizeOf(value); }, found->second);
        return true;
    }
    bool RegCreateKey(std::string_view) override { return true; }
    bool RegDeleteValue(std::string_view key, std::string_view name) override {
        const std::lock_guard guard(lock_);
        return values_.erase(PlaceOf(key, name)) != 0;
    }

  private:
    bool Write(std::string_view key, std::string_view name, Value value) {
        const std::lock_guard guard(lock_);
        values_.insert_or_assign(PlaceOf(key, name), std::move(value));
        return true;
    }
    template <typename Form>
    bool Read(std::string_view key, std::string_view name, Form& out) const {
        const std::lock_guard guard(lock_);
        const auto found = values_.find(PlaceOf(key, name));
        const Form* value = found == values_.end() ? nullptr : std::get_if<Form>(&found->second);
        if (value == nullptr) return false;
        out = *value;
        return true;
    }

    mutable std::mutex lock_;
    std::map<SettingPlace, Value> values_;
};

}  // namespace

std::unique_ptr<SettingsStore> MakeMemoryStore() {
    return std::make_unique<MemoryStore>();
}

}  // namespace bw
