// The designer's commands: what each id does.
#pragma once

#include <span>

#include "designer/window/design_parts.h"

namespace bw {

struct DesignerCommands {
    struct Row {
        int id;
        void (*run)(CDesignDialog::Parts& parts);
    };
    static std::span<const Row> Rows();
};

}  // namespace bw
