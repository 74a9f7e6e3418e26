#include "designer/window/history_page.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QFont>
#include <QListView>
#include <QPalette>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <unordered_map>

#include "designer/history/step_names.h"
#include "shell/framework/colors.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

// How much of the text's colour a state has that undo has left, the rest being the ground's: pale
// beside the others and still readable, with more than 4.5 times the ground's light or a part of
// it.
constexpr float kUndoneShare = 0.65F;

constexpr std::chrono::milliseconds kFollowAfter{25};  // longer than a frame of most screens

QColor UndoneText() {
    const QPalette palette = QApplication::palette();
    return Paled(palette.color(QPalette::Text), palette.color(QPalette::Base), kUndoneShare);
}

}  // namespace

// A row for each state; of an empty history the one that the document is in.
class HistoryPage::Rows : public QAbstractListModel {
  public:
    Rows(const UndoHistory& steps, Language language)
        : steps_(steps), names_(steps), language_(language) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : count_;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const int row = index.row();
        if (role == Qt::DisplayRole) return NameOf(row);
        if (role == Qt::AccessibleTextRole) {
            if (row == present_) return Told(TextId::kHistoryPresent, row);
            return row > present_ ? Told(TextId::kHistoryUndone, row) : NameOf(row);
        }
        if (role == Qt::FontRole && row == present_) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        if (role == Qt::ForegroundRole && row > present_) return UndoneText();
        return {};
    }

    int Present() const { return present_; }

    void SetLanguage(Language language) {
        language_ = language;
        known_.clear();
        TellAll();
    }

    // False if nothing is new.
    bool Follow() {
        const int present = static_cast<int>(steps_.Index());
        const bool same = revision_ == steps_.Revision();
        if (same && present == present_) return false;
        present_ = present;
        if (!same) {
            revision_ = steps_.Revision();
            known_.clear();
            FitCount(std::max(1, static_cast<int>(steps_.Count())));
        }
        TellAll();
        return true;
    }

  private:
    QString NameOf(int row) const {
        // States can go before Follow hears of it.
        if (row > 0 && static_cast<size_t>(row) >= steps_.Count()) return {};
        const auto known = known_.find(row);
        if (known != known_.end()) return known->second;
        return known_[row] = ToQt(names_.Of(static_cast<size_t>(row), language_));
    }
    QString Told(TextId id, int row) const {
        return ToQt(FormatText(LoadText(id, language_), FromQt(NameOf(row))));
    }

    void FitCount(int count) {
        if (count > count_) {
            beginInsertRows({}, count_, count - 1);
            count_ = count;
            endInsertRows();
        } else if (count < count_) {
            beginRemoveRows({}, count, count_ - 1);
            count_ = count;
            endRemoveRows();
        }
    }
    void TellAll() { emit dataChanged(index(0), index(count_ - 1)); }

    const UndoHistory& steps_;
    mutable StepNames names_;
    mutable std::unordered_map<int, QString> known_;  // the names of rows that were in sight
    Language language_;
    std::optional<uint64_t> revision_;
    int count_ = 1;
    int present_ = 0;
};

HistoryPage::HistoryPage(DesignHost& host, QWidget* parent)
    : host_(host),
      rows_(std::make_unique<Rows>(host.Session().Steps(), host.CurrentLanguage())),
      list_(new QListView(this)) {
    setParent(parent);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list_);
    setFocusProxy(list_);
    list_->setObjectName(QStringLiteral("design_history"));
    list_->setModel(rows_.get());
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(list_, &QListView::clicked, this, &HistoryPage::GoTo);
    connect(list_, &QListView::activated, this, &HistoryPage::GoTo);
    follow_.setSingleShot(true);
    follow_.setInterval(kFollowAfter);
    connect(&follow_, &QTimer::timeout, this, &HistoryPage::Follow);
    SetLanguage(host.CurrentLanguage());
    Follow();
}

// The view goes before its rows.
HistoryPage::~HistoryPage() {
    delete list_;
}

void HistoryPage::SetLanguage(Language language) {
    rows_->SetLanguage(language);
    list_->setAccessibleName(QtText(TextId::kHistoryTitle, language));
    list_->setAccessibleDescription(QtText(TextId::kHistoryTip, language));
    list_->setToolTip(QtText(TextId::kHistoryTip, language));
}

void HistoryPage::Changed(Views) {
    if (isVisible() && !follow_.isActive()) follow_.start();
}

void HistoryPage::showEvent(QShowEvent* event) {
    Follow();
    list_->scrollTo(list_->currentIndex());
    PanelPage::showEvent(event);
}

void HistoryPage::Follow() {
    if (!rows_->Follow()) return;
    const QModelIndex present = rows_->index(rows_->Present());
    list_->setCurrentIndex(present);
    list_->scrollTo(present);
}

// A style may tell of one click twice, as a click and as an activation.
void HistoryPage::GoTo(const QModelIndex& row) {
    if (row.row() != rows_->Present()) host_.GoToStep(static_cast<size_t>(row.row()));
}

}  // namespace bw
