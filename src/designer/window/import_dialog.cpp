#include "designer/window/import_dialog.h"

#include <QAccessible>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "shell/framework/colors.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kFirstTitle = 41401;
constexpr int kNumbers = 41404;
constexpr int kKeepPalettesBox = 41405;
constexpr int kKeepTilesBox = 41406;
constexpr int kDitherBox = 41407;
constexpr int kColumnLabel = 41408;
constexpr int kColumnBox = 41409;
constexpr int kRowLabel = 41410;
constexpr int kRowBox = 41411;
constexpr int kFirstPicture = 41412;
constexpr int kPutInButton = kEndOk;
constexpr int kCancelButton = kEndCancel;

constexpr std::array<TextId, 3> kTitles{TextId::kOriginalPicture, TextId::kPictureOnScreen,
                                        TextId::kPictureError};

// What a task hands back.
struct Job {
    std::optional<ImportResult> result;
};

}  // namespace

CImportDialog::CImportDialog(Picture picture, WorkingCopy copy, Pos at, Language language,
                             QWidget* parent)
    : CDialogBase(language, parent),
      picture_(std::make_shared<const Picture>(std::move(picture))),
      copy_(std::make_shared<const WorkingCopy>(std::move(copy))) {
    for (size_t view = 0; view < titles_.size(); ++view) {
        AddControl(kFirstTitle + static_cast<int>(view), titles_[view]);
        AddControl(kFirstPicture + static_cast<int>(view), pictures_[view]);
    }
    AddControl(kNumbers, numbers_);
    AddControl(kKeepPalettesBox, keepPalettes_);
    AddControl(kKeepTilesBox, keepTiles_);
    AddControl(kDitherBox, dither_);
    AddControl(kColumnLabel, columnLabel_);
    AddControl(kColumnBox, column_);
    AddControl(kRowLabel, rowLabel_);
    AddControl(kRowBox, row_);
    AddControl(kPutInButton, putIn_);
    AddControl(kCancelButton, cancel_);
    SetBackground(QColor(kPaleBlue));
    column_.setRange(0, kScreenColumns - 1);
    row_.setRange(0, kScreenRows - 1);
    column_.setValue(at.X);
    row_.setValue(at.Y);
    for (QSpinBox* box : {&column_, &row_})
        connect(box, &QSpinBox::valueChanged, this, [this] { Start(); });
    Arrange();
}

void CImportDialog::Arrange() {
    for (int view = 0; view < 3; ++view) {
        const auto number = static_cast<size_t>(view);
        titles_[number].setAlignment(Qt::AlignHCenter);
        views_.addWidget(&titles_[number], 0, view);
        views_.addWidget(&pictures_[number], 1, view);
    }
    views_.setRowStretch(1, 1);
    columnLabel_.setBuddy(&column_);
    rowLabel_.setBuddy(&row_);
    numbers_.setWordWrap(true);
    numbers_.setTextFormat(Qt::PlainText);
    numbers_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    // As much as the longest text needs, so that nothing moves when it changes.
    numbers_.setMinimumHeight(3 * numbers_.fontMetrics().lineSpacing());
    numbers_.setAlignment(Qt::AlignTop | Qt::AlignLeading);
    for (QWidget* option : std::initializer_list<QWidget*>{&keepPalettes_, &keepTiles_, &dither_})
        options_.addWidget(option);
    options_.addStretch();
    for (QWidget* place :
         std::initializer_list<QWidget*>{&columnLabel_, &column_, &rowLabel_, &row_})
        options_.addWidget(place);
    buttons_.addStretch();
    buttons_.addWidget(&putIn_);
    buttons_.addWidget(&cancel_);
    layout_.addLayout(&views_, 1);
    layout_.addWidget(&numbers_);
    layout_.addLayout(&options_);
    layout_.addLayout(&buttons_);
    putIn_.setDefault(true);
    keepPalettes_.setFocus();
}

const MessageTable& CImportDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CImportDialog::OnInit),
        OnCommand(kKeepPalettesBox, &CImportDialog::OnOption),
        OnCommand(kKeepTilesBox, &CImportDialog::OnOption),
        OnCommand(kDitherBox, &CImportDialog::OnOption),
        OnCommand(kPutInButton, &CImportDialog::OnPutIn),
        OnCommand(kCancelButton, &CImportDialog::OnCancel),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CImportDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kPictureToScreen, UiLanguage()));
    for (size_t view = 0; view < titles_.size(); ++view) {
        SetTextId(kFirstTitle + static_cast<int>(view), kTitles[view]);
        pictures_[view].setAccessibleName(titles_[view].text());
    }
    const QString tip = QtText(TextId::kPictureErrorTip, UiLanguage());
    pictures_.back().setToolTip(tip);
    pictures_.back().setAccessibleDescription(tip);
    SetTextId(kKeepPalettesBox, TextId::kKeepPalettes);
    SetTextId(kKeepTilesBox, TextId::kKeepTiles);
    SetTextId(kDitherBox, TextId::kOrderedDither);
    SetTextId(kColumnLabel, TextId::kPictureColumnLabel);
    SetTextId(kRowLabel, TextId::kPictureRowLabel);
    SetTextId(kPutInButton, TextId::kPutIn);
    SetTextId(kCancelButton, TextId::kCancel);
    column_.setAccessibleName(WithoutLetter(columnLabel_.text()));
    row_.setAccessibleName(WithoutLetter(rowLabel_.text()));
    ShowNumbers();
}

std::optional<ImportResult> CImportDialog::Ask() {
    if (DoModal() != kEndOk) return std::nullopt;
    return std::move(result_);
}

ImportOptions CImportDialog::Options() const {
    return {.at = {column_.value(), row_.value()},
            .keepPalettes = keepPalettes_.isChecked(),
            .keepTiles = keepTiles_.isChecked(),
            .dithering = dither_.isChecked() ? Dithering::kOrdered : Dithering::kNone};
}

// The result that shows stays until the new one is there.
void CImportDialog::Start() {
    tasks_.StopAll();
    current_ = false;
    putIn_.setEnabled(false);
    const int number = ++started_;
    const auto job = std::make_shared<Job>();
    tasks_.StartFreeTask(
        [job, picture = picture_, copy = copy_, options = Options()](TaskControl& control) {
            job->result = bw::ImportPicture(*copy, *picture, options, control.Stop());
        },
        [this, job, number] {
            if (number != started_ || !job->result) return;
            result_ = std::move(job->result);
            current_ = true;
            ShowResult();
        });
}

void CImportDialog::ShowResult() {
    pictures_[0].Show(result_->original);
    pictures_[1].Show(result_->result);
    pictures_[2].Show(result_->error);
    putIn_.setEnabled(true);
    ShowNumbers();
    QAccessibleEvent announcement(&numbers_, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void CImportDialog::ShowNumbers() {
    SetText(kNumbers, NumbersText());
    numbers_.setAccessibleName(numbers_.text());
}

QString CImportDialog::NumbersText() const {
    const auto words = [&](TextId id, const auto&... values) {
        return ToQt(FormatText(LoadText(id, UiLanguage()), values...));
    };
    if (!result_) return words(TextId::kPictureBeingFitted);
    const std::u16string error = FromQt(QLocale::c().toString(result_->meanError, 'f', 1));
    QString text = result_->withoutLoss ? words(TextId::kPictureWithoutLoss, result_->tiles)
                                        : words(TextId::kPictureNumbers, result_->tiles,
                                                result_->lossyBlocks.size(), error);
    if (result_->cut) text += QLatin1Char('\n') + words(TextId::kPictureCut);
    if (result_->lettersTaken != 0) {
        text += QLatin1Char('\n') + words(TextId::kPictureTookLetters, result_->lettersTaken);
    }
    return text;
}

MessageResult CImportDialog::OnInit(MessageParam, MessageParam) {
    // Room for the pictures before they are there.
    const Surface empty(std::min<int>(static_cast<int>(picture_->width), kScreenColumns * 8),
                        std::min<int>(static_cast<int>(picture_->height), kScreenRows * 8));
    for (PictureView& view : pictures_)
        view.Show(empty);
    Start();
    return 1;
}

MessageResult CImportDialog::OnOption(MessageParam, MessageParam) {
    Start();
    return 1;
}

MessageResult CImportDialog::OnPutIn(MessageParam, MessageParam) {
    if (current_) End(kEndOk);
    return 1;
}

MessageResult CImportDialog::OnCancel(MessageParam, MessageParam) {
    End(kEndCancel);
    return 1;
}

}  // namespace bw
