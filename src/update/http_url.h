// The parts of an address.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

// No part is longer than its room: 32 characters for the scheme, 256 for the host, 128 each for
// user and password, 2,084 for the path, 260 for the query.
struct HttpUrl {
    std::string scheme;  // small letters
    std::string host;    // without the brackets of an IPv6 address
    uint16_t port = 0;   // the scheme's own where none is named; 0 for a scheme other than http
    std::string user;    // without percent signs' codes, as is the password
    std::string password;
    std::string path;  // with the query behind it; "/" at the least

    bool IsHttp() const { return scheme == "http" || IsSecure(); }
    bool IsSecure() const { return scheme == "https"; }
    // All but user and password, as an address again.
    std::string WithoutUser() const;

    bool operator==(const HttpUrl&) const = default;
};

// Nothing for what is no address, or has a part that is too long. Blanks and control characters
// are in no address, and a part behind "#" is left out: no host is told of it.
std::optional<HttpUrl> CrackUrl(std::string_view url);

// The name of the file that an address ends in: what stands behind the path's last slash, without
// the query. Empty if there is none, and for a name that is no plain one ("..", or with
// characters other than letters, digits, points, hyphens, underscores, plus signs and tildes).
std::string LastPart(std::string_view url);

}  // namespace bw
