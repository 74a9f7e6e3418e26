#include "designer/window/design_parts.h"

#include <QAbstractButton>
#include <QDockWidget>
#include <QLineEdit>
#include <algorithm>
#include <chrono>
#include <utility>

#include "designer/gestures/pointer_text.h"
#include "designer/history/designer_settings.h"
#include "designer/history/step_names.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/window/design_clipboard.h"
#include "designer/window/design_ids.h"
#include "designer/window/design_menu_rows.h"
#include "designer/window/history_page.h"
#include "designer/window/import_dialog.h"
#include "designer/window/last_design_file.h"
#include "designer/window/preview_page.h"
#include "designer/window/problems_page.h"
#include "settings/recent_files.h"
#include "settings/setting_names.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr auto kKeepAfter = 20s;

// The check boxes that a field of the working copy is behind.
struct Box {
    int id;
    bool WorkingCopy::*field;
};
constexpr Box kBoxes[] = {{kDesignQuickFromBkg, &WorkingCopy::QuickReplaceFromBkg},
                          {kDesignQuickToBkg, &WorkingCopy::QuickReplaceToBkg},
                          {kDesignQuickToSprites, &WorkingCopy::QuickReplaceToSprites},
                          {kDesignQuickAction, &WorkingCopy::QuickAction},
                          {kDesignMarkCursor, &WorkingCopy::MarkCursor},
                          {kDesignFillColor, &WorkingCopy::FillColor},
                          {kDesignDrawLine, &WorkingCopy::DrawLine},
                          {kDesignDragText, &WorkingCopy::DragText}};

struct FlagBox {
    int id;
    uint8_t flag;
};
constexpr FlagBox kFlagBoxes[] = {{kDesignFlipVertically, TileItem::kFlipVertically},
                                  {kDesignFlipHorizontally, TileItem::kFlipHorizontally},
                                  {kDesignBehind, TileItem::kBehindBackground}};

}  // namespace

CDesignDialog::Parts::Parts(CDesignDialog& owner, const DesignDialogServices& given)
    : window(owner),
      services(given),
      gestures(given.session, layout),
      menu(owner, DesignMenuRows(), [this](int id) { window.Send(kMessageCommand, id); }),
      inner(&owner),
      underPointer([this](const PointerEvent& event) {
          return PointerText(Copy(), layout, gestures, event, CurrentLanguage());
      }),
      files(*this, given.lastTypes),
      tasks(
          owner.Queue(), [] {}, [this](std::u16string_view reason) { Tell(reason); }),
      keys(owner, {.close = [this] { window.Post(kMessageClose); },
                   .undo = [this] { window.Send(kMessageCommand, kDesignUndo); },
                   .redo = [this] { window.Send(kMessageCommand, kDesignRedo); },
                   .remove = [this] { window.Send(kMessageCommand, kDesignDelete); },
                   .shiftDown =
                       [this] {
                           const Event event(*this);
                           Refresh(gestures.ShiftKeyDown());
                       },
                   .shiftUp =
                       [this] {
                           const Event event(*this);
                           Refresh(gestures.ShiftKeyUp());
                       },
                   .move =
                       [this](int x, int y, bool shift) {
                           const Event event(*this);
                           MoveByArrow(*this, {x, y}, shift);
                       }}) {
    inner.setWindowFlags(Qt::Widget);
    frame = new DesignFrame(views);
    scroll.setWidget(frame);
    scroll.setAlignment(Qt::AlignCenter);
    scroll.setFocusPolicy(Qt::NoFocus);
    inner.setCentralWidget(&scroll);
    inner.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks |
                         QMainWindow::AllowNestedDocks);
    inner.statusBar()->addWidget(&underPointer, 3);
    inner.statusBar()->addWidget(&news, 1);
    news.setObjectName(QStringLiteral("design_news"));
    for (QLabel* label : {static_cast<QLabel*>(&underPointer), static_cast<QLabel*>(&news)})
        label->setTextFormat(Qt::PlainText);
    preview = new PreviewPage(*this, services.games);
    AddPage(preview, "preview", kDesignPreviewPage);
    keys.LeaveKeysTo(preview->Screen());
    AddPage(new ProblemsPage(*this), "problems", kDesignProblemsPage);
    AddPage(new HistoryPage(*this), "history", kDesignHistoryPage);
    Connect();
}

void CDesignDialog::Parts::Connect() {
    for (const int id : {kDesignCaption, kDesignText})
        keys.LimitText(frame->EditOf(id));
    // What the boxes hold, not what is told: an edit may have been cut in between.
    const auto typed = [this](int id) { return FromQt(frame->EditOf(id).text()); };
    QObject::connect(
        &frame->EditOf(kDesignCaption), &QLineEdit::textChanged, &window, [this, typed] {
            if (typed(kDesignCaption) == Copy().captionBox) return;
            RunWithoutStep(
                [&](WorkingCopy& copy) { return SetCaption(copy, typed(kDesignCaption)); });
        });
    QObject::connect(&frame->EditOf(kDesignText), &QLineEdit::textChanged, &window, [this, typed] {
        RunWithoutStep([&](WorkingCopy& copy) {
            copy.CustomTextEdit = typed(kDesignText);
            return Views();
        });
    });
    QObject::connect(
        frame, &DesignFrame::Pointer, &window,
        [this](PointerAct act, const PointerEvent& event) { FollowPointer(act, event); });
    QObject::connect(frame, &DesignFrame::PointerGone, &window, [this] { underPointer.Clear(); });
    QObject::connect(frame, &DesignFrame::ZoomWanted, &window,
                     [this](int steps) { SetZoom(zoom + steps); });
    QObject::connect(frame, &DesignFrame::FilesDropped, &window,
                     [this](const QStringList& dropped, const QPointF& at, bool shift) {
                         std::vector<std::filesystem::path> paths;
                         for (const QString& file : dropped)
                             paths.push_back(PathFromQt(file));
                         if (!files.CanDrop(paths)) return;
                         files.Drop(frame->ViewAt(at), paths, shift ? Shift::kDown : Shift::kUp);
                     });
    files.named = [this](const std::filesystem::path& file) {
        file_ = file;
        AddRecentFile(Store(), RecentKind::kDesigns, file);
        ShowTitle();
    };
    files.importPicture = [this](const std::filesystem::path& file, std::optional<Control>) {
        ImportPicture(*this, file, {});
    };
    // A work state is as much as an hour of work: it is kept in the settings while the window is
    // open, too.
    keeper.setSingleShot(true);
    keeper.setInterval(kKeepAfter);
    QObject::connect(&keeper, &QTimer::timeout, &window,
                     [this] { WhenIdle([this] { KeepWorkState(Session(), Store()); }); });
}

void CDesignDialog::Parts::WhenIdle(std::function<void()> work) {
    const Event event(*this);
    if (gestures.Captured()) {
        waiting_.push_back(std::move(work));
    } else {
        work();
    }
}

void CDesignDialog::Parts::Run(Command command) {
    WhenIdle([this, command = std::move(command)] {
        Refresh(services.session.Run(command) | View::kCheckBoxes);
    });
}

void CDesignDialog::Parts::RunWithoutStep(Command command) {
    const Event event(*this);
    Refresh(services.session.RunWithoutStep(std::move(command)));
}

void CDesignDialog::Parts::Undo() {
    WhenIdle([this] { Refresh(services.session.Undo()); });
}

void CDesignDialog::Parts::Redo() {
    WhenIdle([this] { Refresh(services.session.Redo()); });
}

void CDesignDialog::Parts::GoToStep(size_t state) {
    WhenIdle([this, state] { Refresh(services.session.GoTo(state)); });
}

bool CDesignDialog::Parts::TryGesture(const PointerEvent& event,
                                      Views (GestureMachine::*act)(PointerEvent)) {
    last_ = event;
    Refresh((gestures.*act)(event));
    return gestures.Captured();
}

void CDesignDialog::Parts::LetGo() {
    const Event event(*this);
    if (gestures.Captured()) TryGesture(last_, &GestureMachine::Release);
}

void CDesignDialog::Parts::FollowPointer(PointerAct act, const PointerEvent& event) {
    const Event scope(*this);
    switch (act) {
        case PointerAct::kPress:
            TryGesture(event, &GestureMachine::Press);
            break;
        case PointerAct::kDoubleClick:
            TryGesture(event, &GestureMachine::DoubleClick);
            break;
        case PointerAct::kMove:
            TryGesture(event, &GestureMachine::Move);
            break;
        case PointerAct::kHover:
            // The button was let go where nobody saw it.
            if (gestures.Captured()) TryGesture(event, &GestureMachine::Release);
            break;
        case PointerAct::kRelease:
            TryGesture(event, &GestureMachine::Release);
            break;
        case PointerAct::kMiddlePress:
            Refresh(gestures.MiddlePress());
            break;
        case PointerAct::kRightPress:
            Refresh(gestures.RightPress(event));
            break;
    }
    underPointer.Follow(event);
}

void CDesignDialog::Parts::EndEvent() {
    // Work that waited for the gesture's end is an event of its own.
    while (!ending_ && !waiting_.empty() && !gestures.Captured()) {
        ending_ = true;
        const std::function<void()> work = std::move(waiting_.front());
        waiting_.pop_front();
        work();
        ending_ = false;
    }
    const Views stale = std::exchange(stale_, {});
    if (!stale.Empty()) {
        if (!keeper.isActive()) keeper.start();
        // No longer true.
        if (news.text() == QtText(TextId::kDesignNewsEmpty, CurrentLanguage()) &&
            IsDesigned(Copy().Store())) {
            Tell({});
        }
        const Views drawn = views.Update(Copy(), stale, gestures.Bands());
        for (const ViewRow& row : ViewRows())
            if (drawn.Has(row.view)) frame->Of(row.control).ShowChanges();
        if (drawn.Has(View::kCheckBoxes)) ShowControls();
        if (drawn.Has(View::kCaptionBox)) {
            QLineEdit& box = frame->EditOf(kDesignCaption);
            const QString text = ToQt(Copy().captionBox);
            if (box.text() != text) box.setText(text);  // the box's cursor stays where it is
        }
        const bool tiles = drawn.Has(View::kBkgTiles) || drawn.Has(View::kSpriteTiles);
        frame->Dragged().Show(gestures.DraggedPicture(), views.Tiles(), tiles, frame->Scale());
        for (const Page& page : pages_)
            page.page->Changed(drawn);
    } else if (gestures.Captured() || frame->Dragged().isVisible()) {
        frame->Dragged().Show(gestures.DraggedPicture(), views.Tiles(), false, frame->Scale());
    }
    ShowEnabled();
}

void CDesignDialog::Parts::ShowControls() {
    const WorkingCopy& copy = Copy();
    for (const auto& [id, field] : kBoxes)
        frame->ButtonOf(id).setChecked(copy.*field);
    for (const auto& [id, flag] : kFlagBoxes)
        frame->ButtonOf(id).setChecked((gestures.ShownFlags() & flag) != 0);
    frame->ButtonOf(kDesignBigCursor).setChecked(copy.document.BigCursor != 0);
    frame->ButtonOf(kDesignBigSprite).setChecked(copy.Store().BigSprite != 0);
}

void CDesignDialog::Parts::ShowEnabled() {
    const bool flips = CanSetSpriteFlag(Copy());
    for (const auto& [id, flag] : kFlagBoxes)
        frame->ButtonOf(id).setEnabled(flips);
    frame->ButtonOf(kDesignUndo).setEnabled(Session().Steps().CanUndo());
    frame->ButtonOf(kDesignRedo).setEnabled(Session().Steps().CanRedo());
}

void CDesignDialog::Parts::Tell(std::u16string_view line) {
    news.SetLine(ToQt(line));
}

void CDesignDialog::Parts::Reveal(Control view, const Rect& part) {
    const Point origin = layout.Origin(view);
    const Rect place{{origin.x + part.at.x, origin.y + part.at.y}, part.width, part.height};
    const QRect shown = frame->Shown(place);
    scroll.ensureVisible(shown.center().x(), shown.center().y(), shown.width(), shown.height());
    frame->Mark(place);
}

void CDesignDialog::Parts::StoreSwitch(std::string_view name, bool on) {
    const uint8_t value = on ? 1 : 0;
    Store().RegCreateKey(kDesignKey);
    Store().RegWriteBinary(kDesignKey, name, {&value, 1});
}

void CDesignDialog::Parts::SetShape(TileShape shape) {
    constexpr std::pair<TileShape, int> kEntries[] = {{TileShape::kPencil, kDesignPencil},
                                                      {TileShape::kLine, kDesignLine},
                                                      {TileShape::kRectangle, kDesignRectangle},
                                                      {TileShape::kFill, kDesignFill}};
    for (const auto& [of, id] : kEntries)
        if (of == shape) menu.CheckMenuItem(id, true);
    WhenIdle([this, shape] {
        RunWithoutStep([shape](WorkingCopy& copy) {
            copy.tileShape = shape;
            return Views();
        });
    });
}

void CDesignDialog::Parts::ShowUndoTips() {
    frame->ControlOf(kDesignUndo).setToolTip(ToQt(UndoTip(Session(), CurrentLanguage())));
    frame->ControlOf(kDesignRedo).setToolTip(ToQt(RedoTip(Session(), CurrentLanguage())));
}

// At the current place, where the picture has room there.
void CDesignDialog::Parts::PastePicture(const QImage& picture) {
    const Pos at = Copy().NameCellPos;
    const bool fits = at.X * kTilePixels + picture.width() <= kScreenColumns * kTilePixels &&
                      at.Y * kTilePixels + picture.height() <= kScreenRows * kTilePixels;
    ImportPicture(*this, PictureOf(picture), fits ? at : Pos());
}

void CDesignDialog::Parts::AskPicture() {
    FileQuestion question;
    question.title = LoadText(TextId::kPictureToScreen, CurrentLanguage());
    question.start = LastDesignFolder(Store());
    question.types = {{u"png", "png"}};
    const auto choice = Dialogs().AskFileToOpen(question);
    if (!choice) return;
    KeepLastDesignFile(Store(), choice->path);
    ImportPicture(*this, choice->path, {});
}

void CDesignDialog::Parts::ShowTitle() {
    QString title = QtText(TextId::kCustomMenu, CurrentLanguage());
    if (!file_.empty()) title += QStringLiteral(" - ") + PathToQt(file_.filename());
    window.setWindowTitle(title);
}

void CDesignDialog::Parts::SetLanguage(Language language) {
    menu.SetLanguage(language);
    frame->SetLanguage(language);
    for (const Page& page : pages_) {
        page.page->SetLanguage(language);
        page.dock->setWindowTitle(QtText(page.page->Title(), language));
    }
    underPointer.Clear();
    ShowTitle();
}

}  // namespace bw
