#include "shell/main/status_line.h"

#include <algorithm>
#include <limits>

#include "shell/framework/colors.h"
#include "shell/framework/texts.h"
#include "shell/main/space_text.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kGap = 8;
// Room that the words of a task should have before the line becomes two.
constexpr int kNewsWidth = 240;
constexpr int kBarWidth = 120;

}  // namespace

StatusLine::StatusLine(Wishes wishes) : wishes_(std::move(wishes)), rows_(QBoxLayout::LeftToRight) {
    counts_.setObjectName(QStringLiteral("status_counts"));
    told_.setObjectName(QStringLiteral("status_told"));
    progress_.setObjectName(QStringLiteral("status_progress"));
    stop_.setObjectName(QStringLiteral("status_stop"));
    auto* news = new QHBoxLayout(&news_);
    news->setContentsMargins(0, 0, 0, 0);
    news->setSpacing(kGap);
    news->addWidget(&counts_);
    news->addWidget(&told_, 1);
    news->addWidget(&progress_);
    news->addWidget(&stop_);
    auto* space = new QHBoxLayout(&space_);
    space->setContentsMargins(0, 0, 0, 0);
    space->setSpacing(2 * kGap);
    space->addStretch(1);
    for (size_t i = 0; i < boards_.size(); ++i) {
        boards_[i].setObjectName(QStringLiteral("status_space_%1").arg(i));
        boards_[i].setCursor(Qt::PointingHandCursor);
        boards_[i].installEventFilter(this);
        space->addWidget(&boards_[i]);
    }
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(kGap, 2, kGap, 4);
    whole->addLayout(&rows_);
    rows_.setSpacing(2);
    rows_.addWidget(&news_, 1);
    rows_.addWidget(&space_);

    progress_.setFixedWidth(kBarWidth);
    progress_.setTextVisible(false);
    progress_.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    stop_.setAutoDefault(false);
    connect(&stop_, &QPushButton::clicked, this, [this] { wishes_.stop(); });
    EndTask();
}

void StatusLine::SetLanguage(Language language) {
    language_ = language;
    told_.SetLine({});
    stop_.setText(QtText(TextId::kStop, language));
    progress_.setAccessibleName(QtText(TextId::kTaskProgress, language));
    Arrange();
}

void StatusLine::ShowCounts(size_t checked, size_t all) {
    counts_.setText(ToQt(FormatText(LoadText(TextId::kSelectedAndAll, language_), checked, all)));
    Arrange();
}

void StatusLine::Tell(std::u16string_view line, std::u16string_view details) {
    told_.SetLine(ToQt(line), ToQt(details));
}

void StatusLine::ShowTask(const TaskProgress& progress, bool canStop) {
    if (!progress.what.empty()) told_.SetLine(ToQt(progress.what));
    // Steps are counted in thousandths: there may be more of them than the bar can count.
    const size_t done = std::min(progress.done, progress.total);
    const bool known = progress.total != 0;
    progress_.setRange(0, known ? 1000 : 0);
    progress_.setValue(known ? static_cast<int>(static_cast<double>(done) * 1000.0 /
                                                static_cast<double>(progress.total))
                             : 0);
    progress_.show();
    stop_.setVisible(canStop);
}

void StatusLine::EndTask() {
    progress_.hide();
    stop_.hide();
}

void StatusLine::ShowSpace(const std::array<Board, 2>& boards) {
    for (size_t i = 0; i < boards.size(); ++i) {
        const auto& [board, space] = boards[i];
        boards_[i].setText(ToQt(SpaceText(board, space, language_)));
        boards_[i].setToolTip(ToQt(SpaceDetails(board, space, language_)));
        QPalette colours;
        if (IsOver(space)) {
            colours.setColor(QPalette::WindowText, WarningText());
        }
        boards_[i].setPalette(colours);
    }
    Arrange();
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    Arrange();
}

bool StatusLine::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && wishes_.space) {
        for (size_t i = 0; i < boards_.size(); ++i) {
            if (watched == &boards_[i]) wishes_.space(i);
        }
    }
    return QFrame::eventFilter(watched, event);
}

void StatusLine::Arrange() {
    const int needed = counts_.sizeHint().width() + kNewsWidth + space_.sizeHint().width();
    const auto wanted = width() < needed ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (rows_.direction() != wanted) rows_.setDirection(wanted);
}

}  // namespace bw
