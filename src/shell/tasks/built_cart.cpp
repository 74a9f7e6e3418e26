#include "shell/tasks/built_cart.h"

#include <system_error>

namespace bw {

BuiltCart CartOf(const BuildOutcome& outcome) {
    BuiltCart cart{.file = std::filesystem::absolute(outcome.output),
                   .format = outcome.format,
                   .board = outcome.board,
                   .images = {},
                   .names = outcome.names};
    for (const MulticartItem& item : outcome.layout.items) {
        if (item.isMenu == 0) cart.images.push_back(item.path);
    }
    std::error_code error;
    cart.bytes = std::filesystem::file_size(cart.file, error);
    cart.written = std::filesystem::last_write_time(cart.file, error);
    return cart;
}

bool IsAsBuilt(const BuiltCart& cart) {
    std::error_code error;
    const uintmax_t bytes = std::filesystem::file_size(cart.file, error);
    if (error || bytes != cart.bytes) return false;
    const auto written = std::filesystem::last_write_time(cart.file, error);
    return !error && written == cart.written;
}

}  // namespace bw
