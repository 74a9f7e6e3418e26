#include "shell/main/button_column.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>

#include "shell/framework/commands.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr size_t kListButtons = 8;
constexpr int kLeastWidth = 88;
constexpr int kGap = 3;

struct ButtonTraits {
    int command;
    TextId textId;
};
constexpr std::array<ButtonTraits, ButtonColumn::kButtons> kTraits{{
    {kCommandMoveUp, TextId::kMoveUp},
    {kCommandMoveDown, TextId::kMoveDown},
    {kCommandMoveTop, TextId::kMoveTop},
    {kCommandMoveBottom, TextId::kMoveBottom},
    {kCommandSelectAll, TextId::kSelectAll},
    {kCommandSelectInverse, TextId::kSelectInverse},
    {kCommandRemove, TextId::kRemove},
    {kCommandClear, TextId::kClear},
    {kCommandBuildCoolboy, TextId::kCoolboy},
    {kCommandBuildCoolgirl, TextId::kCoolgirl},
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
        (i < kListButtons ? column : builds)->addWidget(&button);
    }
    column->addStretch(1);
    column->addWidget(&build_);

    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(&panel_);
    panel_.setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

void ButtonColumn::SetLanguage(Language language, const MainMenu& menu, BoardType board) {
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

void ButtonColumn::FitWidth() {
    const bool scrolls = height() < panel_.minimumSizeHint().height();
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    setFixedWidth(sizeHint().width() + bar);
}

}  // namespace bw
