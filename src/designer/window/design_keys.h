// The keys of the designer's window that work wherever in it the focus is.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

class QKeyEvent;
class QLineEdit;

namespace bw {

class DesignKeys : public QObject {
  public:
    struct Actions {
        std::function<void()> close, undo, redo, remove, shiftDown, shiftUp;
        // An arrow key, with no edit box or list at hand: columns and rows; `shift` as it is.
        std::function<void(int x, int y, bool shift)> move;
    };
    // Both must live longer.
    DesignKeys(QWidget& window, Actions actions);
    ~DesignKeys() override;

    // A widget that takes all keys but undo and redo itself while it has the focus.
    void LeaveKeysTo(QWidget& widget) { independent_ = &widget; }
    // An edit box that takes no more than 32 characters by keys.
    void LimitText(QLineEdit& edit);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool Ours(const QObject* watched) const;
    bool KeyDown(QObject* watched, const QKeyEvent& key);
    bool Swallowed(const QLineEdit& edit, const QKeyEvent& key) const;

    QWidget& window_;
    Actions actions_;
    std::vector<QLineEdit*> limited_;
    QWidget* independent_ = nullptr;
};

}  // namespace bw
