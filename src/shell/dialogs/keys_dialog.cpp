#include "shell/dialogs/keys_dialog.h"

#include <QKeyEvent>
#include <QKeySequence>

#include "shell/framework/colors.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kHint = 1390;
constexpr int kFirstPad = 1391;
constexpr int kDefaults = 1393;
// In the order of PlayKeys::kButtons; as the pads themselves say.
constexpr std::array<const char16_t*, PlayKeys::kButtons.size()> kNames{
    u"↑", u"↓", u"←", u"→", u"B", u"A", u"SELECT", u"START"};

}  // namespace

QString KeyText(int key) {
    if (key == 0) return QStringLiteral("-");
    // A modifier alone has no name as a key.
    const auto whole = [key]() -> int {
        switch (key) {
            case Qt::Key_Shift:
                return Qt::SHIFT;
            case Qt::Key_Control:
                return Qt::CTRL;
            case Qt::Key_Alt:
                return Qt::ALT;
            case Qt::Key_Meta:
                return Qt::META;
            default:
                return key;
        }
    };
    const QKeySequence sequence(whole());
    const QString text = sequence.toString(QKeySequence::NativeText);
    return text.size() > 1 && text.endsWith(u'+') ? text.chopped(1) : text;
}

CKeysDialog::CKeysDialog(PlayKeys& keys, SettingsStore& store, Language language, QWidget* parent)
    : CDialogBase(language, parent), keys_(keys), store_(store) {
    AddControl(kHint, hint_);
    hint_.setWordWrap(true);
    layout_.addWidget(&hint_);
    layout_.addLayout(&row_);
    for (size_t pad = 0; pad < PlayKeys::kPads; ++pad) {
        AddControl(kFirstPad + static_cast<int>(pad), pads_[pad]);
        row_.addWidget(&pads_[pad]);
        new QGridLayout(&pads_[pad]);
    }
    for (size_t i = 0; i < kPlaces; ++i) {
        auto* grid = static_cast<QGridLayout*>(pads_[PlaceAt(i).pad].layout());
        const auto row = static_cast<int>(i % PlayKeys::kButtons.size());
        names_[i].setText(QString::fromUtf16(kNames[i % PlayKeys::kButtons.size()]));
        names_[i].setBuddy(&buttons_[i]);
        AddControl(kFirstButton + static_cast<int>(i), static_cast<QWidget&>(buttons_[i]));
        buttons_[i].setAutoDefault(false);
        buttons_[i].installEventFilter(this);
        connect(&buttons_[i], &QPushButton::clicked, this, [this, i] { Ask(i); });
        grid->addWidget(&names_[i], row, 0);
        grid->addWidget(&buttons_[i], row, 1);
        grid->setColumnStretch(1, 1);
    }
    AddControl(kDefaults, defaults_);
    AddControl(kEndOk, ok_);
    defaults_.setAutoDefault(false);
    ok_.setDefault(true);
    endRow_.addWidget(&defaults_);
    endRow_.addStretch();
    endRow_.addWidget(&ok_);
    layout_.addLayout(&endRow_);
    SetBackground(QColor(kWhiteGround));
    SetCloseBoxAlone();
    SetStartSize(240, 150);
}

const MessageTable& CKeysDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kDefaults, &CKeysDialog::OnDefaults),
        OnCommand(kEndOk, &CKeysDialog::OnOk),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

PadPlace CKeysDialog::PlaceAt(size_t index) {
    return {static_cast<uint32_t>(index / PlayKeys::kButtons.size()),
            PlayKeys::kButtons[index % PlayKeys::kButtons.size()]};
}

void CKeysDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kKeysTitle, UiLanguage()));
    SetTextId(kHint, TextId::kKeysHint);
    SetTextId(kDefaults, TextId::kKeysDefaults);
    SetTextId(kEndOk, TextId::kConfirm);
    for (size_t pad = 0; pad < PlayKeys::kPads; ++pad)
        SetText(kFirstPad + static_cast<int>(pad),
                ToQt(FormatText(LoadText(TextId::kPadTitle, UiLanguage()), pad + 1)));
    ShowKeys();
}

void CKeysDialog::ShowKeys() {
    for (size_t i = 0; i < kPlaces; ++i)
        buttons_[i].setText(asked_ == i ? QtText(TextId::kKeysPressNow, UiLanguage())
                                        : KeyText(keys_.KeyOf(PlaceAt(i))));
}

void CKeysDialog::Ask(std::optional<size_t> index) {
    asked_ = index;
    ShowKeys();
}

// The button that waits gets every key, also those that would press it or go to the next one.
bool CKeysDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && asked_) Ask(std::nullopt);
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!asked_ || !key || watched != &buttons_[*asked_])
        return CDialogBase::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress) keyPressEvent(static_cast<QKeyEvent*>(event));
    return true;
}

void CKeysDialog::keyPressEvent(QKeyEvent* event) {
    if (!asked_) return CDialogBase::keyPressEvent(event);
    const int key = event->key();
    if (event->isAutoRepeat() || key == 0 || key == Qt::Key_unknown) return;
    // Escape gives up, and can be no button's.
    if (key != Qt::Key_Escape) {
        keys_.SetKey(PlaceAt(*asked_), key);
        keys_.Store(store_);
    }
    Ask(std::nullopt);
}

MessageResult CKeysDialog::OnDefaults(MessageParam, MessageParam) {
    keys_ = PlayKeys();
    keys_.Store(store_);
    Ask(std::nullopt);
    return 1;
}

MessageResult CKeysDialog::OnOk(MessageParam, MessageParam) {
    End(kEndOk);
    return 1;
}

}  // namespace bw
