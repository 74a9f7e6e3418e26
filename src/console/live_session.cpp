#include "console/live_session.h"

namespace bw {}
