#include "builder/carts/cart_contents.h"

namespace bw {

FileResult<CartContents> ReadCartContents(const std::filesystem::path& cart) {
    return FileProblem{cart, FileProblem::Kind::kWrongKind};
}

std::u16string NotKnownText(const CartEntry&, Language) {
    return {};
}

FileResult<std::vector<SplitGame>> SplitCart(const std::filesystem::path&, const CartContents&,
                                             const std::filesystem::path&,
                                             const std::function<bool(size_t, size_t)>&) {
    return std::vector<SplitGame>();
}

}  // namespace bw
