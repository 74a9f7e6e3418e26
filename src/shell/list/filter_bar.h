// The box over the list that leaves only the rows with a text in it.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "language/language.h"

namespace bw {

class FilterBar : public QWidget {
    Q_OBJECT
  public:
    explicit FilterBar(Language language, QWidget* parent = nullptr);

    void SetLanguage(Language language);
    // What the note says while there is a text in the box.
    void SetCounts(size_t shown, size_t all);
    void FocusBox();
    void Clear();

  signals:
    void Changed(const QString& text);
    // The user is done with the box: the list gets the keys.
    void Left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void ShowPlaceholder();
    void ShowNote();

    Language language_;
    QLineEdit box_;
    QLabel note_;
    size_t shown_ = 0;
    size_t all_ = 0;
};

}  // namespace bw
