#include "shell/main/button_column.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>

#include "shell/framework/colors.h"
#include "shell/framework/commands.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr size_t kListButtons = 8;
constexpr size_t kBuildButtons = 2;
constexpr int kLeastWidth = 88;
constexpr int kGap = 3;
// Above a group, and above the one button that takes all: a slip of the mouse ends between.
constexpr int kGroupGap = 12;
constexpr int kClearGap = 36;
constexpr double kBuildHeight = 2.2;  // lines of text
constexpr int kSheen = 125;           // percent

struct ButtonTraits {
    int command;
    TextId textId;
    int gapAbove = 0;
};
constexpr std::array<ButtonTraits, ButtonColumn::kButtons> kTraits{{
    {kCommandMoveUp, TextId::kMoveUp},
    {kCommandMoveDown, TextId::kMoveDown},
    {kCommandMoveTop, TextId::kMoveTop},
    {kCommandMoveBottom, TextId::kMoveBottom},
    {kCommandSelectAll, TextId::kSelectAll, kGroupGap},
    {kCommandSelectInverse, TextId::kSelectInverse},
    {kCommandRemove, TextId::kRemove, kGroupGap},
    {kCommandClear, TextId::kClear, kClearGap},
    {kCommandBuildCoolboy, TextId::kCoolboy},
    {kCommandBuildCoolgirl, TextId::kCoolgirl},
    {kCommandCheckCart, TextId::kCheckCart},
}};

}  // namespace

int ButtonColumn::CommandOf(size_t index) {
    return kTraits[index].command;
}

ButtonColumn::ButtonColumn() {
    auto* column = new QVBoxLayout(&panel_);
    auto* builds = new QVBoxLayout(&build_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    builds->setContentsMargins(kGap, kGap, kGap, kGap);
    builds->setSpacing(kGap);
    for (size_t i = 0; i < buttons_.size(); ++i) {
        QPushButton& button = buttons_[i];
        // Return belongs to the list and to the in-place editor.
        button.setAutoDefault(false);
        if (kTraits[i].gapAbove > 0) column->addSpacing(kTraits[i].gapAbove);
        (i < kListButtons ? column : builds)->addWidget(&button);
    }
    column->addStretch(1);
    column->addSpacing(kGroupGap);
    column->addWidget(&build_);

    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(&panel_);
    panel_.setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    ShowBuildsStrong();
}

void ButtonColumn::ShowBuildsStrong() {
    QPalette colours;
    // Styles paint it with a lighter sheen, on which the text must still be read.
    const QColor accent = AccentColor();
    colours.setColor(QPalette::Button, DarkTheme() ? accent : accent.darker(kSheen));
    colours.setColor(QPalette::ButtonText, TextOnAccent());
    QFont bold;
    bold.setBold(true);
    for (size_t i = kListButtons; i < kListButtons + kBuildButtons; ++i) {
        QPushButton& button = buttons_[i];
        button.setPalette(colours);
        button.setFont(bold);
        button.setMinimumHeight(static_cast<int>(button.fontMetrics().height() * kBuildHeight));
    }
}

void ButtonColumn::SetLanguage(Language language, const CommandMenu& menu, BoardType board) {
    for (size_t i = 0; i < buttons_.size(); ++i) {
        const QAction& entry = menu.Entry(kTraits[i].command);
        const QString key = entry.shortcut().toString(QKeySequence::NativeText);
        const QString tip = WithoutLetter(entry.text());
        const bool mindkids =
            kTraits[i].command == kCommandBuildCoolboy && board == BoardType::kMindkids;
        const TextId textId = mindkids ? TextId::kMindkids : kTraits[i].textId;
        buttons_[i].setText(QtText(textId, language).trimmed());
        buttons_[i].setAccessibleName(tip);
        buttons_[i].setToolTip(key.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, key));
    }
    build_.setTitle(QtText(TextId::kBuildRom, language));
    FitWidth();
}

QSize ButtonColumn::sizeHint() const {
    return {std::max(kLeastWidth, panel_.sizeHint().width()), panel_.sizeHint().height()};
}

void ButtonColumn::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    FitWidth();
}

void ButtonColumn::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ShowBuildsStrong();
}

void ButtonColumn::FitWidth() {
    const bool scrolls = height() < panel_.minimumSizeHint().height();
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    setFixedWidth(sizeHint().width() + bar);
}

}  // namespace bw
