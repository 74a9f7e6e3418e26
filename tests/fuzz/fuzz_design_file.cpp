// Any bytes as a design: what is refused changes nothing, what is taken can be written and read
// again.
#include "designer/files/design_file.h"
#include "fuzz.h"

namespace {

constexpr bw::Language kEnglish = bw::Language::kEnglish;

bw::DesignDocument Sample() {
    bw::DesignDocument document;
    document.store.ArrowTileList.resize(5);
    document.store.CaptionText = u"kept";
    return document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bw::DesignDocument sample = Sample();
    static const std::vector<uint8_t> before = bw::WriteDesign(sample);
    bw::DesignDocument document = sample;
    if (const auto problem = bw::ReadDesign({data, size}, document, kEnglish)) {
        Expect(!problem->text.empty() && bw::WriteDesign(document) == before);
        return 0;
    }
    const std::vector<uint8_t> written = bw::WriteDesign(document);
    document = sample;
    Expect(!bw::ReadDesign(written, document, kEnglish) && bw::WriteDesign(document) == written);
    return 0;
}
