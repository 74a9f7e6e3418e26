// What all windows of the program have in common: a message table, controls by id, a language, an
// end code.
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "shell/framework/message_target.h"
#include "shell/framework/texts.h"
#include "shell/framework/ui_queue.h"
#include "support/language.h"

class QAbstractButton;

namespace bw {

class CDialogBase : public QDialog, public MessageTarget {
  public:
    explicit CDialogBase(Language language, QWidget* parent = nullptr);

    // Runs the dialog on top of its parent until it ends; the end code.
    int DoModal();
    // Shows it beside the other windows. Shown already, it comes to the front.
    void ShowModeless();
    // Ends the dialog with this code. False if it isn't open.
    bool End(int code);
    bool IsOpen() const { return isVisible(); }

    // Sends the message later, on the window's thread. From any thread; dropped with the window.
    void Post(int message, MessageParam wParam = 0, MessageParam lParam = 0);

    Language UiLanguage() const { return language_; }

  protected:
    // The root of all tables: close ends the dialog with wParam as its code, a change of language
    // stores it and applies the texts.
    static const MessageTable& BaseTable();
    // Sets all texts anew, in UiLanguage().
    virtual void ApplyTexts() = 0;

    // Registers a control under its id, so that GetText, SetText and tests find it by that; a
    // button that is clicked sends its id as a command. The object's name becomes "control_<id>".
    void AddControl(int id, QWidget& control);
    void AddControl(int id, QAbstractButton& button);
    std::u16string GetText(int id) const;
    void SetText(int id, const QString& text);
    // The text of the language table.
    void SetTextId(int id, int textId);

    // Over the middle of the parent, or of the screen without one; held on the screen's work area,
    // at its top left if it is larger. Called before the dialog is shown for the first time.
    void Centre();
    // The window's background; see colors.h. Follows the theme.
    void SetBackground(const QColor& light);

    UiQueue& Queue() { return queue_; }

    // Escape and the close box post a close message with parameters 0; dialogs with something to
    // save at closing have a close handler of their own.
    virtual bool EscapeCloses() const { return true; }
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Init();
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    MessageResult OnLanguage(MessageParam wParam, MessageParam lParam);

    Language language_;
    bool initialised_ = false;
    std::map<int, QWidget*> controls_;
    QColor background_;
    UiQueue queue_;
};

}  // namespace bw
