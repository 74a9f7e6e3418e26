#include "shell/dialogs/check_sheet.h"

#include <QPainter>
#include <algorithm>

#include "shell/framework/finding_mark.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr QSize kPicture(ConsolePicture::kWidth / 2, ConsolePicture::kHeight / 2);
constexpr int kMargin = 6;
constexpr int kMark = 28;  // pixels a side
constexpr QRgb kNoPicture = 0xFF303438;
constexpr QRgb kNoPictureText = 0xFFC8CCD2;

QString Title(const ReportGame& one) {
    return QStringLiteral("%1 %2").arg(one.game.index + 1).arg(ToQt(one.game.name));
}

}  // namespace

bool CheckSheetModel::Shows(const ReportGame& one) const {
    return !findingsOnly_ || !one.game.findings.empty() || !one.game.notRun.empty();
}

void CheckSheetModel::ShowFindingsOnly(bool only) {
    if (findingsOnly_ == only) return;
    findingsOnly_ = only;
    Renew();
}

void CheckSheetModel::Renew() {
    beginResetModel();
    shown_.clear();
    for (uint32_t game = 0; game < report_.games.size(); ++game)
        if (Shows(report_.games[game])) shown_.push_back(game);
    endResetModel();
}

void CheckSheetModel::TellChanged(size_t game) {
    if (const std::optional<int> row = RowOf(game)) {
        emit dataChanged(index(*row), index(*row));
        return;
    }
    if (!Shows(report_.games[game])) return;
    const auto place = std::ranges::lower_bound(shown_, game);
    const auto row = static_cast<int>(place - shown_.begin());
    beginInsertRows({}, row, row);
    shown_.insert(place, static_cast<uint32_t>(game));
    endInsertRows();
}

const ReportGame* CheckSheetModel::GameAt(int row) const {
    if (row < 0 || static_cast<size_t>(row) >= shown_.size()) return nullptr;
    return &report_.games[shown_[static_cast<size_t>(row)]];
}

std::optional<int> CheckSheetModel::RowOf(size_t game) const {
    const auto place = std::ranges::lower_bound(shown_, game);
    if (place == shown_.end() || *place != game) return std::nullopt;
    return static_cast<int>(place - shown_.begin());
}

int CheckSheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant CheckSheetModel::data(const QModelIndex& index, int role) const {
    const ReportGame* one = GameAt(index.row());
    if (one == nullptr) return {};
    switch (role) {
        case Qt::DisplayRole:  // letters that are typed look for it
            return ToQt(one->game.name);
        case Qt::AccessibleTextRole:
            return Title(*one) + QLatin1Char('\n') + GameText(*one, language_);
        case Qt::ToolTipRole:
            // Names may look like markup; and only markup is wrapped.
            return QStringLiteral("<qt>%1<br>%2</qt>")
                .arg(Title(*one).toHtmlEscaped(),
                     GameText(*one, language_)
                         .toHtmlEscaped()
                         .replace(QLatin1Char('\n'), QStringLiteral("<br>")));
        default:
            return {};
    }
}

void CheckSheetPainter::PaintPicture(QPainter& painter, const QRect& place,
                                     const ReportGame& one) const {
    if (one.picture.IsEmpty()) {
        painter.fillRect(place, QColor(kNoPicture));
        painter.setPen(QColor(kNoPictureText));
        if (one.done) painter.drawText(place, Qt::AlignCenter, QStringLiteral("?"));
        return;
    }
    const qreal density = painter.device()->devicePixelRatioF();
    const QSize pixels = place.size() * density;
    const auto key = static_cast<int>(one.game.index);
    const QPixmap* known = pictures_.object(key);
    if (known == nullptr || known->size() != pixels) {
        QPixmap picture = QPixmap::fromImage(
            one.picture.Image().scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        picture.setDevicePixelRatio(density);
        painter.drawPixmap(place.topLeft(), picture);
        pictures_.insert(key, new QPixmap(std::move(picture)),
                         std::max(1, pixels.width() * pixels.height() * 4 / 1024));
    } else {
        painter.drawPixmap(place.topLeft(), *known);
    }
}

void CheckSheetPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    const ReportGame* one = model_.GameAt(index.row());
    if (one == nullptr) return;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected) painter->fillRect(option.rect, option.palette.highlight());
    const QRect inner = option.rect.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QRect picture(inner.left(), inner.bottom() + 1 - kPicture.height(), kPicture.width(),
                        kPicture.height());
    painter->setFont(option.font);
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(QRect(inner.left(), inner.top(), inner.width(), option.fontMetrics.height()),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(Title(*one), Qt::ElideRight, inner.width()));
    PaintPicture(*painter, picture, *one);
    if (const auto worst = WorstOf(one->game.findings)) {
        QRect mark(0, 0, kMark, kMark);
        mark.moveBottomRight(picture.bottomRight() - QPoint(2, 2));
        PaintFindingMark(*painter, mark, *worst);
    }
}

QSize CheckSheetPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {kPicture.width() + 2 * kMargin,
            kPicture.height() + option.fontMetrics.height() + kMargin / 2 + 2 * kMargin};
}

}  // namespace bw
