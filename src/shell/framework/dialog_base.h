// What all windows of the program have in common: a message table, controls by id, a language, an
// end code.
#pragma once

#include <QDialog>
#include <atomic>
#include <map>
#include <string>

#include "language/language.h"
#include "shell/framework/message_target.h"
#include "shell/framework/texts.h"
#include "shell/framework/ui_queue.h"

class QAbstractButton;

namespace bw {

class CDialogBase : public QDialog, public MessageTarget {
  public:
    explicit CDialogBase(Language language, QWidget* parent = nullptr);

    // Opening a dialog sets its texts, sends it kMessageInitDialog, gives it its size and centres
    // it. A dialog can be opened again after its end.

    // Runs the dialog on top of the other windows until it ends; the end code. 0 if it is open
    // already, or goes away without an end.
    int DoModal();
    // Shows it beside the other windows. Open already, it comes to the front.
    void ShowModeless();
    // Ends the dialog with this code. False if it isn't open.
    bool End(int code);
    // Between opening and end; a window hidden in the tray is still open.
    bool IsOpen() const { return open_; }

    // Sends the message later, on the window's thread. From any thread; dropped if the window ends
    // before, or is destroyed.
    void Post(int message, MessageParam wParam = 0, MessageParam lParam = 0);
    // Posts the language to this window and then to all others that it owns, message dialogs
    // included. Those that aren't open take it too, for the next time.
    void PostLanguage(Language language);

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
    // A control that doesn't exist has no text, and takes none.
    std::u16string GetText(int id) const;
    void SetText(int id, const QString& text);
    // The text of the language table.
    void SetTextId(int id, TextId textId);

    // No boxes beside it that minimise and maximise: for what only waits for an answer.
    void SetCloseBoxAlone();

    // Dialog units grow with the font: a horizontal one is a quarter of the average character's
    // width, a vertical one an eighth of the line's height.
    QSize FromDialogUnits(int width, int height) const;
    // The size in dialog units at opening, at the least: texts that need more get more.
    void SetStartSize(int width, int height);

    // Gives the window its size and place before it shows: the start size, in the middle.
    virtual void Place();
    // Over the middle of the parent, or of the screen if there is none in sight; held on the
    // screen's work area, at its top left if it is larger.
    void Centre();
    // The window's background; see colors.h. Follows the theme.
    void SetBackground(const QColor& light) { background_ = light; }

    UiQueue& Queue() { return queue_; }

    // Escape posts a close message with parameters 0, the close box sends it; dialogs with
    // something to save at closing have a close handler of their own.
    virtual bool EscapeCloses() const { return true; }
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Init();
    QWidget* ControlOf(int id) const;
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    MessageResult OnLanguage(MessageParam wParam, MessageParam lParam);

    Language language_;
    bool open_ = false;
    std::atomic<int> ends_ = 0;  // how often the window has ended
    std::map<int, QWidget*> controls_;
    QSize startSize_;  // dialog units
    QColor background_;
    UiQueue queue_;
};

}  // namespace bw
