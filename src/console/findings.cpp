#include "console/findings.h"

namespace bw {}
