#include "shell/list/filter_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr float kPlaceholderOpacity = 0.55F;

}  // namespace

FilterBar::FilterBar(Language language, QWidget* parent) : QWidget(parent), language_(language) {
    box_.setObjectName(QStringLiteral("filterText"));
    box_.setClearButtonEnabled(true);
    box_.setMaximumWidth(QFontMetrics(font()).averageCharWidth() * 50);
    box_.installEventFilter(this);
    note_.setObjectName(QStringLiteral("filterNote"));
    // In a narrow window the note takes more lines, not more room beside the box.
    note_.setWordWrap(true);
    note_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&box_, 1);
    layout->addWidget(&note_, 1);
    connect(&box_, &QLineEdit::textChanged, this, [this](const QString& text) {
        emit Changed(text);
        ShowNote();
    });
    ShowPlaceholder();
    SetLanguage(language);
}

void FilterBar::SetLanguage(Language language) {
    language_ = language;
    const QString name = QtText(TextId::kFilterList, language);
    box_.setPlaceholderText(name);
    box_.setAccessibleName(name);
    box_.setToolTip(QtText(TextId::kFilterTip, language));
    ShowNote();
}

// Qt's own colour for it stays that of a light theme when the theme turns dark.
void FilterBar::ShowPlaceholder() {
    QColor color = palette().color(QPalette::Text);
    color.setAlphaF(kPlaceholderOpacity);
    QPalette own;
    own.setColor(QPalette::PlaceholderText, color);
    box_.setPalette(own);
}

void FilterBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ShowPlaceholder();
}

void FilterBar::SetCounts(size_t shown, size_t all) {
    shown_ = shown;
    all_ = all;
    ShowNote();
}

void FilterBar::FocusBox() {
    box_.setFocus(Qt::ShortcutFocusReason);
    box_.selectAll();
}

void FilterBar::Clear() {
    box_.clear();
}

void FilterBar::ShowNote() {
    const QString words = QtText(TextId::kShownOfAll, language_);
    const QString note = box_.text().isEmpty() ? QString() : words.arg(shown_).arg(all_);
    note_.setText(note);
}

bool FilterBar::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if (!press && event->type() != QEvent::ShortcutOverride) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            if (press) Clear();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            break;
        default:
            return QWidget::eventFilter(watched, event);
    }
    event->accept();
    if (press) emit Left();
    return true;
}

}  // namespace bw
