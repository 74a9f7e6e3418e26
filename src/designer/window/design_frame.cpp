#include "designer/window/design_frame.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QCursor>
#include <QDragEnterEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "designer/window/design_ids.h"
#include "shell/framework/colors.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr QRgb kPaleViolet = 0xFFBEB9FF;
constexpr QRgb kFocusMark = 0xFF2050C0;
constexpr int kMostZoom = 3;
constexpr int kFontPixels = 12;    // at the scale 1
constexpr int kLeastStretch = 65;  // percent of the letters' width
constexpr int kTextMargin = 8;     // pixels beside a button's text, at the scale 1
constexpr int kMarkWidth = 3;
constexpr auto kMarkTime = 1200ms;

// A frame that points something out; the pointer goes through it.
class MarkFrame : public QWidget {
  public:
    explicit MarkFrame(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(QPen(QColor(0xFF, 0x30, 0x00), kMarkWidth));
        const int half = kMarkWidth / 2;
        painter.drawRect(rect().adjusted(half, half, -half - 1, -half - 1));
    }
};

QWidget* MakeControl(const ControlRow& row, QWidget* parent) {
    switch (row.kind) {
        case ControlKind::kGroup:
            return new QGroupBox(parent);
        case ControlKind::kLabel:
            return new QLabel(parent);
        case ControlKind::kEdit: {
            auto* edit = new QLineEdit(parent);
            // Files that are dropped on it are the frame's.
            edit->setAcceptDrops(false);
            return edit;
        }
        case ControlKind::kPush: {
            auto* button = new QPushButton(parent);
            button->setAutoDefault(false);
            return button;
        }
        case ControlKind::kCheck:
            return new QCheckBox(parent);
    }
    return nullptr;
}

// Nothing for an event that isn't the mouse's, or a button's that has no meaning.
std::optional<PointerAct> ActOf(const QEvent& event) {
    const bool down = event.type() == QEvent::MouseButtonPress;
    const bool twice = event.type() == QEvent::MouseButtonDblClick;
    const bool up = event.type() == QEvent::MouseButtonRelease;
    if (!down && !twice && !up && event.type() != QEvent::MouseMove) return std::nullopt;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (event.type() == QEvent::MouseMove) {
        return mouse.buttons().testFlag(Qt::LeftButton) ? PointerAct::kMove : PointerAct::kHover;
    }
    const bool left = mouse.button() == Qt::LeftButton;
    if (up) return left ? std::optional(PointerAct::kRelease) : std::nullopt;
    if (left) return twice ? PointerAct::kDoubleClick : PointerAct::kPress;
    if (mouse.button() == Qt::MiddleButton) return PointerAct::kMiddlePress;
    return mouse.button() == Qt::RightButton ? std::optional(PointerAct::kRightPress)
                                             : std::nullopt;
}

}  // namespace

int WholeScale(int zoom, double ratio, const QSize& room) {
    const double wanted = zoom * ratio;
    const int above = static_cast<int>(std::ceil(wanted - 0.01));
    const int below = std::max(1, static_cast<int>(std::floor(wanted + 0.01)));
    const bool fits = kFrameWidth * above <= room.width() * ratio &&
                      kFrameHeight * above <= room.height() * ratio;
    return above == below || fits ? above : below;
}

int FittingZoom(double ratio, const QSize& room) {
    for (int zoom = kMostZoom; zoom > 1; --zoom) {
        if (kFrameWidth * zoom * ratio <= room.width() * ratio &&
            kFrameHeight * zoom * ratio <= room.height() * ratio) {
            return zoom;
        }
    }
    return 1;
}

DesignFrame::DesignFrame(const DesignerViews& views) {
    setObjectName(QStringLiteral("design_frame"));
    setAcceptDrops(true);
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    for (const ControlRow& row : ControlRows()) {
        QWidget* control = MakeControl(row, this);
        control->setFocusPolicy(row.kind == ControlKind::kEdit ? Qt::StrongFocus : Qt::TabFocus);
        if (row.kind == ControlKind::kGroup || row.kind == ControlKind::kLabel) {
            control->setAttribute(Qt::WA_TransparentForMouseEvents);
            control->setFocusPolicy(Qt::NoFocus);
        }
        controls_[row.id] = control;
    }
    for (const ViewRow& row : ViewRows()) {
        auto* view = new CWindowDraw(views.Of(row.view), *this);
        view->setFocusPolicy(Qt::StrongFocus);
        view->installEventFilter(this);
        view->setObjectName(QStringLiteral("view_%1").arg(static_cast<int>(row.control)));
        views_[static_cast<size_t>(row.control)] = view;
    }
    static_cast<QLabel&>(ControlOf(kDesignCaptionLabel)).setBuddy(&ControlOf(kDesignCaption));
    static_cast<QLabel&>(ControlOf(kDesignTextLabel)).setBuddy(&ControlOf(kDesignText));
    ghost_ = new GhostControl(*this);
    mark_ = new MarkFrame(this);
    SetScale(1);
}

DesignFrame::~DesignFrame() = default;

QAbstractButton& DesignFrame::ButtonOf(int id) const {
    return static_cast<QAbstractButton&>(ControlOf(id));
}

QLineEdit& DesignFrame::EditOf(int id) const {
    return static_cast<QLineEdit&>(ControlOf(id));
}

void DesignFrame::SetScale(int scale) {
    scale_ = scale;
    for (CWindowDraw* view : views_)
        view->SetScale(scale);
    Layout();
}

QRect DesignFrame::Shown(const Rect& place) const {
    const double step = scale_ / devicePixelRatioF();
    const auto scaled = [&](int value) { return static_cast<int>(std::lround(value * step)); };
    const QPoint corner(scaled(place.at.x), scaled(place.at.y));
    return {corner,
            QPoint(scaled(place.at.x + place.width) - 1, scaled(place.at.y + place.height) - 1)};
}

void DesignFrame::Layout() {
    QFont letters = font();
    letters.setPixelSize(
        std::max(1, static_cast<int>(std::lround(kFontPixels * scale_ / devicePixelRatioF()))));
    for (const ControlRow& row : ControlRows()) {
        QWidget& control = ControlOf(row.id);
        control.setFont(letters);
        control.setGeometry(Shown(row.place));
        FitText(control, control.width());
    }
    for (const ViewRow& row : ViewRows()) {
        const Point at = places_.Origin(row.control);
        Of(row.control).move(Shown({at, 0, 0}).topLeft());
    }
    setFixedSize(Shown({{0, 0}, kFrameWidth, kFrameHeight}).size());
    update();
}

void DesignFrame::FitText(QWidget& control, int width) const {
    const auto* button = qobject_cast<QAbstractButton*>(&control);
    if (button == nullptr) return;
    QFont letters = button->font();
    letters.setStretch(QFont::Unstretched);
    const bool check = qobject_cast<const QCheckBox*>(button) != nullptr;
    const int margin = static_cast<int>((check ? 22 : kTextMargin) * scale_ / devicePixelRatioF());
    const int room = std::max(1, width - margin);
    const int needed = QFontMetrics(letters).horizontalAdvance(button->text());
    if (needed > room) {
        letters.setStretch(std::max(kLeastStretch, 100 * room / needed - 1));
    }
    control.setFont(letters);
}

QString DesignFrame::NameOf(const ControlRow& row, Language language) const {
    QString text = row.text == TextId{} ? QString() : QtText(row.text, language);
    // An arrow says nothing aloud.
    const std::pair<TextId, TextId> arrows[] = {{TextId::kGlyphUp, TextId::kUp},
                                                {TextId::kGlyphDown, TextId::kDown},
                                                {TextId::kGlyphLeft, TextId::kLeft},
                                                {TextId::kGlyphRight, TextId::kRight}};
    for (const auto& [glyph, word] : arrows)
        if (row.text == glyph) text = QtText(word, language);
    if (row.id == kDesignCaption) return QtText(TextId::kCaption, language);
    if (row.id == kDesignText) return QtText(TextId::kText, language);
    for (const ControlRow& group : ControlRows()) {
        if (row.group == 0 || group.id != row.group || group.text == TextId{}) continue;
        return ToQt(FormatText(LoadText(TextId::kNameOfControl, language),
                               LoadText(group.text, language), FromQt(text)));
    }
    return text;
}

void DesignFrame::SetLanguage(Language language) {
    for (const ControlRow& row : ControlRows()) {
        QWidget& control = ControlOf(row.id);
        if (row.text != TextId{}) {
            const QString text = QtText(row.text, language);
            if (auto* group = qobject_cast<QGroupBox*>(&control)) group->setTitle(text);
            if (auto* label = qobject_cast<QLabel*>(&control)) label->setText(text);
            if (auto* button = qobject_cast<QAbstractButton*>(&control)) button->setText(text);
        }
        control.setAccessibleName(NameOf(row, language));
        if (row.tip != TextId{}) {
            control.setToolTip(QtText(row.tip, language));
            control.setAccessibleDescription(control.toolTip());
        }
        FitText(control, control.width());
    }
    for (const ViewRow& row : ViewRows()) {
        Of(row.control).setAccessibleName(QtText(row.name, language));
        Of(row.control).setAccessibleDescription(QtText(row.help, language));
    }
}

std::optional<Control> DesignFrame::ViewAt(const QPointF& at) const {
    for (const ViewRow& row : ViewRows()) {
        if (Of(row.control).geometry().contains(at.toPoint())) return row.control;
    }
    return std::nullopt;
}

Point DesignFrame::FramePoint(const QPointF& at) const {
    // On a view its own pixels count: where the desktop's scale isn't whole they may lie a part of
    // a pixel beside those of the frame.
    if (const auto view = ViewAt(at)) {
        const Point inView = Of(*view).PixelAt(at - QPointF(Of(*view).pos()));
        const Point corner = places_.Origin(*view);
        return {corner.x + inView.x, corner.y + inView.y};
    }
    const double step = scale_ / devicePixelRatioF();
    return {static_cast<int>(std::floor(at.x() / step)),
            static_cast<int>(std::floor(at.y() / step))};
}

void DesignFrame::Mark(const Rect& place) {
    mark_->setGeometry(Shown(place).adjusted(-kMarkWidth, -kMarkWidth, kMarkWidth, kMarkWidth));
    mark_->raise();
    mark_->show();
    QTimer::singleShot(kMarkTime, mark_, &QWidget::hide);
}

bool DesignFrame::FollowMouse(const QEvent& event, const QPointF& corner) {
    const auto act = ActOf(event);
    if (!act) return false;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const Qt::KeyboardModifiers keys = mouse.modifiers();
    emit Pointer(*act, {FramePoint(corner + mouse.position()), keys.testFlag(Qt::ControlModifier),
                        keys.testFlag(Qt::ShiftModifier),
                        std::chrono::milliseconds(static_cast<int64_t>(mouse.timestamp()))});
    return true;
}

// What happens on a view counts from the frame's corner. It isn't left to the toolkit to hand it
// on, which rounds places between two pixels. The toolkit keeps the pointer for what was pressed
// until all buttons are up.
bool DesignFrame::eventFilter(QObject* watched, QEvent* event) {
    const auto* view = dynamic_cast<CWindowDraw*>(watched);
    return view != nullptr && FollowMouse(*event, view->pos());
}

void DesignFrame::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore();
        return;
    }
    if (event->angleDelta().y() != 0) emit ZoomWanted(event->angleDelta().y() > 0 ? 1 : -1);
}

void DesignFrame::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void DesignFrame::dropEvent(QDropEvent* event) {
    QStringList files;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) files.append(url.toLocalFile());
    }
    event->acceptProposedAction();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    if (!files.isEmpty()) emit FilesDropped(files, event->position(), shift);
}

bool DesignFrame::event(QEvent* event) {
    if (event->type() == QEvent::Leave) emit PointerGone();
    return FollowMouse(*event, {}) || QWidget::event(event);
}

void DesignFrame::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), ThemedColor(QColor::fromRgb(kPaleViolet)));
    // Where the keyboard is.
    for (const CWindowDraw* view : views_) {
        if (!view->hasFocus()) continue;
        painter.setPen(QPen(ThemedColor(QColor::fromRgb(kFocusMark)), 2));
        painter.drawRect(view->geometry().adjusted(-2, -2, 1, 1));
    }
}

}  // namespace bw
