#include "builder/tables/cart_tables.h"

namespace bw {}
