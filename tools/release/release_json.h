// The two files that a host has for the program, written.
#pragma once

#include <cstdint>
#include <string>

namespace bw {

// UTF-8; an empty one is left out.
struct ReleaseTexts {
    std::string english;
    std::string chinese;
};

struct ReleaseUpdate {
    std::string version;
    std::string url;
    bool force = false;
    ReleaseTexts texts;
};

struct ReleaseNotice {
    uint32_t id = 0;
    bool atEachStart = false;
    uint32_t users = 1;  // a bit for each audience
    ReleaseTexts texts;
};

std::string UpdateJson(const ReleaseUpdate& update);
std::string NoticeJson(const ReleaseNotice& notice);

}  // namespace bw
