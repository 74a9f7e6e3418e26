#include "designer/window/preview_page.h"

#include <QDockWidget>
#include <QEvent>

#include "console/emulator_words.h"
#include "shell/dialogs/keys_dialog.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kLines = 3;  // of words that always have room

}  // namespace

PreviewPage::PreviewPage(DesignHost& host, std::shared_ptr<const GameList> games,
                         MenuPreview::FindConsole find)
    : host_(host),
      games_(std::move(games)),
      language_(host.CurrentLanguage()),
      layout_(this),
      screen_(keys_),
      preview_(host.Store(), std::move(find), [this] { ShowNews(); }) {
    keys_.Load(host.Store());
    setFocusProxy(&screen_);
    for (QLabel* label : {&words_, &hint_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    words_.setObjectName(QStringLiteral("preview_words"));
    words_.setAlignment(Qt::AlignTop | Qt::AlignLeft);
    words_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    // The picture stays where it is, whatever there is to say.
    words_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    words_.setMinimumHeight(kLines * words_.fontMetrics().lineSpacing());
    layout_.addWidget(&screen_);
    layout_.addWidget(&hint_);
    layout_.addWidget(&words_, 1);
    connect(&screen_, &PreviewView::Held, this, &PreviewPage::Hold);
    connect(&screen_, &PreviewView::FocusChanged, this, &PreviewPage::ShowNews);
    host.Window().installEventFilter(this);
    SetLanguage(language_);
}

void PreviewPage::SetLanguage(Language language) {
    language_ = language;
    screen_.setAccessibleName(QtText(TextId::kPreviewScreen, language));
    // A refusal is worded anew.
    taken_.reset();
    Follow();
    ShowNews();
}

void PreviewPage::SetGames(std::shared_ptr<const GameList> games) {
    games_ = std::move(games);
    taken_.reset();
    Follow();
}

void PreviewPage::Changed(Views) {
    Follow();
}

// In the middle of a gesture the design isn't yet what it will be.
void PreviewPage::Follow() {
    if (!isVisible() || !inFront_ || host_.Gestures().Captured()) return;
    const EditSession& session = host_.Session();
    Mark now{session.Steps().Revision(), session.Steps().Index(), session.Copy().captionBox};
    if (taken_ == now) return;
    DesignDocument design = session.Copy().document;
    // As the designer hands it on to builds.
    design.store.CaptionText = now.caption;
    taken_ = std::move(now);
    startPressed_ = false;
    preview_.Show({games_, std::move(design), language_});
}

void PreviewPage::FollowSight() {
    const bool seen = isVisible() && inFront_ && !host_.Window().isMinimized();
    if (seen) Follow();
    preview_.SetSeen(seen);
}

void PreviewPage::showEvent(QShowEvent* event) {
    PanelPage::showEvent(event);
    if (dock_ == nullptr && (dock_ = qobject_cast<QDockWidget*>(parentWidget())) != nullptr) {
        connect(dock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
            inFront_ = visible;
            FollowSight();
        });
    }
    FollowSight();
}

void PreviewPage::hideEvent(QHideEvent* event) {
    PanelPage::hideEvent(event);
    FollowSight();
}

bool PreviewPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) FollowSight();
    return PanelPage::eventFilter(watched, event);
}

// START is kept back: behind it the cart has nothing.
void PreviewPage::Hold(uint8_t buttons) {
    if (buttons != 0) startPressed_ = (buttons & kPadStart) != 0;
    preview_.Hold(static_cast<uint8_t>(buttons & ~kPadStart));
    ShowNews();
}

QString PreviewPage::KeysHint() const {
    const auto key = [&](PadButton button) { return FromQt(KeyText(keys_.KeyOf({0, button}))); };
    return ToQt(FormatText(LoadText(TextId::kPreviewFocusHint, language_), key(kPadA), key(kPadB),
                           key(kPadSelect), key(kPadStart)));
}

QString PreviewPage::Line(TextId id) const {
    return QtText(id, language_);
}

void PreviewPage::ShowNews() {
    const MenuPreview::State state = preview_.Now();
    const bool picture = !preview_.Picture().pixels.empty();
    screen_.Show(preview_.Picture());
    QStringList lines;
    const auto say = [&](TextId id, const auto&... values) {
        lines += ToQt(FormatText(LoadText(id, language_), values...));
    };
    if (state.noEmulator) {
        lines += ToQt(NoEmulatorText(language_));
    } else {
        if (startPressed_) say(TextId::kPreviewNoGames);
        if (!state.refusal.empty()) say(TextId::kPreviewRefused, state.refusal);
        if (state.problem) say(TextId::kPreviewConsoleGone, ToWide(state.problem->detail));
        if (state.old && picture) say(TextId::kPreviewOld);
        if (!picture && state.refusal.empty() && !state.problem) say(TextId::kPreviewStarts);
        if (state.externMenu) say(TextId::kPreviewExternMenu);
        if (state.switchedOff) say(TextId::kPreviewSwitchedOff);
        if (state.madeUp) say(TextId::kPreviewMadeUp);
    }
    const QString words = lines.join(QLatin1Char('\n'));
    if (words_.text() != words) {
        words_.setText(words);
        words_.setToolTip(words);
    }
    const QString hint = screen_.hasFocus() ? KeysHint() : Line(TextId::kPreviewHint);
    if (hint_.text() != hint) hint_.setText(hint);
    screen_.setAccessibleDescription(hint);
}

}  // namespace bw
