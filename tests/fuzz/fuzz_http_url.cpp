// Any bytes as an address, and as what a host says before the body of its answer.
#include <algorithm>

#include "fuzz.h"
#include "update/http_head.h"
#include "update/http_url.h"

namespace {

void CheckAddress(std::string_view text) {
    const std::optional<bw::HttpUrl> url = bw::CrackUrl(text);
    const std::string name = bw::LastPart(text);
    Expect(name.find_first_of("/\\?%: ") == name.npos && name != "." && name != "..");
    if (!url) {
        Expect(name.empty());
        return;
    }
    Expect(url->scheme.size() <= 32 && url->host.size() <= 256 && url->user.size() <= 128 &&
           url->password.size() <= 128 && url->path.size() <= 2084);
    Expect(!url->scheme.empty() && !url->host.empty() && url->path.starts_with('/'));
    for (const std::string* part :
         {&url->scheme, &url->host, &url->user, &url->password, &url->path})
        Expect(std::ranges::none_of(*part, [](unsigned char c) { return c <= ' ' || c == 0x7F; }));
    // What is sent says the same, less the user.
    bw::HttpUrl expected = *url;
    expected.user.clear();
    expected.password.clear();
    Expect(bw::CrackUrl(url->WithoutUser()) == expected);
    Expect(url->path.find('?') != url->path.npos || url->path.ends_with("/" + name) ||
           name.empty());
}

void CheckHead(std::string_view text) {
    bw::HttpHead head;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size() - 1);
        head.Read(text.substr(0, end + 1));
        text.remove_prefix(end + 1);
    }
    Expect(head.Status() >= 0 && head.Status() <= 999);
    Expect(!(head.IsInterim() && head.IsRedirect()));
    // It can't be two ranges, nor one of another file.
    const bool isRange = head.IsRange({5, 10}, 20);
    Expect(!isRange ||
           (head.Status() == 206 && !head.IsRange({5, 11}, 20) && !head.IsRange({4, 10}, 20)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = TextOf({data, size});
    CheckAddress(text);
    CheckHead(text);
    return 0;
}
