// A published release, read as the program would read it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "update/deployment.h"

namespace bw {

struct ReleaseReport {
    std::vector<std::string> found;
    std::vector<std::string> faults;  // by which the program would not install it, or show less
};

// `folder` is what the host has at /raw/master/Release. Without notify.json there is no notice.
ReleaseReport CheckRelease(const std::filesystem::path& folder, const Deployment& deployment);

}  // namespace bw
