#include "shell/framework/dialog_base.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>
#include <algorithm>

#include "shell/framework/colors.h"

namespace bw {

CDialogBase::CDialogBase(Language language, QWidget* parent)
    : QDialog(parent), language_(language) {
    // The program ends by its command, not with the last window that shows: the main window may be
    // in the tray.
    setAttribute(Qt::WA_QuitOnClose, false);
}

const MessageTable& CDialogBase::BaseTable() {
    static const MessageEntry entries[] = {
        OnMessage(kMessageClose, &CDialogBase::OnClose),
        OnMessage(kMessageLanguage, &CDialogBase::OnLanguage),
    };
    static const MessageTable table{entries};
    return table;
}

void CDialogBase::Init() {
    open_ = true;
    ApplyTexts();
    Send(kMessageInitDialog);
    Place();
}

int CDialogBase::DoModal() {
    if (open_) return 0;
    Init();
    if (!open_) return result();  // ended by its own init handler
    const QPointer<CDialogBase> self(this);
    const int code = exec();
    if (self) open_ = false;
    return code;
}

void CDialogBase::ShowModeless() {
    if (!open_) Init();
    if (!open_) return;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

bool CDialogBase::End(int code) {
    if (!open_) return false;
    open_ = false;
    ++ends_;
    done(code);
    return true;
}

void CDialogBase::Post(int message, MessageParam wParam, MessageParam lParam) {
    queue_.Post([=, this, ends = ends_.load()] {
        if (ends == ends_) Send(message, wParam, lParam);
    });
}

void CDialogBase::PostLanguage(Language language) {
    const auto wParam = static_cast<MessageParam>(language);
    Post(kMessageLanguage, wParam);
    for (QDialog* child : findChildren<QDialog*>()) {
        if (auto* dialog = dynamic_cast<CDialogBase*>(child)) {
            dialog->Post(kMessageLanguage, wParam);
        }
    }
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

QWidget* CDialogBase::ControlOf(int id) const {
    const auto found = controls_.find(id);
    return found != controls_.end() ? found->second : nullptr;
}

std::u16string CDialogBase::GetText(int id) const {
    QWidget* control = ControlOf(id);
    if (const auto* edit = qobject_cast<QLineEdit*>(control)) return FromQt(edit->text());
    if (const auto* edit = qobject_cast<QPlainTextEdit*>(control)) {
        return FromQt(edit->toPlainText());
    }
    if (const auto* label = qobject_cast<QLabel*>(control)) return FromQt(label->text());
    if (const auto* button = qobject_cast<QAbstractButton*>(control)) return FromQt(button->text());
    if (const auto* group = qobject_cast<QGroupBox*>(control)) return FromQt(group->title());
    return {};
}

void CDialogBase::SetText(int id, const QString& text) {
    QWidget* control = ControlOf(id);
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

void CDialogBase::SetTextId(int id, TextId textId) {
    SetText(id, QtText(textId, language_));
}

void CDialogBase::SetCloseBoxAlone() {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
}

QSize CDialogBase::FromDialogUnits(int width, int height) const {
    const QFontMetrics metrics = fontMetrics();
    return {width * metrics.averageCharWidth() / 4, height * metrics.height() / 8};
}

void CDialogBase::SetStartSize(int width, int height) {
    startSize_ = QSize(width, height);
}

void CDialogBase::Place() {
    const QSize least = FromDialogUnits(startSize_.width(), startSize_.height());
    resize(sizeHint().expandedTo(least));
    Centre();
}

void CDialogBase::Centre() {
    const QWidget* parent = parentWidget() ? parentWidget()->window() : nullptr;
    if (parent && !parent->isVisible()) parent = nullptr;
    const QRect work = (parent ? parent : this)->screen()->availableGeometry();
    const QRect around = parent ? parent->frameGeometry() : work;
    // The window has no frame before it is shown; its parent's is most likely to be like it.
    const QSize frame = parent ? parent->frameGeometry().size() - parent->size() : QSize(0, 0);
    const auto place = [](int start, int length, int own, int workStart, int workLength) {
        const int middle = start + (length - own) / 2;
        return std::max(workStart, std::min(middle, workStart + workLength - own));
    };
    move(place(around.x(), around.width(), width() + frame.width(), work.x(), work.width()),
         place(around.y(), around.height(), height() + frame.height(), work.y(), work.height()));
}

void CDialogBase::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
    } else if (EscapeCloses()) {
        Post(kMessageClose);
    }
}

void CDialogBase::closeEvent(QCloseEvent* event) {
    Send(kMessageClose);
    event->setAccepted(!IsOpen());
}

void CDialogBase::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    // Painted, not put into the palette: the controls keep the theme's own colours.
    if (background_.isValid()) QPainter(this).fillRect(event->rect(), ThemedColor(background_));
}

}  // namespace bw
