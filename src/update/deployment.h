// Where this copy of the program looks for a newer one, and whose signature it believes. Set when
// it is built (CMake: BANKWEAVER_UPDATE_HOST, BANKWEAVER_UPDATE_KEY, BANKWEAVER_UPDATE_PLAIN_HTTP).
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "support/version.h"

namespace bw {

struct Deployment {
    // What stands before /raw/master/Release/, such as "https://files.example.org/project". Empty:
    // the network is never used.
    std::string host{};
    // The public key that programs are signed with, as minisign prints it: 56 characters of base64.
    std::string key{};
    // The program itself may come over http, too. What is installed is signed all the same.
    bool plainHttp = false;
    // The running program's.
    std::string version{ProgramVersion()};

    bool NamesHost() const { return !host.empty(); }
};

Deployment BuiltInDeployment();

// The two files of the host; the milliseconds since 1970 behind the "?" keep caches out.
std::string UpdateFileUrl(const Deployment& deployment, std::chrono::milliseconds since1970);
std::string NoticeFileUrl(const Deployment& deployment, std::chrono::milliseconds since1970);

}  // namespace bw
