#include "designer/window/panel_page.h"

namespace bw {

PanelPage::~PanelPage() = default;

}  // namespace bw
