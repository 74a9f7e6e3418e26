#include "app/appearance.h"

namespace bw {

// The desktop's own theme has its way.
void ChooseAppearance() {}

}  // namespace bw
