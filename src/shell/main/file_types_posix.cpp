#include "shell/main/file_types.h"

namespace bw {

std::optional<bool> ListsOpenHere() {
    return std::nullopt;
}

bool SetListsOpenHere(bool, Language) {
    return false;
}

}  // namespace bw
