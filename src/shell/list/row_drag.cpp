#include "shell/list/row_drag.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <chrono>

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr auto kScrollEvery = 40ms;

}  // namespace

RowDrag::RowDrag(GameTable& table) : table_(table) {
    scroll_.setInterval(kScrollEvery);
    connect(&scroll_, &QTimer::timeout, this, [this] { Scroll(); });
}

void RowDrag::Press(int viewRow, const QPoint& place) {
    state_ = State::kPressed;
    row_ = viewRow;
    pressed_ = place;
}

void RowDrag::Move(const QPoint& place) {
    place_ = place;
    if (state_ == State::kPressed) {
        if ((place - pressed_).manhattanLength() < QApplication::startDragDistance()) return;
        const bool numbers = table_.columnAt(pressed_.x()) == static_cast<int>(ListColumn::kNumber);
        state_ = numbers ? State::kHighlighting : State::kPlacing;
        if (!numbers) table_.viewport()->setCursor(Qt::ClosedHandCursor);
        scroll_.start();
    }
    Follow();
}

void RowDrag::Follow() {
    if (state_ == State::kPlacing) table_.ShowGap(GapAt(place_));
    if (state_ == State::kHighlighting) table_.SelectRange(row_, RowAt(place_));
}

void RowDrag::Scroll() {
    const int height = table_.verticalHeader()->defaultSectionSize();
    const int edge = height / 2;
    QScrollBar& bar = *table_.verticalScrollBar();
    if (place_.y() < edge) {
        bar.setValue(bar.value() - height);
    } else if (place_.y() > table_.viewport()->height() - edge) {
        bar.setValue(bar.value() + height);
    }
    Follow();
}

int RowDrag::RowAt(const QPoint& place) const {
    const int height = table_.verticalHeader()->defaultSectionSize();
    const int row = (place.y() + table_.verticalScrollBar()->value()) / height;
    return std::clamp(row, 0, std::max(0, table_.model()->rowCount() - 1));
}

int RowDrag::GapAt(const QPoint& place) const {
    const int height = table_.verticalHeader()->defaultSectionSize();
    const int gap = (place.y() + table_.verticalScrollBar()->value() + height / 2) / height;
    return std::clamp(gap, 0, table_.model()->rowCount());
}

bool RowDrag::Release() {
    const State state = state_;
    const int gap = GapAt(place_);
    End();
    if (state == State::kPlacing) emit Dropped(gap);
    return state == State::kPlacing || state == State::kHighlighting;
}

bool RowDrag::Cancel() {
    const bool pulled = state_ == State::kPlacing || state_ == State::kHighlighting;
    End();
    return pulled;
}

void RowDrag::End() {
    state_ = State::kNone;
    scroll_.stop();
    table_.ShowGap({});
    table_.viewport()->unsetCursor();
}

}  // namespace bw
