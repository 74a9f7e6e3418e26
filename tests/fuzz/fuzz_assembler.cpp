// Any bytes as assembler source. A line of "---" ends the main source and begins the file "1", the
// next one the file "2" and so on, for inputs that include each other.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/assembler.h"
#include "fuzz.h"

namespace {

using namespace bw::assembler;

class Parts : public SourceProvider {
  public:
    explicit Parts(std::string_view text) {
        constexpr std::string_view kSeparator = "\n---\n";
        for (;;) {
            const std::size_t end = text.find(kSeparator);
            parts_.push_back(text.substr(0, end));
            if (end == std::string_view::npos) return;
            text.remove_prefix(end + kSeparator.size());
        }
    }

    SourceBytes Read(std::string_view path, std::size_t limit) override {
        SourceBytes result;
        if (path.size() != 1 || path[0] < '0') return result;
        const auto index = static_cast<std::size_t>(path[0] - '0');
        if (index >= parts_.size()) return result;
        result.size = parts_[index].size();
        result.status = result.size > limit ? ReadStatus::TooLarge : ReadStatus::Ok;
        if (result.status != ReadStatus::Ok) return result;
        result.bytes = std::make_unique<char[]>(result.size + kSourcePadding);
        std::copy(parts_[index].begin(), parts_[index].end(), result.bytes.get());
        return result;
    }

  private:
    std::vector<std::string_view> parts_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Parts parts(TextOf({data, size}));
    // Enough for some nesting; the full limit would only cost time here.
    constexpr std::size_t kText = 4096;
    const AssemblyResult result =
        Assemble("0", parts, {.listing = true, .symbols = true, .textLimit = kText});
    Expect(result.Ok() == !result.rom.empty());
    Expect(result.diagnostics.size() <= kDiagnosticLimit);
    if (result.Ok()) {
        Expect(result.rom.size() == 16 + result.rom[4] * 16384U + result.rom[5] * 8192U);
    } else {
        Expect(!result.diagnostics.empty() && !FormatDiagnostics(result).empty());
    }
    return 0;
}
