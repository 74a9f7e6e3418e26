// Any bytes as a signature file, and as a public key.

#include "fuzz.h"
#include "update/minisign.h"

namespace {

// The files of the corpus are signed with its secret half, which is thrown away.
constexpr std::string_view kKey = "RWQBC5E8IutA7xb+S+v81bkUBlT9dpsf56SuNgviKb4+IKpnHrHLVW/z";
constexpr std::string_view kComment = "bankweaver 0.3.0.0 f";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = TextOf({data, size});
    Expect(!bw::ReadMinisignKey(text) || size == 56);
    const auto signature = bw::ReadMinisignSignature(text);
    if (!signature) return 0;
    Expect(size <= bw::kLongestMinisign);
    Expect(signature->comment.find('\n') == std::string::npos);
    Expect(text.find(signature->comment) != text.npos);
    Expect(!bw::SignsFile(*bw::ReadMinisignKey(kKey), *signature, {}));
    if (bw::SignsComment(*bw::ReadMinisignKey(kKey), *signature))
        Expect(signature->comment == kComment);
    Expect(!bw::SignsComment({}, *signature));
    return 0;
}
