#include "support/file_problem.h"
#include "support/text.h"

namespace bw {

std::u16string SystemMessage(std::error_code answer) {
    return ToWide(answer.message());
}

}  // namespace bw
