// A picture becomes the screen: shown beside what the console makes of it, and how far they differ.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>

#include "designer/import/picture_import.h"
#include "designer/window/design_host.h"
#include "designer/window/picture_view.h"
#include "shell/framework/background_tasks.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Works on a snapshot of the design, on a thread of its own; a change of an option stops that and
// starts anew, so that the newest options win.
class CImportDialog : public CDialogBase {
  public:
    // The picture has pixels; the place is a cell of the screen, where the user may move it from.
    CImportDialog(Picture picture, WorkingCopy copy, Pos at, Language language,
                  QWidget* parent = nullptr);

    // What the user wants to be put into the design; nothing if he gave up.
    std::optional<ImportResult> Ask();

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    void Arrange();
    void Start();
    void ShowResult();
    void ShowNumbers();
    QString NumbersText() const;
    ImportOptions Options() const;

    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnOption(MessageParam wParam, MessageParam lParam);
    MessageResult OnPutIn(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);

    std::shared_ptr<const Picture> picture_;
    std::shared_ptr<const WorkingCopy> copy_;
    int started_ = 0;       // how often; the last one's result counts
    bool current_ = false;  // result_ is that of the options shown
    std::optional<ImportResult> result_;

    QVBoxLayout layout_{this};
    QGridLayout views_;
    std::array<QLabel, 3> titles_;
    std::array<PictureView, 3> pictures_;
    QLabel numbers_;
    QHBoxLayout options_;
    QCheckBox keepPalettes_;
    QCheckBox keepTiles_;
    QCheckBox dither_;
    QLabel columnLabel_;
    QSpinBox column_;
    QLabel rowLabel_;
    QSpinBox row_;
    QHBoxLayout buttons_;
    QPushButton putIn_;
    QPushButton cancel_;
    // Last, so that no task runs any more when the rest goes.
    BackgroundTasks tasks_{Queue()};
};

// The pixels of a picture that was pasted or dropped; those less than half opaque are clear.
Picture PictureOf(const QImage& image);

// Asks how the picture is to become the screen and puts it in as one step. The place is that of
// its top left corner, moved onto the screen. A file is read beside the window; what is wrong with
// it, or with a picture without pixels or with too many, is told.
void ImportPicture(DesignHost& host, const std::filesystem::path& file, Pos at);
void ImportPicture(DesignHost& host, Picture picture, Pos at);

}  // namespace bw
