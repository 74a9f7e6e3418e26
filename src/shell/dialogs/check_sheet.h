// The sheet of pictures of a check: a model over its report, and how a game looks on it.
#pragma once

#include <QAbstractItemDelegate>
#include <QAbstractListModel>
#include <QCache>
#include <QPixmap>
#include <optional>
#include <vector>

#include "language/language.h"
#include "shell/dialogs/check_report.h"

namespace bw {

// All games, or those of which something was found.
class CheckSheetModel : public QAbstractListModel {
    Q_OBJECT
  public:
    // `report` must live longer; whoever changes it tells of it here.
    CheckSheetModel(const CheckReport& report, Language language)
        : report_(report), language_(language) {}

    void SetLanguage(Language language) { language_ = language; }
    void ShowFindingsOnly(bool only);
    // Another check: nothing of it is as before.
    void Renew();
    void TellChanged(size_t game);

    // Null behind the end.
    const ReportGame* GameAt(int row) const;
    // The row of a game of the report, if it shows.
    std::optional<int> RowOf(size_t game) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    bool Shows(const ReportGame& one) const;

    const CheckReport& report_;
    Language language_;
    bool findingsOnly_ = false;
    std::vector<uint32_t> shown_;  // games of the report, in rising order
};

// Number and name over the picture, and in its corner the mark of the worst that was found.
class CheckSheetPainter : public QAbstractItemDelegate {
  public:
    // `model` must live longer.
    explicit CheckSheetPainter(const CheckSheetModel& model) : model_(model) {}

    void ForgetPictures() { pictures_.clear(); }
    void ForgetPicture(size_t game) { pictures_.remove(static_cast<int>(game)); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    void PaintPicture(QPainter& painter, const QRect& place, const ReportGame& one) const;

    const CheckSheetModel& model_;
    // What was unpacked and made smaller, by game; counted in kilobytes.
    mutable QCache<int, QPixmap> pictures_{16 * 1024};
};

}  // namespace bw
