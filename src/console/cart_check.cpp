#include "console/cart_check.h"

namespace bw {}
