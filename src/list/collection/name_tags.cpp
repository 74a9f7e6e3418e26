#include "list/collection/name_tags.h"

namespace bw {

TaggedName SplitTags(std::u16string_view name) {
    return {std::u16string(name), {}};
}

}  // namespace bw
