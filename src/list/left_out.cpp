#include "list/left_out.h"

#include "support/paths.h"
#include "support/text.h"

namespace bw {

std::u16string LeftOutText(const LeftOut& item, Language) {
    return PathText(item.place);
}

}  // namespace bw
