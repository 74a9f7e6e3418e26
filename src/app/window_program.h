// The window program from its first line to its last.
#pragma once

#include "update/deployment.h"

namespace bw {

// What main() gives back. `deployment` is where this copy looks for a newer one.
int RunWindowProgram(int count, char** values, const Deployment& deployment);

}  // namespace bw
