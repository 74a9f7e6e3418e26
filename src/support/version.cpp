#include "support/version.h"

namespace bw {

std::string_view ProgramVersion() {
    return BANKWEAVER_VERSION;
}

}  // namespace bw
