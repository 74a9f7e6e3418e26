#include "designer/window/problems_page.h"

#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QKeyEvent>
#include <QStyle>
#include <algorithm>

#include "builder/design_check/finding_place.h"
#include "shell/framework/colors.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kRowMargin = 3;  // above and below a row's text, pixels

// Rows as wide as the list, and as high as their wrapped text.
class WrappedRows : public QStyledItemDelegate {
  public:
    explicit WrappedRows(const QListView& list) : list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int width = list_.viewport()->width();
        if (width != width_ || option.font != font_ || heights_.size() > kMostKept) {
            heights_.clear();
            width_ = width;
            font_ = option.font;
        }
        // Wrapping a text takes far longer than all else, and most rows stay what they were.
        int& height = heights_[index.data().toString()];
        if (height == 0) {
            QStyleOptionViewItem inList(option);
            inList.rect.setRect(0, 0, width, 1);
            height = QStyledItemDelegate::sizeHint(inList, index).height() + 2 * kRowMargin;
        }
        return {width, height};
    }

  private:
    static constexpr qsizetype kMostKept = 2000;

    const QListView& list_;
    mutable QHash<QString, int> heights_;  // for this width and font
    mutable int width_ = 0;
    mutable QFont font_;
};

}  // namespace

void FindingModel::Set(std::span<const DesignFinding> findings, Language language) {
    language_ = language;
    // What is the same at both ends stays; between them rows change, come or go.
    const size_t common = std::min(findings_.size(), findings.size());
    size_t first = 0;
    while (first < common && findings_[first] == findings[first])
        ++first;
    size_t last = 0;  // rows from the end
    while (last < common - first &&
           findings_[findings_.size() - 1 - last] == findings[findings.size() - 1 - last])
        ++last;
    const size_t changed = common - first - last;
    const auto row = [](size_t at) { return static_cast<int>(at); };
    const auto at = findings_.begin() + row(first + changed);
    std::copy_n(findings.begin() + row(first), changed, findings_.begin() + row(first));
    if (changed != 0) emit dataChanged(index(row(first)), index(row(first + changed) - 1));
    if (findings_.size() > common) {
        const size_t gone = findings_.size() - common;
        beginRemoveRows({}, row(first + changed), row(first + changed + gone) - 1);
        findings_.erase(at, at + row(gone));
        endRemoveRows();
    } else if (findings.size() > common) {
        const size_t come = findings.size() - common;
        beginInsertRows({}, row(first + changed), row(first + changed + come) - 1);
        const auto from = findings.begin() + row(first + changed);
        findings_.insert(at, from, from + row(come));
        endInsertRows();
    }
}

void FindingModel::RenewLook() {
    const QStyle& style = *QApplication::style();
    icons_ = {style.standardIcon(QStyle::SP_MessageBoxCritical),
              style.standardIcon(QStyle::SP_MessageBoxWarning),
              style.standardIcon(QStyle::SP_MessageBoxInformation)};
}

int FindingModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(findings_.size());
}

QVariant FindingModel::data(const QModelIndex& index, int role) const {
    const DesignFinding& finding = At(index);
    const bool refused = finding.severity == FindingSeverity::kError;
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return ToQt(SeverityText(finding.severity, language_) + u": " + finding.text);
        case Qt::DecorationRole:
            return icons_[static_cast<size_t>(finding.severity)];
        case Qt::ForegroundRole:
            return refused ? QVariant(WarningText()) : QVariant();
        case Qt::ToolTipRole:
            return QtText(TextId::kProblemsTip, language_);
        default:
            return {};
    }
}

ProblemsPage::ProblemsPage(DesignHost& host)
    : host_(host),
      language_(host.CurrentLanguage()),
      rows_(std::make_unique<WrappedRows>(list_)),
      layout_(this) {
    list_.setObjectName(QStringLiteral("problems"));
    list_.setModel(&model_);
    list_.setItemDelegate(rows_.get());
    list_.setWordWrap(true);
    list_.setResizeMode(QListView::Adjust);
    list_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_.setAlternatingRowColors(true);
    list_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_.installEventFilter(this);
    heading_.setTextFormat(Qt::PlainText);
    layout_.addWidget(&heading_);
    layout_.addWidget(&list_);
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, &ProblemsPage::Check);
    connect(&list_, &QListView::clicked, this, &ProblemsPage::GoTo);
    SetLanguage(language_);
}

void ProblemsPage::SetLanguage(Language language) {
    language_ = language;
    list_.setAccessibleName(QtText(TextId::kProblemsTitle, language));
    list_.setAccessibleDescription(QtText(TextId::kProblemsTip, language));
    Check();
}

void ProblemsPage::Changed(Views stale) {
    // Where none of these is out of date nothing has changed that a check looks at.
    const bool checked =
        stale.Has(View::kNameTable) || stale.Has(View::kBkgTiles) || stale.Has(View::kSpriteTiles);
    if (checked) later_.start(0);
}

void ProblemsPage::Check() {
    later_.stop();
    const size_t before = findings_.size();
    findings_ = CheckDesign(host_.Session().Copy(), language_);
    if (isVisible()) ShowFindings();
    if (findings_.size() != before) emit CountChanged(findings_.size());
}

void ProblemsPage::ShowFindings() {
    model_.Set(findings_, language_);
    const std::u16string heading =
        findings_.empty()
            ? LoadText(TextId::kNoProblems, language_)
            : FormatText(LoadText(TextId::kProblemCount, language_), findings_.size());
    heading_.setText(ToQt(heading));
}

void ProblemsPage::GoTo(const QModelIndex& row) {
    if (!row.isValid()) return;
    host_.WhenIdle([this, place = model_.At(row).place] {
        host_.RunWithoutStep([place](WorkingCopy& copy) { return GoToPlace(copy, place); });
        const ViewPart shown = WhereShown(host_.Session().Copy(), place);
        host_.Reveal(shown.view, shown.part);
    });
}

void ProblemsPage::showEvent(QShowEvent* event) {
    PanelPage::showEvent(event);
    ShowFindings();
}

void ProblemsPage::changeEvent(QEvent* event) {
    PanelPage::changeEvent(event);
    if (event->type() == QEvent::StyleChange) model_.RenewLook();
}

// A click on a row and Enter lead to its place; the view's own signal comes with other clicks too.
bool ProblemsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            GoTo(list_.currentIndex());
            return true;
        }
    }
    return PanelPage::eventFilter(watched, event);
}

}  // namespace bw
