#include "console/fceux.h"

namespace bw {}
