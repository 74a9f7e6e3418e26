#include "update/http_url.h"

#include <algorithm>
#include <charconv>

namespace bw {
namespace {

constexpr size_t kSchemeRoom = 32;  // characters, all
constexpr size_t kHostRoom = 256;
constexpr size_t kUserRoom = 128;
constexpr size_t kPathRoom = 2084;
constexpr size_t kQueryRoom = 260;  // with its question mark
constexpr uint16_t kHttpPort = 80;
constexpr uint16_t kHttpsPort = 443;

// Not the C library's, which ask the locale.
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsPlain(char c) {
    return IsLetter(c) || IsDigit(c) || std::string_view(".-_+~").find(c) != std::string_view::npos;
}
// A byte of another alphabet's letter in UTF-8.
bool IsHigh(char c) {
    return static_cast<unsigned char>(c) >= 0x80;
}
bool IsBlankOrControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte <= 0x20 || byte == 0x7F;
}

std::optional<uint8_t> HexByte(std::string_view digits) {
    uint8_t value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) return std::nullopt;
    return value;
}

std::optional<std::string> DecodePercent(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const std::optional<uint8_t> byte = HexByte(text.substr(i + 1, 2));
        if (!byte || IsBlankOrControl(static_cast<char>(*byte))) return std::nullopt;
        decoded += static_cast<char>(*byte);
        i += 2;
    }
    return decoded;
}

std::optional<std::string> ReadScheme(std::string_view text) {
    if (text.empty() || text.size() > kSchemeRoom || !IsLetter(text.front())) return std::nullopt;
    std::string scheme(text);
    for (char& c : scheme) {
        if (!IsLetter(c) && !IsDigit(c) && c != '+' && c != '-' && c != '.') return std::nullopt;
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return scheme;
}

bool ReadUser(std::string_view text, HttpUrl& url) {
    const size_t colon = text.find(':');
    std::optional<std::string> user = DecodePercent(text.substr(0, colon));
    std::optional<std::string> password =
        DecodePercent(colon == text.npos ? std::string_view() : text.substr(colon + 1));
    if (!user || !password) return false;
    url.user = std::move(*user);
    url.password = std::move(*password);
    return url.user.size() <= kUserRoom && url.password.size() <= kUserRoom;
}

bool ReadPort(std::string_view text, HttpUrl& url) {
    if (text.empty()) return true;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), url.port);
    return error == std::errc() && end == text.data() + text.size() && url.port != 0;
}

bool ReadHost(std::string_view text, HttpUrl& url) {
    const bool isIpv6 = text.starts_with('[');
    const size_t end = isIpv6 ? text.find(']') : std::min(text.find(':'), text.size());
    if (end == text.npos) return false;
    url.host = isIpv6 ? text.substr(1, end - 1) : text.substr(0, end);
    const auto fits = [&](char c) {
        if (isIpv6) return c == ':' || c == '.' || HexByte(std::string{'0', c});
        return IsLetter(c) || IsDigit(c) || c == '-' || c == '.' || c == '_' || IsHigh(c);
    };
    if (url.host.empty() || url.host.size() > kHostRoom || !std::ranges::all_of(url.host, fits)) {
        return false;
    }
    const std::string_view rest = text.substr(isIpv6 ? end + 1 : end);
    return rest.empty() || (rest.front() == ':' && ReadPort(rest.substr(1), url));
}

bool ReadPath(std::string_view text, HttpUrl& url) {
    text = text.substr(0, text.find('#'));
    if (!text.starts_with('/')) url.path = "/";
    url.path += text;
    const size_t query = text.find('?');
    return url.path.size() <= kPathRoom &&
           (query == text.npos || text.size() - query <= kQueryRoom);
}

}  // namespace

std::string HttpUrl::WithoutUser() const {
    const bool isIpv6 = host.find(':') != host.npos;
    const std::string name = isIpv6 ? "[" + host + "]" : host;
    return scheme + "://" + name + (port == 0 ? "" : ":" + std::to_string(port)) + path;
}

std::optional<HttpUrl> CrackUrl(std::string_view text) {
    const size_t colon = text.find("://");
    if (colon == text.npos || std::ranges::any_of(text, IsBlankOrControl)) return std::nullopt;
    std::optional<std::string> scheme = ReadScheme(text.substr(0, colon));
    if (!scheme) return std::nullopt;
    HttpUrl url;
    url.scheme = std::move(*scheme);
    if (url.IsHttp()) url.port = url.IsSecure() ? kHttpsPort : kHttpPort;

    text.remove_prefix(colon + 3);
    std::string_view authority = text.substr(0, text.find_first_of("/?#"));
    const std::string_view path = text.substr(authority.size());
    if (const size_t at = authority.rfind('@'); at != authority.npos) {
        if (!ReadUser(authority.substr(0, at), url)) return std::nullopt;
        authority.remove_prefix(at + 1);
    }
    if (!ReadHost(authority, url) || !ReadPath(path, url)) return std::nullopt;
    return url;
}

std::string LastPart(std::string_view url) {
    const std::optional<HttpUrl> parts = CrackUrl(url);
    if (!parts) return {};
    const std::string path = parts->path.substr(0, parts->path.find('?'));
    const std::string name = path.substr(path.rfind('/') + 1);
    const bool isPlain = std::ranges::all_of(name, IsPlain) &&
                         std::ranges::any_of(name, [](char c) { return c != '.'; });
    return isPlain ? name : std::string();
}

}  // namespace bw
