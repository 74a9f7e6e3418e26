#include "shell/framework/dialog_base.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <algorithm>

#include "shell/framework/colors.h"

namespace bw {

CDialogBase::CDialogBase(Language language, QWidget* parent)
    : QDialog(parent), language_(language) {}

const MessageTable& CDialogBase::BaseTable() {
    static const MessageEntry entries[] = {
        OnMessage(kMessageClose, &CDialogBase::OnClose),
        OnMessage(kMessageLanguage, &CDialogBase::OnLanguage),
    };
    static const MessageTable table{entries};
    return table;
}

void CDialogBase::Init() {
    if (initialised_) return;
    initialised_ = true;
    ApplyTexts();
    Send(kMessageInitDialog);
    Centre();
}

int CDialogBase::DoModal() {
    Init();
    return exec();
}

void CDialogBase::ShowModeless() {
    Init();
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
}

bool CDialogBase::End(int code) {
    if (!IsOpen()) return false;
    done(code);
    return true;
}

void CDialogBase::Post(int message, MessageParam wParam, MessageParam lParam) {
    queue_.Post([=, this] { Send(message, wParam, lParam); });
}

MessageResult CDialogBase::OnClose(MessageParam wParam, MessageParam) {
    End(static_cast<int>(wParam));
    return 1;
}

MessageResult CDialogBase::OnLanguage(MessageParam wParam, MessageParam) {
    language_ = static_cast<Language>(wParam);
    ApplyTexts();
    return 1;
}

void CDialogBase::AddControl(int id, QWidget& control) {
    controls_[id] = &control;
    control.setObjectName(QStringLiteral("control_%1").arg(id));
}

void CDialogBase::AddControl(int id, QAbstractButton& button) {
    AddControl(id, static_cast<QWidget&>(button));
    connect(&button, &QAbstractButton::clicked, this, [this, id] { Send(kMessageCommand, id); });
}

std::u16string CDialogBase::GetText(int id) const {
    QWidget* control = controls_.at(id);
    if (const auto* edit = qobject_cast<QLineEdit*>(control)) return FromQt(edit->text());
    if (const auto* edit = qobject_cast<QPlainTextEdit*>(control)) {
        return FromQt(edit->toPlainText());
    }
    if (const auto* label = qobject_cast<QLabel*>(control)) return FromQt(label->text());
    if (const auto* button = qobject_cast<QAbstractButton*>(control)) return FromQt(button->text());
    return {};
}

void CDialogBase::SetText(int id, const QString& text) {
    QWidget* control = controls_.at(id);
    if (auto* edit = qobject_cast<QLineEdit*>(control)) {
        edit->setText(text);
    } else if (auto* longEdit = qobject_cast<QPlainTextEdit*>(control)) {
        longEdit->setPlainText(text);
    } else if (auto* label = qobject_cast<QLabel*>(control)) {
        label->setText(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        button->setText(text);
    } else if (auto* group = qobject_cast<QGroupBox*>(control)) {
        group->setTitle(text);
    }
}

void CDialogBase::SetTextId(int id, int textId) {
    SetText(id, QtText(textId, language_));
}

void CDialogBase::Centre() {
    adjustSize();
    const QScreen* screen = parentWidget() ? parentWidget()->screen() : this->screen();
    const QRect work = screen->availableGeometry();
    const QRect around = parentWidget() ? parentWidget()->window()->frameGeometry() : work;
    const auto place = [](int start, int length, int own, int workStart, int workLength) {
        const int middle = start + (length - own) / 2;
        return std::max(workStart, std::min(middle, workStart + workLength - own));
    };
    move(place(around.x(), around.width(), width(), work.x(), work.width()),
         place(around.y(), around.height(), height(), work.y(), work.height()));
}

void CDialogBase::SetBackground(const QColor& light) {
    background_ = light;
    QPalette own;
    own.setColor(QPalette::Window, ThemedColor(light));
    setPalette(own);
}

void CDialogBase::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
    } else if (EscapeCloses()) {
        Post(kMessageClose);
    }
}

void CDialogBase::closeEvent(QCloseEvent* event) {
    event->ignore();
    Send(kMessageClose);
}

void CDialogBase::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ThemeChange && background_.isValid()) SetBackground(background_);
}

}  // namespace bw
