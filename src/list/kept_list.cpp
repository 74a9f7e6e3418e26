#include "list/kept_list.h"

namespace bw {

FileResult<KeptList> KeptList::Begin(const std::filesystem::path& folder) {
    return FileProblem{folder};
}

FileResult<> KeptList::Keep(const GameList&, const std::filesystem::path&) {
    return {};
}

void KeptList::Forget() {}

std::vector<BroughtBack> FindKeptLists(const std::filesystem::path&, const std::filesystem::path&) {
    return {};
}

}  // namespace bw
