#include "cli/wildcards.h"

namespace bw {

std::vector<std::filesystem::path> NamedPaths(const std::string& name) {
    return {name};
}

}  // namespace bw
