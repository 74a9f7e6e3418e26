#include "designer/window/sample_dialog.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <cmath>

#include "designer/window/design_samples.h"
#include "shell/framework/colors.h"
#include "shell/framework/messages.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

// The controls, above the end codes that all dialogs have.
constexpr int kHint = 41101;
constexpr int kList = 41102;
constexpr int kAbout = 41103;
constexpr int kOpen = 41104;
constexpr int kCancelButton = 41105;

constexpr QSize kScreen(kScreenColumns* kTilePixels, kScreenRows* kTilePixels);
constexpr int kMargin = 12;  // around a picture

// One pixel of the console a pixel.
QImage ImageOf(const Surface& picture) {
    const QImage image(reinterpret_cast<const uchar*>(picture.Pixels().data()), picture.Width(),
                       picture.Height(), QImage::Format_RGB32);
    // Pixels of its own, and in a form without the byte for opacity, which surfaces leave 0.
    return image.scaled(kScreen).convertToFormat(QImage::Format_RGB888);
}

// The picture at a whole number of the screen's pixels for each of its own, whatever the screen's
// factor. Lists stretch an icon to a size in whole units: a border makes this one as large as that,
// for factors that are quarters.
QPixmap PixmapOf(const QImage& picture, qreal factor) {
    const int scale = std::max(1, static_cast<int>(std::lround(factor)));
    const QImage large = picture.scaled(picture.size() * scale);
    const auto room = [&](int pixels) {
        return static_cast<int>(std::lround(4 * factor * std::ceil(pixels / (4 * factor))));
    };
    QPixmap pixmap(room(large.width()), room(large.height()));
    pixmap.fill(Qt::transparent);
    QPainter(&pixmap).drawImage((pixmap.width() - large.width()) / 2, 0, large);
    pixmap.setDevicePixelRatio(factor);
    return pixmap;
}

}  // namespace

std::optional<size_t> CSampleDialog::Ask(QWidget* parent, const WorkingCopy& copy,
                                         Language language) {
    CSampleDialog dialog(parent, copy, language);
    if (dialog.DoModal() != kEndOk) return std::nullopt;
    return static_cast<size_t>(dialog.list_.currentRow());
}

CSampleDialog::CSampleDialog(QWidget* parent, const WorkingCopy& copy, Language language)
    : CDialogBase(language, parent) {
    AddControl(kHint, hint_);
    AddControl(kList, list_);
    AddControl(kAbout, about_);
    AddControl(kOpen, openButton_);
    AddControl(kCancelButton, cancelButton_);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    for (QLabel* label : {&hint_, &about_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    hint_.setBuddy(&list_);
    FillList(copy);
    row_.addStretch();
    row_.addWidget(&openButton_);
    row_.addWidget(&cancelButton_);
    layout_.addWidget(&hint_);
    layout_.addWidget(&list_);
    layout_.addWidget(&about_);
    layout_.addLayout(&row_);
    connect(&list_, &QListWidget::currentRowChanged, this, &CSampleDialog::ShowAbout);
    openButton_.setDefault(true);
    list_.setFocus();
    connect(&list_, &QListWidget::itemDoubleClicked, this,
            [this] { Send(kMessageCommand, kOpen); });
}

void CSampleDialog::FillList(const WorkingCopy& copy) {
    list_.setViewMode(QListView::IconMode);
    list_.setMovement(QListView::Static);
    list_.setWrapping(false);
    list_.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    QSize largest;
    for (const DesignSample& sample : DesignSamples()) {
        const QPixmap pixmap =
            PixmapOf(ImageOf(PictureOf(sample, copy, UiLanguage())), devicePixelRatioF());
        QIcon icon(pixmap);
        // Chosen or not, the picture has its own colours.
        icon.addPixmap(pixmap, QIcon::Selected);
        list_.addItem(QString());
        list_.item(list_.count() - 1)->setIcon(icon);
        largest = largest.expandedTo(pixmap.deviceIndependentSize().toSize());
    }
    list_.setIconSize(largest);
    const QSize cell = largest + QSize(2 * kMargin, kMargin + 2 * fontMetrics().lineSpacing());
    list_.setGridSize(cell);
    list_.setCurrentRow(0);
    // Two pictures side by side; more are scrolled to.
    const int frame = 2 * list_.frameWidth();
    list_.setMinimumSize(2 * cell.width() + frame, cell.height() + frame);
}

const MessageTable& CSampleDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kOpen, &CSampleDialog::OnOpen),
        OnCommand(kCancelButton, &CSampleDialog::OnCancel),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CSampleDialog::ApplyTexts() {
    const Language language = UiLanguage();
    setWindowTitle(QtText(TextId::kOpenSample, language));
    SetTextId(kHint, TextId::kOpenSampleHint);
    SetTextId(kOpen, TextId::kOpenSampleButton);
    SetTextId(kCancelButton, TextId::kCancel);
    list_.setAccessibleName(windowTitle());
    for (int row = 0; row < list_.count(); ++row) {
        const DesignSample& sample = DesignSamples()[static_cast<size_t>(row)];
        QListWidgetItem& item = *list_.item(row);
        item.setText(QtText(sample.name, language));
        item.setData(Qt::AccessibleDescriptionRole, QtText(sample.hint, language));
    }
    ShowAbout();
}

void CSampleDialog::ShowAbout() {
    const QListWidgetItem* chosen = list_.currentItem();
    if (chosen != nullptr) about_.setText(chosen->data(Qt::AccessibleDescriptionRole).toString());
}

MessageResult CSampleDialog::OnOpen(MessageParam, MessageParam) {
    End(kEndOk);
    return 1;
}

MessageResult CSampleDialog::OnCancel(MessageParam, MessageParam) {
    End(kEndCancel);
    return 1;
}

}  // namespace bw
