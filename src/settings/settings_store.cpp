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

}  // namespace bw
