#include "shell/main/fit_part.h"

#include "shell/dialogs/fit_dialog.h"

namespace bw {

void FitPart::Show(BoardType board) {
    // Whatever would change the list waits, or is refused.
    const BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    CFitDialog::Rows shown;
    if (const ListEditor::ShownRows rows = view_.ShownRows())
        shown.emplace(rows->begin(), rows->end());
    CFitDialog dialog(host_.Editor(), host_.Store(), board, std::move(shown),
                      host_.CurrentLanguage(), &window_);
    dialog.DoModal();
    if (!dialog.Told().empty()) host_.Tell(dialog.Told());
}

}  // namespace bw
