#include "console/contact_sheet.h"

namespace bw {}
