#include "list/collection/dat_file.h"

namespace bw {

Result<DatNames, DatProblem> ReadDat(const std::filesystem::path&,
                                     const std::unordered_set<uint32_t>&, const DatProgress&) {
    return DatProblem{.kind = DatProblem::Kind::kNoDatabase};
}

std::u16string DatProblemText(const DatProblem&, const std::filesystem::path&, Language) {
    return {};
}

}  // namespace bw
