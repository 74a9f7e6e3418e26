#include "settings/settings_store.h"

namespace bw {

std::vector<uint8_t> ReadWholeBinary(const SettingsStore& store, std::string_view key,
                                     std::string_view name) {
    size_t size = 0;
    if (!store.RegValueSize(key, name, size)) return {};
    std::vector<uint8_t> bytes(size);
    // Another running copy may have stored a longer value between the two calls; then this one
    // is as good as missing.
    if (!store.RegReadBinary(key, name, bytes.data(), size)) return {};
    bytes.resize(size);
    return bytes;
}

bool StoreNumber(SettingsStore& store, std::string_view key, std::string_view name,
                 uint32_t value) {
    uint32_t stored = 0;
    if (store.RegReadDword(key, name, stored) && stored == value) return true;
    return store.RegCreateKey(key) && store.RegWriteDword(key, name, value);
}

}  // namespace bw
