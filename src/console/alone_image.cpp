#include "console/alone_image.h"

namespace bw {}
